#pragma once
// The IPC/JEDEC occurrence limit: failures taken from the event array file kept
// next to each data history file (sIPCFiles).
//
// The file lists, per channel, the cycles of its first events twice: counted in
// data cycles, and counted in temperature ("T") or mechanical ("M") cycles. A
// channel fails at the first event that the events after it confirm:
// - temperature cycling: the 9 events after event k lie within 10 % of its
//   cycle count, e(k+9) <= 1.1 e(k);
// - mechanical cycling: the 3 events after event k lie within the next 5
//   cycles, e(k+3) <= e(k) + 5;
// with e the temperature/mechanical counts as the file gives them. An event
// that is not confirmed is noise, and the next one becomes the candidate.

#include <array>
#include <cstdint>
#include <string>

namespace tarvenix {
struct Session;
class UiPort;
enum class AnalysisColumn : int16_t;
}  // namespace tarvenix

namespace tarvenix::modIPCAnalysis {

// What ProcessIPCData leaves in iErr besides a channel number.
inline constexpr int16_t kIpcDone = 0;   // rows 1..iNumEvents filled; finish as usual
inline constexpr int16_t kIpcStop = -1;  // stop at once; the reader has said why

// The file holds exactly this many channel lines; the rule runs only then.
inline constexpr int kChannelLines = 1024;
// Events kept per channel and list.
inline constexpr int kEventsKept = 11;
// Events the rule looks at after a candidate.
inline constexpr int kTemperatureFollowers = 9;
inline constexpr int kMechanicalFollowers = 3;

// One channel line: its events, each counted both ways.
struct ChannelEvents {
  int count = 0;
  bool mechanical = false;  // "M" line, else "T"
  std::array<int32_t, kEventsKept> dataCycles{};
  std::array<int32_t, kEventsKept> cycles{};  // temperature or mechanical
};

// The event at which a channel failed (1 = its first event), or 0 when no
// candidate is confirmed.
int FailureEvent(const ChannelEvents& events);

// Fills the current data set's iNumEvents and rows 1..n of vEventCycle and
// vEventCount from its event array file: one row per distinct failure cycle in
// the analysis column, in ascending order, counted from the matching initial cycle, with the number of
// channels failing at it. Channels failing in cycle 0 or 1 bring up the
// first-cycle question as with the count limit; accepted, they leave iChSelected
// and iGroupSize. When every selected channel failed, one channel of the last
// failure cycle is left out, as the count limit leaves out its last failure.
//
// Leaves in iErr kIpcDone; kIpcStop when the user declined, the file was
// rejected (a results-box line names the file and the line) or a run-time fault
// was shown under "modIPCAnalysis.ProcessIPCData"; or, for a failure before the
// initial cycle, the channel k of the earliest such failure, with its cycle as
// the file counts it in row k of vEventCycle, for the message that names them.
// A missing file reads nothing.
void ProcessIPCData(Session& s, UiPort& ui, AnalysisColumn column, int16_t& iErr);

}  // namespace tarvenix::modIPCAnalysis
