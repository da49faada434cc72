#pragma once
// The IPC/JEDEC occurrence limit: failures taken from the event array file kept
// next to each data history file (sIPCFiles).

#include <cstdint>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modIPCAnalysis {

// What ProcessIPCData leaves in iErr besides a row number.
inline constexpr int16_t kIpcDone = 0;   // rows 1..iNumEvents filled; finish as usual
inline constexpr int16_t kIpcStop = -1;  // stop at once; the reader has said why

// Fills the current data set's iNumEvents and rows 1..n of vEventCycle (in the
// analysis column: 1 data cycles, 2 temperature/mechanical cycles) and
// vEventCount from its event array file, asking the first-cycle question as the
// data history reader does. Leaves in iErr kIpcDone, kIpcStop, or a positive
// row k whose event lies before the initial cycle.
void ProcessIPCData(Session& s, UiPort& ui, int16_t iColumn, int16_t& iErr);

}  // namespace tarvenix::modIPCAnalysis
