#pragma once
// Reading a data history file into the failure data of the current data set.

#include <cstdint>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modTarvenix {

inline constexpr const char* kReadingStatus = "Reading history data file ...";
inline constexpr const char* kWorkingStatus = "Working...";
inline constexpr const char* kCyclesNotAvailable = "Temperature or mechanical cycles are not available for analysis.";
inline constexpr const char* kCyclesAvailable = "Temperature or mechanical cycles are available for analysis.";

// Reads the current data set's data history file (after CheckSetupEntries) and
// fills its iNumEvents, vEventCycle (failure cycles counted from the initial
// cycle, in the order the channels failed) and vEventCount (running number of
// failed channels). With a count limit the file is read twice: the first pass
// gathers the events and the temperature/mechanical cycles that follow them and
// asks whether channels failing in the first cycle are to be ignored; the second
// stores the failure data. With the IPC/JEDEC limit the event array file is read
// instead. Progress goes to the status line and the results box.
//
// iErr is set to 1 when the analysis must not go on (and may be left at -1 by
// the IPC/JEDEC reader); on success it is left as it was. Faults in the file
// show the error box "modTarvenix.ProcessData" and set iErr to 1.
void ProcessData(Session& s, UiPort& ui, int16_t& iErr);

}  // namespace tarvenix::modTarvenix
