#include "input/IpcEvents.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Sound.h"
#include "session/Utils.h"
#include "session/Session.h"
#include "session/UiPort.h"
#include "input/DataHistory.h"
#include "input/FirstCycle.h"
#include "input/LineReader.h"

namespace tarvenix::modIPCAnalysis {

int FailureEvent(const ChannelEvents& events) {
  const int followers = events.mechanical ? kMechanicalFollowers : kTemperatureFollowers;
  for (int k = 0; k + followers < events.count; ++k) {
    // Whole-number arithmetic, so "exactly 10 % later" is exact.
    const int64_t candidate = events.cycles[static_cast<std::size_t>(k)];
    const int64_t last = events.cycles[static_cast<std::size_t>(k + followers)];
    const bool confirmed = events.mechanical ? last <= candidate + 5 : last * 10 <= candidate * 11;
    if (confirmed) return k + 1;
  }
  return 0;
}

namespace {

using EventTable = std::array<ChannelEvents, kMaxChannels + 1>;

// A channel line is a few hundred characters; anything far longer is not one.
constexpr std::size_t kLongestLine = std::size_t{64} << 10;

bool IsBlank(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\t'; });
}

// A cycle count as the file writes it: a number from 0 up that fits 32 bits,
// rounded to a whole number.
std::optional<int32_t> CycleCount(std::string_view text) {
  if (!basic::IsNumeric(text)) return std::nullopt;
  const double value = basic::CDbl(text);
  if (!(value >= 0 && value < 2147483647.5)) return std::nullopt;
  return basic::CLng(value);
}

// The counts of one list: each count is followed by ","; a blank slot holds no
// event; after the last "," only blanks may follow. Counts after the eleventh
// are not read. Returns the text that is not a count, if any.
std::optional<std::string> ReadCounts(std::string_view list, std::array<int32_t, kEventsKept>& into, int& count) {
  count = 0;
  std::size_t from = 0;
  while (count < kEventsKept) {
    const std::size_t comma = list.find(',', from);
    const std::string_view piece = list.substr(from, comma == std::string_view::npos ? list.size() - from : comma - from);
    if (comma == std::string_view::npos) {
      if (IsBlank(piece)) break;
      return std::string(piece);
    }
    from = comma + 1;
    if (IsBlank(piece)) continue;
    const std::optional<int32_t> value = CycleCount(piece);
    if (!value) return std::string(piece);
    into[static_cast<std::size_t>(count++)] = *value;
  }
  return std::nullopt;
}

bool IsChannelNumber(std::string_view text) {
  if (!basic::IsNumeric(text)) return false;
  const double value = basic::CDbl(text);
  return value == basic::Fix(value) && value >= 1 && value <= kMaxChannels;
}

struct EventArray {
  EventTable channels{};
  std::array<bool, kMaxChannels + 1> listed{};
  int16_t cycleType = 0;  // of the last channel line: 1 "T", 2 "M"
};

// One channel line into the table. Returns why the line cannot be read (to
// follow "line n "), or "" when it was read.
std::string ReadChannelLine(std::string_view line, EventArray& array) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos || colon == 0) return "has no channel number before a \":\"";
  const std::size_t comma = line.find(',');
  if (comma == std::string_view::npos || comma < colon) return "has no \",\" after its \":\"";
  std::size_t letter = line.find('T');
  const bool mechanical = letter == std::string_view::npos;
  if (mechanical) letter = line.find('M');
  if (letter == std::string_view::npos || letter < 2) return "has no \"T\" or \"M\" after its channel number";

  const std::string_view number = line.substr(0, colon);
  if (letter < colon || !IsChannelNumber(number)) return "does not name a channel from 1 to 1024";
  const auto channel = static_cast<std::size_t>(basic::CDbl(number));
  if (array.listed[channel]) return "names channel " + std::to_string(channel) + " a second time";

  ChannelEvents events;
  events.mechanical = mechanical;
  int cycleCount = 0;
  std::optional<std::string> bad = ReadCounts(line.substr(colon + 1, letter - colon - 1), events.dataCycles, events.count);
  if (!bad) bad = ReadCounts(line.substr(letter + 1), events.cycles, cycleCount);
  if (bad) return "holds \"" + *bad + "\", which is not a cycle count followed by \",\"";
  if (cycleCount != events.count)
    return "lists " + std::to_string(events.count) + " data cycle counts but " + std::to_string(cycleCount) +
           (mechanical ? " mechanical" : " temperature") + " cycle counts";

  array.listed[channel] = true;
  array.channels[channel] = events;
  array.cycleType = mechanical ? 2 : 1;
  return "";
}

enum class ReadOutcome { Missing, Complete, Rejected };

// Reads the file up to its 1024th channel line. Comment lines start with "'".
// When a line cannot be read or the file ends early, `problem` says where.
ReadOutcome ReadEventArrayFile(const std::string& path, EventArray& array, std::string& problem) {
  if (!modUtils::IsFile(path)) return ReadOutcome::Missing;
  input::LineReader lines(kLongestLine);
  lines.Open(path);
  long long lineNumber = 0;
  int channelLines = 0;
  std::string_view line;
  bool complete = false;
  while (channelLines < kChannelLines && lines.NextLine(line, complete)) {
    ++lineNumber;
    if (!line.empty() && line.front() == '\'') continue;
    std::string reason = complete ? ReadChannelLine(line, array) : "is too long for a channel line";
    if (!reason.empty()) {
      problem = "line " + std::to_string(lineNumber) + " " + reason;
      return ReadOutcome::Rejected;
    }
    ++channelLines;
  }
  lines.Close();
  if (channelLines < kChannelLines) {
    problem = "it ends after " + std::to_string(channelLines) + " channel lines (line " + std::to_string(lineNumber) +
              "); the rule needs " + std::to_string(kChannelLines);
    return ReadOutcome::Rejected;
  }
  return ReadOutcome::Complete;
}

struct Failure {
  int16_t channel = 0;
  int32_t cycle = 0;  // in the analysis column, as the file counts it
};

// The rule on every selected channel; the failures in the order of their
// cycles (then channels).
std::vector<Failure> FailuresOf(Session& s, UiPort& ui, const EventArray& array, AnalysisColumn column) {
  std::vector<Failure> failures;
  for (int channel = 1; channel <= kMaxChannels; ++channel) {
    const ChannelEvents& events = array.channels[static_cast<std::size_t>(channel)];
    if (!s.iChSelected(channel) || events.count == 0) continue;
    const int k = FailureEvent(events);
    const std::string name = "Ch # " + std::to_string(channel);
    if (k == 0) {
      if (s.bDebug)
        modUtils::DebugPrint(ui, name + ": no IPC/JEDEC failure in " + std::to_string(events.count) + " events");
      continue;
    }
    const auto at = static_cast<std::size_t>(k - 1);
    failures.push_back({static_cast<int16_t>(channel), column == AnalysisColumn::DataCycles ? events.dataCycles[at] : events.cycles[at]});
    if (s.bDebug)
      modUtils::DebugPrint(ui, name + ": IPC/JEDEC failure at event #" + std::to_string(k) + " @ Data cycle #" +
                                   std::to_string(events.dataCycles[at]) + " @ Temp./Mech. Cycle #" +
                                   std::to_string(events.cycles[at]));
  }
  std::stable_sort(failures.begin(), failures.end(),
                   [](const Failure& a, const Failure& b) { return a.cycle < b.cycle; });
  return failures;
}

// Channels failing in cycle 0 or 1: the first-cycle question, and when the
// user agrees they leave the selection and the group. False when the user
// chose to stop.
bool SettleFirstCycleFailures(Session& s, UiPort& ui, std::vector<Failure>& failures) {
  FirstCycleFlags flags{};
  const auto firstCycle = [](const Failure& f) { return f.cycle < 2; };
  for (const Failure& f : failures)
    if (firstCycle(f)) flags[static_cast<std::size_t>(f.channel)] = true;
  const auto flagged = std::count_if(failures.begin(), failures.end(), firstCycle);
  if (flagged == 0) return true;
  if (!modTarvenix::IgnoreFirstCycleEvents(s, ui, flags)) return false;
  for (const Failure& f : failures)
    if (firstCycle(f)) s.iChSelected(f.channel) = 0;
  const int16_t d = s.iDataSetNum;
  s.iGroupSize(d) = basic::CInt(static_cast<double>(s.iGroupSize(d)) - static_cast<double>(flagged));
  failures.erase(std::remove_if(failures.begin(), failures.end(), firstCycle), failures.end());
  return true;
}

// One row per distinct failure cycle: the cycle counted from the initial cycle
// and the number of channels failing at it.
void StoreFailureRows(Session& s, const std::vector<Failure>& failures, int32_t initialCycle) {
  const int16_t d = s.iDataSetNum;
  int rows = 0;
  for (std::size_t i = 0; i < failures.size(); ++i) {
    if (i == 0 || failures[i].cycle != failures[i - 1].cycle) {
      ++rows;
      s.vEventCycle(d, rows) = basic::CLng(static_cast<double>(failures[i].cycle) - initialCycle);
    }
    s.vEventCount(d, rows) += 1;
  }
  // The fit needs a channel that survived: with every channel failed, the last
  // failure is left out, as under a count limit.
  if (rows > 0 && static_cast<long long>(failures.size()) >= s.iGroupSize(d)) {
    if (--s.vEventCount(d, rows) == 0) s.vEventCycle(d, rows--) = 0;
  }
  s.iNumEvents(d) = static_cast<int16_t>(rows);
}

int16_t ApplyRule(Session& s, UiPort& ui, AnalysisColumn column) {
  const int16_t d = s.iDataSetNum;
  s.iNumEvents(d) = 0;
  const std::string path = s.sIPCFiles(d);
  auto array = std::make_unique<EventArray>();
  std::string problem;
  switch (ReadEventArrayFile(path, *array, problem)) {
    case ReadOutcome::Missing:
      ui.UpdateTextBox("The IPC/JEDEC file " + path + " could not be found.");
      return kIpcDone;
    case ReadOutcome::Rejected:
      modSound::PlaySound(s, ui, modSound::Sound::Floop);
      ui.UpdateTextBox("The IPC/JEDEC file " + path + " cannot be used: " + problem + ".");
      return kIpcStop;
    case ReadOutcome::Complete:
      break;
  }
  s.iCycleType = array->cycleType;

  std::vector<Failure> failures = FailuresOf(s, ui, *array, column);
  const int32_t initialCycle = s.InitialCycle(column);
  if (!failures.empty() && failures.front().cycle < initialCycle) {
    // The message names the channel and its cycle as the file counts it,
    // beside the initial cycle it should not precede.
    const Failure& early = failures.front();
    s.iNumEvents(d) = 1;
    s.vEventCycle(d, early.channel) = early.cycle;
    return early.channel;
  }
  if (!SettleFirstCycleFailures(s, ui, failures)) return kIpcStop;
  ui.UpdateStatus(modTarvenix::kWorkingStatus);
  ui.UpdateTextBox("Channels failed under the IPC/JEDEC rule = " + std::to_string(failures.size()));
  StoreFailureRows(s, failures, initialCycle);
  return kIpcDone;
}

}  // namespace

void ProcessIPCData(Session& s, UiPort& ui, AnalysisColumn column, int16_t& iErr) {
  iErr = kIpcStop;
  modUtils::Trapped(s, ui, "modIPCAnalysis.ProcessIPCData", [&] { iErr = ApplyRule(s, ui, column); });
}

}  // namespace tarvenix::modIPCAnalysis
