#pragma once
// A simulated cycling test, written as the data logger writes its data history
// file: channels whose lives are drawn from a Weibull distribution, each failed
// channel's repeated events, the data cycle lines, optional temperature or
// mechanical cycle lines and noise. Deterministic for a seed, streamed to the
// file, so it can write files of any size quickly.

#include <cstdint>
#include <string>
#include <vector>

namespace tarvenix::sim {

enum class CycleLines { None, Temperature, Mechanical };

struct SimOptions {
  int channels = 32;           // channels under test, 1..1024
  int firstChannel = 1;        // the first of them; the rest follow in order
  int64_t cycles = 1000;       // data cycles the test ran
  double beta = 2.5;           // Weibull shape of the channels' lives
  double eta = 400;            // Weibull characteristic life, in data cycles
  uint64_t seed = 1;
  int occurrences = 3;         // events per failed channel: 1 to this many
  int maxGap = 5;              // data cycles between a channel's events: 1 to this many
  // After its last event a failed channel goes on reporting one on each later
  // data cycle with this chance in percent (0: it falls silent). Its occurrence
  // number counts on to 999, the largest three digits hold, and stays there.
  int keepReporting = 0;
  CycleLines cycleLines = CycleLines::None;
  int dataPerCycle = 1;        // data cycles per temperature/mechanical cycle
  int firstCycleFailures = 0;  // channels that fail in the test's first cycle
  int noise = 0;               // noise lines after each data cycle line
  std::string lineEnd = "\r\n";
  int wrap = 80;               // longest event line before continuation lines
  int64_t start = 0;           // data cycles counted before the test (START:)
  int64_t tstart = 0;          // temperature/mechanical cycles counted before it (TSTART:)
  bool startHeader = false;    // write START: into the channel selection file
  bool tstartHeader = false;   // write TSTART:
  // Events shaped for the IPC/JEDEC rule: each failure is a burst that the rule
  // confirms (10 events within 10 % of its temperature count, or 4 within 5
  // mechanical cycles), after up to ipcNoise isolated events that it rejects.
  bool ipc = false;
  int ipcNoise = 0;
};

// Isolated events the event array can hold before a failure's burst: it keeps
// 11 events, and the burst needs 10 (temperature) or 4 (mechanical).
int MaxIpcNoise(CycleLines lines);

// One event as it stands in the file.
struct SimEvent {
  int channel = 0;
  int occurrence = 0;
  int64_t dataCycle = 0;  // the data cycle line it follows
  int64_t cycle = 0;      // the temperature/mechanical cycle the reader gives it
};

// The planned test: every event, ordered as the file lists them. With
// keepReporting, a channel's repeats after its first event numbered 999 are
// drawn while the file is written and are not listed here.
struct SimTest {
  std::vector<int> channels;
  std::vector<SimEvent> events;
  // With ipc: the first event of each burst that was complete within the test.
  std::vector<SimEvent> ipcFailures;
};

// Checks the options; an empty text when they are usable, else what is wrong.
std::string CheckOptions(const SimOptions& options);

SimTest PlanTest(const SimOptions& options);

// Writes the data history file; "-" is standard output. Throws
// std::runtime_error when the file cannot be written.
void WriteHistoryFile(const SimOptions& options, const SimTest& test, const std::string& path);
// Writes the channel selection file: the optional START:/TSTART: lines, then
// one channel a line.
void WriteChannelSelectionFile(const SimOptions& options, const SimTest& test, const std::string& path);
// Writes the event array file: a comment header, then one line for each of
// channels 1 to 1024 with the data cycles of its first 11 events, "T" or "M",
// and the same events' temperature or mechanical cycles; each count is followed
// by "," and a slot without an event is left empty.
void WriteEventArrayFile(const SimOptions& options, const SimTest& test, const std::string& path);
// The event array file beside a data history file: its path less the last four
// characters, then ".ipc".
std::string EventArrayPath(const std::string& historyPath);
// Writes every planned event as "channel,occurrence,data_cycle,cycle" under a header.
void WriteTruthFile(const SimOptions& options, const SimTest& test, const std::string& path);

// Each channel's failure under an occurrence limit: the cycle (data cycles, or
// temperature/mechanical cycles) of its limit-th event, counted from the
// initial cycle, in the order the reader meets them. Channels that failed in
// the first cycle are left out when `withoutFirstCycle`.
std::vector<int64_t> ExpectedFailureCycles(const SimOptions& options, const SimTest& test, int limit,
                                           bool dataCycles, bool withoutFirstCycle);
// The same under the IPC/JEDEC rule: each confirmed burst's first event, in
// ascending order (tied channels each listed).
std::vector<int64_t> ExpectedIpcFailureCycles(const SimOptions& options, const SimTest& test, bool dataCycles,
                                              bool withoutFirstCycle);

}  // namespace tarvenix::sim
