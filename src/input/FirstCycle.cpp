#include "input/FirstCycle.h"

namespace tarvenix::modTarvenix {

std::string FirstCycleChannelList(const FirstCycleFlags& flags) {
  std::string list;
  for (std::size_t channel = 1; channel < flags.size(); ++channel)
    if (flags[channel]) list += " " + std::to_string(channel);
  return list;
}

}  // namespace tarvenix::modTarvenix
