#pragma once
// Channels that failed in the first cycle, as the first-cycle question lists them.

#include <string>

#include "app/UiPort.h"

namespace tarvenix::modTarvenix {

// The list text of the first-cycle question: for each flagged channel, in
// ascending order, one blank and the channel number (" 5 17").
std::string FirstCycleChannelList(const FirstCycleFlags& flags);

}  // namespace tarvenix::modTarvenix
