#include "input/FirstCycle.h"

#include <optional>

#include "session/Sound.h"
#include "session/Session.h"

namespace tarvenix::modTarvenix {

std::string FirstCycleChannelList(const FirstCycleFlags& flags) {
  std::string list;
  for (std::size_t channel = 1; channel < flags.size(); ++channel)
    if (flags[channel]) list += " " + std::to_string(channel);
  return list;
}

bool IgnoreFirstCycleEvents(Session& s, UiPort& ui, const FirstCycleFlags& flags) {
  const bool dataCycles = static_cast<bool>(s.bDataCycles);
  const std::string kind = dataCycles ? "data-cycle" : "temp./mech.-cycle";
  modSound::PlaySound(s, ui, modSound::Sound::Floop);
  ui.UpdateTextBox("First " + kind + " events found.");
  if (std::optional<bool> answer = ui.AskIgnoreFirstCycleEvents(flags, dataCycles)) s.bIgnoreFirstCycles = *answer;
  if (!s.bIgnoreFirstCycles) {
    ui.UpdateTextBox("User has chosen not to ignore first " + kind + " events. Analysis stopped.");
    return false;
  }
  ui.UpdateTextBox("User has chosen to re-run analysis and ignore first " + kind + " events.");
  return true;
}

}  // namespace tarvenix::modTarvenix
