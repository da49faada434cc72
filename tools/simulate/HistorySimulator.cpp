#include "HistorySimulator.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <stdexcept>
#include <string_view>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace tarvenix::sim {
namespace {

// splitmix64: small, fast and the same on every platform and library, so a
// seed gives the same file everywhere.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  uint64_t Next() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  // Uniform in (0, 1).
  double Open01() { return (static_cast<double>(Next() >> 11) + 0.5) * 0x1.0p-53; }
  // Uniform in 0..n-1.
  int Below(int n) { return static_cast<int>(Next() % static_cast<uint64_t>(n)); }

 private:
  uint64_t state_;
};

// The largest occurrence number the logger's three digits hold; a channel's
// count stays there.
constexpr int kLastOccurrence = 999;

// The next data cycle after `t` in which a channel that keeps reporting has an
// event (each with chance `percent`), or one past `last` when none is left.
int64_t NextReport(Random& random, int percent, int64_t t, int64_t last) {
  do ++t;
  while (t <= last && random.Below(100) >= percent);
  return t;
}

// The test cycle in which a life ends: Weibull by inversion, rounded up to a
// whole cycle.
int64_t WeibullLife(Random& random, double beta, double eta) {
  return static_cast<int64_t>(std::ceil(eta * std::pow(-std::log1p(-random.Open01()), 1.0 / beta)));
}

int64_t CycleOf(const SimOptions& o, int64_t testCycle) {
  return o.tstart + (testCycle + o.dataPerCycle - 1) / o.dataPerCycle;
}

// The first and last test cycles within temperature/mechanical cycle `cycle`.
int64_t FirstTestCycleIn(const SimOptions& o, int64_t cycle) { return (cycle - o.tstart - 1) * o.dataPerCycle + 1; }
int64_t LastTestCycleIn(const SimOptions& o, int64_t cycle) { return (cycle - o.tstart) * o.dataPerCycle; }

// Uniform in lo..hi.
int64_t Between(Random& random, int64_t lo, int64_t hi) {
  return lo + static_cast<int64_t>(random.Next() % static_cast<uint64_t>(hi - lo + 1));
}

// One channel's events for the IPC/JEDEC rule: isolated noise events the rule
// rejects, then the failure's burst starting at the channel's life, then a few
// more events. The failure counts when its whole burst lies within the test.
void PlanIpcChannel(const SimOptions& o, Random& random, int channel, int64_t life, SimTest& test) {
  const bool mechanical = o.cycleLines == CycleLines::Mechanical;
  const int64_t failCycle = CycleOf(o, life);
  std::vector<int64_t> noiseCycles;
  const int noise = random.Below(o.ipcNoise + 1);
  if (mechanical) {
    // Each more than 5 cycles before the next event, so the 3 events after it
    // never lie within 5 cycles of it.
    int64_t next = failCycle;
    for (int i = 0; i < noise; ++i) {
      const int64_t cycle = next - 6 - random.Below(20);
      if (cycle <= o.tstart) break;
      noiseCycles.push_back(cycle);
      next = cycle;
    }
  } else if (noise > 0) {
    // Below the failure's count by more than 10 %: the ninth event after it,
    // in the burst, then lies beyond 1.1 times its count.
    const int64_t highest = (10 * failCycle - 1) / 11;
    if (highest > o.tstart) noiseCycles.push_back(Between(random, o.tstart + 1, highest));
  }
  std::vector<int64_t> times;
  for (int64_t cycle : noiseCycles)
    times.push_back(Between(random, FirstTestCycleIn(o, cycle), LastTestCycleIn(o, cycle)));

  // The burst: the failure and the events that confirm it, within the rule's
  // window and possibly several in one data cycle.
  const int64_t windowEnd = mechanical ? failCycle + 5 : 11 * failCycle / 10;
  const int burst = mechanical ? 4 : 10;
  std::vector<int64_t> confirming;
  for (int i = 1; i < burst; ++i) confirming.push_back(Between(random, life, LastTestCycleIn(o, windowEnd)));
  std::sort(confirming.begin(), confirming.end());
  times.push_back(life);
  times.insert(times.end(), confirming.begin(), confirming.end());
  const int64_t burstEnd = times.back();
  for (int64_t t = burstEnd, more = random.Below(3); more > 0; --more) times.push_back(t += 1 + random.Below(o.maxGap));

  std::sort(times.begin(), times.end());
  int occurrence = 0;
  for (int64_t t : times) {
    if (t > o.cycles) break;
    test.events.push_back({channel, ++occurrence, o.start + t, CycleOf(o, t)});
  }
  if (burstEnd <= o.cycles)
    test.ipcFailures.push_back({channel, static_cast<int>(noiseCycles.size()) + 1, o.start + life, failCycle});
}

// Buffered output: the file is written in large blocks.
class Output {
 public:
  Output(const std::string& path, const std::string& lineEnd) : lineEnd_(lineEnd) {
    file_ = path == "-" ? stdout : std::fopen(path.c_str(), "wb");
    if (!file_) throw std::runtime_error("cannot write " + path);
#ifdef _WIN32
    // Standard output would turn each line end's LF into CR LF once more.
    if (file_ == stdout) _setmode(_fileno(stdout), _O_BINARY);
#endif
    buffer_.reserve(kBlock + 4096);
  }
  ~Output() {
    if (file_ && file_ != stdout) std::fclose(file_);
  }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  Output& operator<<(std::string_view text) {
    buffer_.append(text);
    return *this;
  }
  Output& operator<<(int64_t value) {
    char digits[24];
    auto [end, ec] = std::to_chars(digits, digits + sizeof digits, value);
    (void)ec;
    buffer_.append(digits, end);
    return *this;
  }
  void EndLine() {
    buffer_.append(lineEnd_);
    if (buffer_.size() >= kBlock) Flush();
  }
  std::size_t LineLength() const { return buffer_.size() - lineStart_; }
  void MarkLineStart() { lineStart_ = buffer_.size(); }
  void Close() {
    Flush();
    bool failed = std::fflush(file_) != 0;
    if (file_ != stdout) failed = std::fclose(file_) != 0 || failed;
    file_ = nullptr;
    if (failed) throw std::runtime_error("cannot finish writing the file");
  }

 private:
  static constexpr std::size_t kBlock = std::size_t{4} << 20;
  void Flush() {
    if (!buffer_.empty() && std::fwrite(buffer_.data(), 1, buffer_.size(), file_) != buffer_.size())
      throw std::runtime_error("cannot write the file");
    buffer_.clear();
    lineStart_ = 0;
  }
  std::FILE* file_;
  std::string lineEnd_;
  std::string buffer_;
  std::size_t lineStart_ = 0;
};

// The logger's three-character channel field: right-aligned below 1000, the
// last three digits from 1000 on ("024" is 1024).
void ChannelField(char* out, int channel) {
  const int shown = channel % 1000;
  out[0] = channel >= 1000 ? static_cast<char>('0' + shown / 100) : (shown >= 100 ? static_cast<char>('0' + shown / 100) : ' ');
  out[1] = (channel >= 1000 || shown >= 10) ? static_cast<char>('0' + shown / 10 % 10) : ' ';
  out[2] = static_cast<char>('0' + shown % 10);
}

std::string Fixed(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

// A line of exactly `width` characters: `text` cut or filled with blanks.
std::string Column(std::string text, std::size_t width) {
  text.resize(width, ' ');
  return text;
}

// One data cycle's events of one occurrence number: an event line, wrapped
// into continuation lines when it grows past the width.
void WriteEventLines(Output& out, const SimOptions& o, int occurrence, const SimEvent* first, const SimEvent* last) {
  char number[4];
  std::snprintf(number, sizeof number, "%03d", occurrence);
  out.MarkLineStart();
  out << std::string_view(number, 3) << "::";
  bool anyEntry = false;
  for (const SimEvent* e = first; e != last; ++e) {
    if (anyEntry && out.LineLength() + 7 > static_cast<std::size_t>(o.wrap)) {
      out.EndLine();
      out.MarkLineStart();
      out << "     .";
    }
    // Between the channel and the "." stand the event's kind and a separator.
    char entry[7] = {' ', 0, 0, 0, ':', occurrence == 1 ? 'O' : 'I', '.'};
    ChannelField(entry + 1, e->channel);
    out << std::string_view(entry, 7);
    anyEntry = true;
  }
  out.EndLine();
}

// The unread front of the cycle lines, one for each phase of a cycle: the
// temperature (a -40 to 125 C profile) or the stroke at that phase.
std::vector<std::string> CycleLineFronts(const SimOptions& o) {
  std::vector<std::string> fronts;
  for (int phase = 0; phase < o.dataPerCycle; ++phase) {
    if (o.cycleLines == CycleLines::Temperature) {
      const double temperature = 42.5 + 82.5 * std::cos(6.283185307179586 * phase / o.dataPerCycle);
      fronts.push_back(Column(Fixed("    T = %6.1f C  Cycle count:", temperature), 33));
    } else {
      const double stroke = 2.5 * std::sin(6.283185307179586 * (phase + 0.5) / o.dataPerCycle);
      fronts.push_back(Column(Fixed("    M = %5.2f mm  Cycle count:", stroke), 36));
    }
  }
  return fronts;
}

// A non-negative number given in units of 10^-decimals, written with its
// point: (1234, 2) is "12.34".
void WriteScaled(Output& out, int64_t scaled, int decimals) {
  int64_t unit = 1;
  for (int i = 0; i < decimals; ++i) unit *= 10;
  char digits[18];
  int64_t fraction = scaled % unit;
  for (int i = decimals - 1; i >= 0; --i, fraction /= 10) digits[i] = static_cast<char>('0' + fraction % 10);
  out << scaled / unit << "." << std::string_view(digits, static_cast<std::size_t>(decimals));
}

void WriteCycleLine(Output& out, const SimOptions& o, const std::vector<std::string>& fronts, int64_t testCycle) {
  const int64_t cycle = CycleOf(o, testCycle);
  const int phase = static_cast<int>((testCycle - 1) % o.dataPerCycle);
  out << fronts[static_cast<std::size_t>(phase)];
  if (o.cycleLines == CycleLines::Temperature) {
    // The count shows the cycles done with the running one's part; the reader
    // adds 0.6 and rounds, so the part stays below 0.9.
    WriteScaled(out, (cycle - 1) * 100 + (85 * phase + o.dataPerCycle / 2) / o.dataPerCycle, 2);
  } else {
    out << cycle;
  }
  out.EndLine();
}

void WriteNoise(Output& out, Random& random, int64_t testCycle, int index) {
  out << "  Scan " << testCycle << "/" << static_cast<int64_t>(index + 1) << "  R(max) = ";
  WriteScaled(out, 800 + random.Below(1000), 3);
  out << " ohm";
  out.EndLine();
}

// The events of channels that keep reporting after their first event numbered
// 999, drawn cycle by cycle while the file is written: a long test holds far
// more of them than are worth planning.
class Repeats {
 public:
  explicit Repeats(const SimOptions& o) : percent_(o.keepReporting), random_(o.seed ^ 0x2545F4914F6CDD1Dull) {}

  // This cycle's repeats, channels in ascending order.
  void Draw() {
    drawn_.clear();
    for (int channel : repeating_)
      if (random_.Below(100) < percent_) drawn_.push_back({channel, kLastOccurrence, 0, 0});
  }
  // Adds the channels' planned first events numbered 999 to this cycle's
  // repeats; the channels repeat from the next cycle on.
  void Merge(const SimEvent* first, const SimEvent* last) {
    std::vector<SimEvent> merged;
    std::merge(drawn_.begin(), drawn_.end(), first, last, std::back_inserter(merged),
               [](const SimEvent& a, const SimEvent& b) { return a.channel < b.channel; });
    drawn_.swap(merged);
    for (const SimEvent* e = first; e != last; ++e) starting_.push_back(e->channel);
  }
  const std::vector<SimEvent>& Drawn() const { return drawn_; }
  void StartRepeating() {
    if (starting_.empty()) return;
    repeating_.insert(repeating_.end(), starting_.begin(), starting_.end());
    std::sort(repeating_.begin(), repeating_.end());
    starting_.clear();
  }

 private:
  int percent_;
  Random random_;
  std::vector<int> repeating_;  // ascending
  std::vector<int> starting_;
  std::vector<SimEvent> drawn_;
};

}  // namespace

int MaxIpcNoise(CycleLines lines) {
  switch (lines) {
    case CycleLines::Temperature: return 1;
    case CycleLines::Mechanical: return 7;
    case CycleLines::None: break;
  }
  return 0;
}

std::string CheckOptions(const SimOptions& o) {
  if (o.channels < 1 || o.channels > 1024) return "--channels must be 1 to 1024";
  if (o.firstChannel < 1 || o.firstChannel + o.channels - 1 > 1024) return "the channels must lie within 1 to 1024";
  if (o.cycles < 1 || o.cycles > 2000000000) return "--cycles must be 1 to 2000000000";
  if (!(o.beta > 0.05 && o.beta < 100)) return "--beta must lie between 0.05 and 100";
  if (!(o.eta >= 1 && o.eta < 1e9)) return "--eta must be at least 1 and below 1e9";
  if (o.occurrences < 1 || o.occurrences > 999) return "--occurrences must be 1 to 999";
  if (o.maxGap < 1 || o.maxGap > 1000000) return "--max-gap must be 1 to 1000000";
  if (o.keepReporting < 0 || o.keepReporting > 100) return "--keep-reporting must be 0 to 100";
  if (o.keepReporting != 0 && o.ipc) return "--keep-reporting cannot be used with --ipc";
  if (o.dataPerCycle < 1 || o.dataPerCycle > 1000000) return "--data-per-cycle must be 1 to 1000000";
  if (o.firstCycleFailures < 0 || o.firstCycleFailures > o.channels)
    return "--first-cycle-failures must be 0 to the number of channels";
  if (o.noise < 0 || o.noise > 100000) return "--noise must be 0 to 100000";
  if (o.wrap < 13 || o.wrap > 100000000) return "--wrap must be 13 to 100000000";
  if (o.start < 0 || o.start > 1000000000 || o.tstart < 0 || o.tstart > 1000000000)
    return "--start and --tstart must be 0 to 1000000000";
  if (o.lineEnd != "\r\n" && o.lineEnd != "\n" && o.lineEnd != "\r") return "the line end must be crlf, lf or cr";
  if (o.ipc && o.cycleLines == CycleLines::None) return "--ipc needs --cycle-lines temp or mech";
  if (o.ipcNoise != 0 && !o.ipc) return "--ipc-noise needs --ipc";
  if (o.ipcNoise < 0 || o.ipcNoise > MaxIpcNoise(o.cycleLines))
    return "--ipc-noise must be 0 to " + std::to_string(MaxIpcNoise(o.cycleLines)) + " with these cycle lines";
  return "";
}

SimTest PlanTest(const SimOptions& o) {
  Random random(o.seed);
  SimTest test;
  for (int i = 0; i < o.channels; ++i) test.channels.push_back(o.firstChannel + i);

  // Which channels fail at once: the first few of a shuffled order.
  std::vector<int> order(test.channels);
  for (int i = static_cast<int>(order.size()) - 1; i > 0; --i) std::swap(order[static_cast<std::size_t>(i)], order[static_cast<std::size_t>(random.Below(i + 1))]);
  std::vector<bool> failsAtOnce(1025, false);
  for (int i = 0; i < o.firstCycleFailures; ++i) failsAtOnce[static_cast<std::size_t>(order[static_cast<std::size_t>(i)])] = true;

  // A life ends no earlier than the second temperature/mechanical cycle, so
  // only the channels asked for fail in the first cycle of either count.
  const int64_t earliest = std::max<int64_t>(2, o.dataPerCycle + 1);
  for (int channel : test.channels) {
    int64_t t = failsAtOnce[static_cast<std::size_t>(channel)] ? 1 : std::max(earliest, WeibullLife(random, o.beta, o.eta));
    if (o.ipc) {
      PlanIpcChannel(o, random, channel, t, test);
      continue;
    }
    const int count = 1 + random.Below(o.occurrences);
    for (int occurrence = 1; occurrence <= count; ++occurrence) {
      if (occurrence > 1) t += 1 + random.Below(o.maxGap);
      if (t > o.cycles) break;
      test.events.push_back({channel, occurrence, o.start + t, CycleOf(o, t)});
    }
    if (o.keepReporting == 0) continue;
    for (int occurrence = count + 1; occurrence <= kLastOccurrence; ++occurrence) {
      t = NextReport(random, o.keepReporting, t, o.cycles);
      if (t > o.cycles) break;
      test.events.push_back({channel, occurrence, o.start + t, CycleOf(o, t)});
    }
  }
  std::sort(test.events.begin(), test.events.end(), [](const SimEvent& a, const SimEvent& b) {
    if (a.dataCycle != b.dataCycle) return a.dataCycle < b.dataCycle;
    if (a.occurrence != b.occurrence) return a.occurrence < b.occurrence;
    return a.channel < b.channel;
  });
  return test;
}

void WriteHistoryFile(const SimOptions& o, const SimTest& test, const std::string& path) {
  Output out(path, o.lineEnd);
  Random noise(o.seed ^ 0x5DEECE66Dull);
  out << "Vorlantic Data History File";
  out.EndLine();
  out << "Simulated test, seed " << static_cast<int64_t>(o.seed) << ", channels "
      << static_cast<int64_t>(test.channels.front()) << " to " << static_cast<int64_t>(test.channels.back());
  out.EndLine();
  out.EndLine();

  const std::vector<std::string> fronts = CycleLineFronts(o);
  Repeats repeats(o);
  const SimEvent* next = test.events.data();
  const SimEvent* end = next + test.events.size();
  for (int64_t t = 1; t <= o.cycles; ++t) {
    const int64_t dataCycle = o.start + t;
    out << "Cycle # " << dataCycle;
    out.EndLine();
    for (int i = 0; i < o.noise; ++i) WriteNoise(out, noise, t, i);
    repeats.Draw();
    while (next != end && next->dataCycle == dataCycle) {
      const SimEvent* groupEnd = next;
      while (groupEnd != end && groupEnd->dataCycle == dataCycle && groupEnd->occurrence == next->occurrence) ++groupEnd;
      if (next->occurrence == kLastOccurrence) {
        // The last group: the planned events merge with the repeats.
        repeats.Merge(next, groupEnd);
      } else {
        WriteEventLines(out, o, next->occurrence, next, groupEnd);
      }
      next = groupEnd;
    }
    if (!repeats.Drawn().empty()) {
      WriteEventLines(out, o, kLastOccurrence, repeats.Drawn().data(), repeats.Drawn().data() + repeats.Drawn().size());
    }
    repeats.StartRepeating();
    if (o.cycleLines != CycleLines::None) WriteCycleLine(out, o, fronts, t);
  }
  out.Close();
}

void WriteChannelSelectionFile(const SimOptions& o, const SimTest& test, const std::string& path) {
  Output out(path, o.lineEnd);
  if (o.startHeader) {
    out << "START: " << o.start;
    out.EndLine();
  }
  if (o.tstartHeader) {
    out << "TSTART: " << o.tstart;
    out.EndLine();
  }
  for (int channel : test.channels) {
    out << static_cast<int64_t>(channel);
    out.EndLine();
  }
  out.Close();
}

std::string EventArrayPath(const std::string& historyPath) {
  return historyPath.substr(0, historyPath.size() < 4 ? 0 : historyPath.size() - 4) + ".ipc";
}

void WriteEventArrayFile(const SimOptions& o, const SimTest& test, const std::string& path) {
  constexpr std::size_t kKept = 11;
  std::vector<std::vector<const SimEvent*>> byChannel(1025);
  for (const SimEvent& e : test.events) {
    std::vector<const SimEvent*>& kept = byChannel[static_cast<std::size_t>(e.channel)];
    if (kept.size() < kKept) kept.push_back(&e);
  }
  const bool mechanical = o.cycleLines == CycleLines::Mechanical;
  Output out(path, o.lineEnd);
  out << "' Vorlantic event array file";
  out.EndLine();
  out << "' Simulated test, seed " << static_cast<int64_t>(o.seed) << ", channels "
      << static_cast<int64_t>(test.channels.front()) << " to " << static_cast<int64_t>(test.channels.back());
  out.EndLine();
  out << "' channel: data cycles of its first 11 events, " << (mechanical ? "M" : "T")
      << (mechanical ? ", the same events in mechanical cycles" : ", the same events in temperature cycles");
  out.EndLine();
  for (std::size_t channel = 1; channel <= 1024; ++channel) {
    char number[8];
    std::snprintf(number, sizeof number, "%4zu:", channel);
    out << std::string_view(number);
    const std::vector<const SimEvent*>& kept = byChannel[channel];
    for (std::size_t i = 0; i < kKept; ++i) {
      if (i < kept.size()) out << kept[i]->dataCycle;
      out << ",";
    }
    out << (mechanical ? "M" : "T");
    for (std::size_t i = 0; i < kKept; ++i) {
      if (i < kept.size()) out << kept[i]->cycle;
      out << ",";
    }
    out.EndLine();
  }
  out.Close();
}

void WriteTruthFile(const SimOptions& o, const SimTest& test, const std::string& path) {
  Output out(path, o.lineEnd);
  out << "channel,occurrence,data_cycle,cycle";
  out.EndLine();
  for (const SimEvent& e : test.events) {
    out << static_cast<int64_t>(e.channel) << "," << static_cast<int64_t>(e.occurrence) << "," << e.dataCycle << ","
        << e.cycle;
    out.EndLine();
  }
  out.Close();
}

std::vector<int64_t> ExpectedFailureCycles(const SimOptions& o, const SimTest& test, int limit, bool dataCycles,
                                           bool withoutFirstCycle) {
  std::vector<int64_t> cycles;
  for (const SimEvent& e : test.events) {
    if (e.occurrence != limit) continue;
    const int64_t counted = dataCycles ? e.dataCycle : e.cycle;
    if (withoutFirstCycle && counted < 2) continue;
    cycles.push_back(counted - (dataCycles ? o.start : o.tstart));
  }
  std::sort(cycles.begin(), cycles.end());
  return cycles;
}

std::vector<int64_t> ExpectedIpcFailureCycles(const SimOptions& o, const SimTest& test, bool dataCycles,
                                              bool withoutFirstCycle) {
  std::vector<int64_t> cycles;
  for (const SimEvent& e : test.ipcFailures) {
    const int64_t counted = dataCycles ? e.dataCycle : e.cycle;
    if (withoutFirstCycle && counted < 2) continue;
    cycles.push_back(counted - (dataCycles ? o.start : o.tstart));
  }
  std::sort(cycles.begin(), cycles.end());
  return cycles;
}

}  // namespace tarvenix::sim
