#pragma once
// Channels that failed in the first cycle: the list text the question shows, and
// the question itself with the lines that record the answer. Both readers (the
// count limit and the IPC/JEDEC rule) ask it the same way.

#include <string>

#include "session/UiPort.h"

namespace tarvenix {
struct Session;
}

namespace tarvenix::modTarvenix {

// The list text of the first-cycle question: for each flagged channel, in
// ascending order, one blank and the channel number (" 5 17").
std::string FirstCycleChannelList(const FirstCycleFlags& flags);

// The warning sound, "First data-cycle events found." (or the temp./mech.-cycle
// form, by bDataCycles), the question listing the flagged channels, and the
// line recording the answer. Closing the question without an answer leaves the
// last answer (bIgnoreFirstCycles) standing. True when the channels are to be
// ignored; false when the user chose to stop the analysis.
bool IgnoreFirstCycleEvents(Session& s, UiPort& ui, const FirstCycleFlags& flags);

}  // namespace tarvenix::modTarvenix
