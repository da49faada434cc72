#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "ReadingTest.h"
#include "input/IpcEvents.h"

namespace tarvenix::test {
namespace {

using V = std::vector<int32_t>;
using modIPCAnalysis::ChannelEvents;
using modIPCAnalysis::FailureEvent;

// Counts each followed by ",".
std::string Counts(const V& counts) {
  std::string text;
  for (int32_t c : counts) text += std::to_string(c) + ",";
  return text;
}

// "channel:" the data cycles, the letter, the temperature/mechanical cycles.
std::string ChannelLine(int channel, const V& data, const V& cycles, char letter = 'T') {
  return std::to_string(channel) + ":" + Counts(data) + letter + Counts(cycles);
}

// Temperature and data cycles that go together in these files: data cycle =
// 4 x temperature cycle + 3, so a test sees which list a result came from.
V DataCyclesOf(const V& cycles) {
  V data;
  for (int32_t c : cycles) data.push_back(c * 4 + 3);
  return data;
}
std::string TempChannel(int channel, const V& cycles) {
  return ChannelLine(channel, DataCyclesOf(cycles), cycles, 'T');
}

// Ten events from `first` whose tenth is `tenth`.
V TenEvents(int32_t first, int32_t tenth) {
  V v(9, first);
  v.push_back(tenth);
  return v;
}
V Then(V a, const V& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// A comment header, then channel lines 1..1024: the line given for a channel,
// else one with no events.
std::string EventArray(const std::map<int, std::string>& lines, const std::string& eol = "\r\n") {
  std::string text = "' Vorlantic event array file" + eol + "' channel: data cycles, T or M, cycles" + eol;
  for (int channel = 1; channel <= 1024; ++channel) {
    const auto it = lines.find(channel);
    text += (it != lines.end() ? it->second : std::to_string(channel) + ":,T,") + eol;
  }
  return text;
}

// Channels 1..5 failing at temperature cycles 101..105, data cycles 407..423.
std::map<int, std::string> FiveFailures() {
  std::map<int, std::string> lines;
  for (int channel = 1; channel <= 5; ++channel) lines[channel] = TempChannel(channel, TenEvents(100 + channel, 110));
  return lines;
}
const V kFiveFailureDataCycles = {407, 411, 415, 419, 423};

TEST(IpcRule, ACandidateIsConfirmedByTheEventsAfterIt) {
  struct Case {
    const char* what;
    bool mechanical;
    V cycles;
    int failsAt;
  } cases[] = {
      {"tenth event at exactly 1.1 times the first", false, TenEvents(100, 110), 1},
      {"tenth event one cycle over", false, TenEvents(100, 111), 0},
      {"small counts: 1.1 x 10 is 11", false, TenEvents(10, 11), 1},
      {"small counts: 12 is over", false, TenEvents(10, 12), 0},
      {"ten events in one cycle count one by one", false, V(10, 7), 1},
      {"a noise event before the failure", false, Then({50}, TenEvents(100, 110)), 2},
      {"noise, then too few events to confirm the next candidate", false, Then({50}, V(9, 100)), 0},
      {"nine events are fewer than the rule needs", false, V(9, 100), 0},
      {"the confirmed candidate is the first that qualifies", false, Then({100}, TenEvents(101, 110)), 1},
      {"fourth event exactly 5 cycles later", true, {20, 21, 22, 25}, 1},
      {"fourth event 6 cycles later", true, {20, 21, 22, 26}, 0},
      {"four events in one cycle", true, {5, 5, 5, 5}, 1},
      {"noise events before the failure", true, {3, 10, 20, 20, 21, 25}, 3},
      {"seven noise events, the eighth confirmed by the eleventh", true, {1, 10, 20, 30, 40, 50, 60, 70, 70, 71, 75}, 8},
      {"three events are fewer than the rule needs", true, {20, 20, 20}, 0},
      {"no events", true, {}, 0},
  };
  for (const Case& c : cases) {
    ChannelEvents events;
    events.mechanical = c.mechanical;
    events.count = static_cast<int>(c.cycles.size());
    std::copy(c.cycles.begin(), c.cycles.end(), events.cycles.begin());
    EXPECT_EQ(FailureEvent(events), c.failsAt) << c.what;
  }
}

TEST(IpcJedecLimit, AnIpcRunLogsEachStepAndGroupsTiedFailures) {
  Reading r;
  r.s.bDebug = true;
  r.SetupIpc(EventArray({
                 {2, TempChannel(2, Then({50}, TenEvents(100, 110)))},  // noise at 50, fails at 100
                 {3, TempChannel(3, TenEvents(100, 105))},
                 {4, TempChannel(4, TenEvents(160, 170))},
                 {5, TempChannel(5, TenEvents(130, 140))},
                 {7, TempChannel(7, TenEvents(100, 111))},  // never confirmed
                 {9, TempChannel(9, TenEvents(150, 150))},
                 {10, TempChannel(10, TenEvents(120, 130))},
                 {11, TempChannel(11, TenEvents(130, 131))},
                 {12, TempChannel(12, TenEvents(130, 143))},
                 {20, TempChannel(20, TenEvents(90, 90))},  // not selected
             }),
             1, 12, /*dataCycles=*/false);
  r.Read();

  EXPECT_EQ(r.iErr, 0);
  EXPECT_EQ(r.Cycles(), (V{100, 120, 130, 150, 160}));
  EXPECT_EQ(r.Counts(), (V{2, 3, 6, 7, 8}));
  // A failure's line names its event, data cycle and temperature cycle.
  const auto failed = [](int channel, int event, int cycle) {
    return "DEBUG: Ch # " + std::to_string(channel) + ": IPC/JEDEC failure at event #" + std::to_string(event) +
           " @ Data cycle #" + std::to_string(4 * cycle + 3) + " @ Temp./Mech. Cycle #" + std::to_string(cycle);
  };
  // The heading before is the count limit's, but for the limit's name.
  const std::vector<std::string> expected = {
      "TEXT: Occurrence limit to be considered: IPC/JEDEC Limit",
      "DEBUG: Ch # 2: IPC/JEDEC failure at event #2 @ Data cycle #403 @ Temp./Mech. Cycle #100",
      failed(3, 1, 100), failed(4, 1, 160), failed(5, 1, 130),
      "DEBUG: Ch # 7: no IPC/JEDEC failure in 10 events",
      failed(9, 1, 150), failed(10, 1, 120), failed(11, 1, 130), failed(12, 1, 130),
      "STATUS: Working...",
      "TEXT: Channels failed under the IPC/JEDEC rule = 8",
      "TEXT: Finished reading data history file.",
      "TEXT: Number of analyzed events = 5",
      "DEBUG: Finished with reading data history file.",
      "DEBUG: Total number of analyzed events = 5",
  };
  EXPECT_EQ(r.CallsFrom("TEXT: Occurrence"), expected);
}

TEST(IpcJedecLimit, FailureCyclesComeFromTheAnalysisColumnCountedFromTheInitialCycle) {
  struct Case {
    const char* what;
    bool dataCycles;
    int32_t start, tstart;
    V cycles;
  } cases[] = {
      {"data cycles", true, 0, 0, {403, 443, 483, 523, 563}},
      {"temperature cycles", false, 0, 0, {100, 110, 120, 130, 140}},
      {"data cycles from START:", true, 400, 90, {3, 43, 83, 123, 163}},
      {"temperature cycles from TSTART:", false, 400, 90, {10, 20, 30, 40, 50}},
  };
  for (const Case& c : cases) {
    std::map<int, std::string> lines;
    for (int channel = 1; channel <= 5; ++channel)
      lines[channel] = TempChannel(channel, TenEvents(90 + 10 * channel, 100 + 10 * channel));
    Reading r;
    r.SetupIpc(EventArray(lines), 1, 8, c.dataCycles);
    r.s.lInitialCycle(0) = c.start;
    r.s.lInitialCycle(1) = c.tstart;
    r.Read();
    EXPECT_EQ(r.iErr, 0) << c.what;
    EXPECT_EQ(r.Cycles(), c.cycles) << c.what;
    EXPECT_EQ(r.Counts(), (V{1, 2, 3, 4, 5})) << c.what;
  }
}

TEST(IpcJedecLimit, MechanicalLinesUseTheMechanicalRule) {
  std::map<int, std::string> lines;
  // Four events within 5 cycles fail a mechanical channel; a temperature line
  // would need ten.
  for (int channel = 1; channel <= 6; ++channel)
    lines[channel] = ChannelLine(channel, {1000 + channel, 1001 + channel, 1002 + channel, 1003 + channel},
                                 {10 * channel, 10 * channel + 1, 10 * channel + 2, 10 * channel + 5}, 'M');
  lines[7] = ChannelLine(7, {1, 2, 3, 4}, {70, 71, 72, 76}, 'M');
  Reading r;
  r.SetupIpc(EventArray(lines), 1, 10, /*dataCycles=*/false);
  r.s.iCycleType = 2;
  r.Read();
  EXPECT_EQ(r.iErr, 0);
  EXPECT_EQ(r.Cycles(), (V{10, 20, 30, 40, 50, 60}));
  // The last line read was a "T" line (channel 1024 has no events); the
  // simulated tests show "M" files and their data cycles.
  EXPECT_EQ(r.s.iCycleType, 1);
}

TEST(IpcJedecLimit, ExactlyTheFirst1024ChannelLinesAreReadAndAnyOtherLineStopsTheReading) {
  const std::string full = EventArray(FiveFailures(), "\n");
  const std::string missingLast = full.substr(0, full.size() - std::string("1024:,T,\n").size());
  struct Case {
    std::string what;
    std::string text;
    std::string problem;  // "" when read
  };
  std::vector<Case> cases = {
      {"1023 channel lines", missingLast, "it ends after 1023 channel lines (line 1025); the rule needs 1024"},
      {"comments only", "' one\n' two\n", "it ends after 0 channel lines (line 2); the rule needs 1024"},
      {"comment lines are not counted", "'a\n" + missingLast + "' b\n' c\n",
       "it ends after 1023 channel lines (line 1028); the rule needs 1024"},
      {"1024 channel lines", full, ""},
      {"whatever follows the 1024th is not read", full + "garbage\n1:1,T1,\n", ""},
      {"CR line ends", EventArray(FiveFailures(), "\r"), ""},
      {"the last line without a line end", full.substr(0, full.size() - 1), ""},
  };
  const std::pair<std::string, std::string> badLines[] = {  // in place of channel 7's, line 9 of the file
      {"7 1,2,T1,2,", "has no channel number before a \":\""},
      {":7,1,T1,2,", "has no channel number before a \":\""},
      {"", "has no channel number before a \":\""},
      {"7:1 T1 ", "has no \",\" after its \":\""},
      {"7,:1,T1,", "has no \",\" after its \":\""},
      {"7:1,2,t1,2,", "has no \"T\" or \"M\" after its channel number"},
      {"T:1,T1,", "has no \"T\" or \"M\" after its channel number"},
      {"7T:1,1,", "has no \"T\" or \"M\" after its channel number"},
      {"7M:1,1,", "has no \"T\" or \"M\" after its channel number"},
      {"12T:1,1,", "does not name a channel from 1 to 1024"},
      {"0:,T,", "does not name a channel from 1 to 1024"},
      {"1025:,T,", "does not name a channel from 1 to 1024"},
      {"7.5:,T,", "does not name a channel from 1 to 1024"},
      {"x7:,T,", "does not name a channel from 1 to 1024"},
      {"6:,T,", "names channel 6 a second time"},
      {"7:1,x,T1,2,", "holds \"x\", which is not a cycle count followed by \",\""},
      {"7:1,TM,1,", "holds \"M\", which is not a cycle count followed by \",\""},  // with a "T", "M" is text
      {"7:1,2,T1,2", "holds \"2\", which is not a cycle count followed by \",\""},
      {"7:1,2T1,2,", "holds \"2\", which is not a cycle count followed by \",\""},
      {"7:-1,T1,", "holds \"-1\", which is not a cycle count followed by \",\""},
      {"7:3000000000,T1,", "holds \"3000000000\", which is not a cycle count followed by \",\""},
      {"7:1,2,T1,", "lists 2 data cycle counts but 1 temperature cycle counts"},
      {"7:1,M1,2,", "lists 1 data cycle counts but 2 mechanical cycle counts"},
      {"7:" + std::string(70000, ' ') + ",T,", "is too long for a channel line"},
  };
  for (const auto& [line, problem] : badLines) {
    std::map<int, std::string> lines = FiveFailures();
    lines[7] = line;
    cases.push_back({line, EventArray(lines), "line 9 " + problem});
  }
  for (const Case& c : cases) {
    Reading r;
    r.SetupIpc(c.text, 1, 10, true);
    r.Read();
    if (c.problem.empty()) {
      EXPECT_EQ(r.iErr, 0) << c.what;
      EXPECT_EQ(r.Cycles(), kFiveFailureDataCycles) << c.what;
      continue;
    }
    EXPECT_EQ(r.iErr, modIPCAnalysis::kIpcStop) << c.what;
    EXPECT_EQ(r.ui.textLines.back(), "The IPC/JEDEC file " + r.s.sIPCFiles(1) + " cannot be used: " + c.problem + ".")
        << c.what;
    EXPECT_EQ(r.s.iNumEvents(1), 0) << c.what;
    EXPECT_TRUE(r.ui.messages.empty()) << c.what;
  }
}

TEST(IpcJedecLimit, CountsAreReadAsWrittenUpToEleven) {
  struct Case {
    const char* what;
    std::string line;  // channel 1's
    V cycles;          // its failure in data cycles, or none
  } cases[] = {
      {"blanks around counts", "   1: 403 , 403,403,403,403,403,403,403,403,403 , T 100,100,100,100,100,100,100,100,100,100,  ",
       {403}},
      {"empty slots hold no event",
       "1:403,403,403,403,403,403,403,403,403,403,,T100,100,100,100,100,100,100,100,100,100,,", {403}},
      {"empty slots between counts", "1:,403,,403,403,403,403,403,403,403,403,403,T100,100,100,100,100,100,100,100,100,,100,",
       {403}},
      {"decimal counts round half to even", "1:402.5,403,403,403,403,403,403,403,403,403,T99.5,100,100,100,100,100,100,100,100,100,",
       {402}},
      {"counts after the eleventh are not read",
       "1:1,403,403,403,403,403,403,403,403,403,403,x,T1,100,100,100,100,100,100,100,100,100,110,x,", {403}},
      {"only eleven kept: the twelfth cannot confirm", "1:1,2,3,4,5,6,7,8,9,10,11,12,T1,100,100,100,100,100,100,100,100,100,200,110,", {}},
  };
  for (const Case& c : cases) {
    std::map<int, std::string> lines{{1, c.line}};
    for (int channel = 2; channel <= 6; ++channel) lines[channel] = TempChannel(channel, TenEvents(200 + channel, 210));
    Reading r;
    r.SetupIpc(EventArray(lines), 1, 10, true);
    r.Read();
    EXPECT_EQ(r.iErr, 0) << c.what;
    V expected = c.cycles;
    expected.insert(expected.end(), {811, 815, 819, 823, 827});
    EXPECT_EQ(r.Cycles(), expected) << c.what;
  }
}

TEST(IpcJedecLimit, WhenEveryChannelFailsOneOfTheLastIsLeftOut) {
  const V tied = {100, 100, 110, 120, 120, 120, 130, 140, 150, 150};
  struct Case {
    V failAt;  // of channels 1, 2...
    int last;  // channels 1..last selected
    V cycles;
    V counts;
  } cases[] = {
      {tied, 10, {100, 110, 120, 130, 140, 150}, {2, 3, 6, 7, 8, 9}},
      {tied, 12, {100, 110, 120, 130, 140, 150}, {2, 3, 6, 7, 8, 10}},
      {{101, 102, 103, 104, 105, 106}, 6, {101, 102, 103, 104, 105}, {1, 2, 3, 4, 5}},  // its row goes altogether
  };
  for (const Case& c : cases) {
    std::map<int, std::string> lines;
    for (std::size_t i = 0; i < c.failAt.size(); ++i)
      lines[static_cast<int>(i + 1)] = TempChannel(static_cast<int>(i + 1), TenEvents(c.failAt[i], c.failAt[i]));
    Reading r;
    r.SetupIpc(EventArray(lines), 1, static_cast<int16_t>(c.last), false);
    r.Read();
    EXPECT_EQ(r.iErr, 0) << c.last;
    EXPECT_EQ(r.Cycles(), c.cycles) << c.last;
    EXPECT_EQ(r.Counts(), c.counts) << c.last;
    EXPECT_EQ(r.s.vEventCycle(1, static_cast<int>(c.cycles.size()) + 1), 0) << c.last;
  }
}

// The question and its texts are the count limit's; what is the rule's own is
// which failures it flags and what leaves the group.
TEST(IpcJedecLimit, FirstCycleFailuresAreLeftOutOnlyWhenTheUserAgrees) {
  for (const bool dataCycles : {true, false}) {
    std::map<int, std::string> lines = FiveFailures();
    lines[6] = TempChannel(6, TenEvents(106, 110));
    // In the analysis column these fail in cycles 1 and 0.
    lines[8] = dataCycles ? ChannelLine(8, V(10, 1), V(10, 5)) : ChannelLine(8, V(10, 40), V(10, 1));
    lines[1024] = dataCycles ? ChannelLine(1024, V(10, 0), V(10, 2)) : ChannelLine(1024, V(10, 40), V(10, 0));
    Reading r;
    r.ui.firstCycleAnswers.push_back(dataCycles);  // yes in data cycles, no in temperature cycles
    r.SetupIpc(EventArray(lines), 1, 1024, dataCycles);
    r.Read();
    EXPECT_EQ(r.CallsFrom("FIRSTCYCLE").front(), "FIRSTCYCLE: 8 1024") << dataCycles;
    if (dataCycles) {
      EXPECT_EQ(r.iErr, 0);
      EXPECT_EQ(r.Cycles(), (V{407, 411, 415, 419, 423, 427}));
      EXPECT_EQ(r.s.iGroupSize(1), 1022);
      EXPECT_EQ(r.s.iChSelected(8) + r.s.iChSelected(1024), 0);
    } else {
      EXPECT_EQ(r.iErr, modIPCAnalysis::kIpcStop);
      EXPECT_EQ(r.s.iNumEvents(1), 0);
      EXPECT_EQ(r.s.iGroupSize(1), 1024);
    }
  }
}

TEST(IpcJedecLimit, AFailureBeforeTheInitialCycleNamesItsChannelAndCycle) {
  std::map<int, std::string> lines = FiveFailures();
  lines[9] = ChannelLine(9, V(10, 40), V(10, 100));
  lines[3] = ChannelLine(3, V(10, 45), V(10, 100));
  Reading r;
  r.SetupIpc(EventArray(lines), 1, 10, true);
  r.s.lInitialCycle(0) = 50;
  r.Read();
  EXPECT_EQ(r.iErr, 1);
  EXPECT_EQ(r.CallsFrom("TEXT: #1"), (std::vector<std::string>{"TEXT: #1 Event recorded on Ch #9 @ Data cycle #40",
                                                               "TEXT: Specified initial cycle = 50", r.ui.calls.back()}));
  EXPECT_EQ(r.ui.messages.size(), 1u);
}

TEST(IpcJedecLimit, AMissingFileReadsNothing) {
  Reading r;
  r.SetupIpc("", 1, 10, true);
  std::remove(r.s.sIPCFiles(1).c_str());
  r.Read();
  EXPECT_EQ(r.iErr, 1);
  const std::vector<std::string> calls = r.CallsFrom("TEXT: The IPC");
  EXPECT_EQ(std::vector<std::string>(calls.begin(), calls.begin() + 3),
            (std::vector<std::string>{"TEXT: The IPC/JEDEC file " + r.s.sIPCFiles(1) + " could not be found.",
                                      "TEXT: Finished reading data history file.", "TEXT: Number of analyzed events = 0"}));
}

}  // namespace
}  // namespace tarvenix::test
