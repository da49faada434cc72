// Reading through CheckSetupEntries and ProcessData, for what the batch tool's
// case folders (tests/cases) cannot show: the state reading leaves that no
// transcript shows, files no case folder can hold (too large, unreadable,
// vanishing), and the reader against the simulator's plan over seeds.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <numeric>
#include <optional>

#include "HistorySimulator.h"
#include "input/ChannelSelection.h"
#include "input/DataHistory.h"
#include "input/FirstCycle.h"
#include "session/Session.h"
#include "support/HistoryText.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::test {
namespace {

namespace fs = std::filesystem;
using V = std::vector<int32_t>;

// A recording UI that can act as a status line is shown.
struct ReadingUi : RecordingUi {
  std::function<void(const std::string&)> onStatus;
  void UpdateStatus(const std::string& sMsg) override {
    if (onStatus) onStatus(sMsg);
    RecordingUi::UpdateStatus(sMsg);
  }
};

// Data set 1 set up and read, with everything the user would see recorded.
struct Reading {
  TempDir dir;
  Session s;
  ReadingUi ui;
  int16_t iErr = 0;

  Reading() {
    s.iDataSetNum = s.iNumDataSets = 1;
    s.bSoundStatus = false;
  }
  // The channel selection file when one is named, the channels first..last
  // when last is given (over the file's); the count limit, or the IPC/JEDEC
  // limit when `limit` is 0.
  void Setup(const std::string& historyFile, const std::string& chSelFile, int16_t first, int16_t last,
             int16_t limit, bool dataCycles) {
    DataSetSettings setup;
    setup.sDataFile = historyFile;
    setup.bNumOccurrences = limit != 0;
    setup.bIPCOccurrences = limit == 0;
    setup.bDataCycles = dataCycles;
    setup.bTempCycles = !dataCycles;
    setup.bChSelFile = !chSelFile.empty();
    setup.sChSelFile = chSelFile;
    setup.bFirstLastCh = chSelFile.empty() || last != 0;
    modTarvenix::CheckSetupEntries(s, ui, setup, first, last, limit, iErr);
  }
  void SetupHistory(const std::string& content, int16_t first, int16_t last, int16_t limit, bool dataCycles) {
    Setup(dir.Write("run.txt", content), "", first, last, limit, dataCycles);
  }
  void Read() { modTarvenix::ProcessData(s, ui, iErr); }
  // Rows 1..iNumEvents of the data set's failure data.
  V Cycles() const { return Rows(s.vEventCycle); }
  V Counts() const { return Rows(s.vEventCount); }
  template <typename Table>
  V Rows(const Table& t) const {
    V v;
    for (int i = 1; i <= s.iNumEvents(1); ++i) v.push_back(t(1, i));
    return v;
  }
};

// Six channels failing from data cycle 3, each event followed by its
// temperature cycle line.
const std::string kSixFail =
    Lines({DataCycleLine(3), EventLine(1, {1, 2, 3, 4, 5}), TempLine("4.0"), DataCycleLine(5), EventLine(1, {6}),
           TempLine("6.0")});

// The plot's axis names the kind of the last cycle line read in
// temperature/mechanical analysis, under the IPC/JEDEC limit that of the
// event array's last channel line.
TEST(ReaderState, TheCycleTypeFollowsTheLastCycleLineRead) {
  struct Case {
    std::string last;
    bool dataCycles;
    int16_t limit;
    int16_t cycleType;
  } cases[] = {{"    T =", false, 1, 1}, {"    M =", false, 1, 2}, {"    M =", true, 1, 0},
               {"1024:,M,", false, 0, 2}, {"1024:,T,", false, 0, 1}};
  for (const Case& c : cases) {
    Reading r;
    if (c.limit == 0) {
      std::string lines;
      for (int ch = 1; ch < 1024; ++ch) lines += std::to_string(ch) + ":1,T1,\r\n";
      r.dir.Write("run.ipc", lines + c.last + "\r\n");
    }
    r.SetupHistory(Lines({DataCycleLine(3), EventLine(1, {1, 2}), MechLine("5"), TempLine("6"), c.last}), 1, 10,
                   c.limit, c.dataCycles);
    r.Read();
    EXPECT_EQ(r.s.iCycleType, c.cycleType) << c.last;
  }
}

// The question shows the flagged channels and the kind of cycle; closed
// without an answer it leaves the one given before. Its warning sounds, and
// so does the one when temperature cycles cannot be had.
TEST(ReaderState, TheFirstCycleQuestionAndTheWarningSound) {
  struct Case {
    bool dataCycles;
    bool previousAnswer;
    std::string file;
    int16_t err;
    const char* flagged;
  } cases[] = {{true, true, Lines({DataCycleLine(1), EventLine(1, {1024, 3})}) + kSixFail, 0, " 3 1024"},
               {false, false, Lines({DataCycleLine(1), EventLine(1, {7}), TempLine("0.2")}) + kSixFail, 1, " 7"},
               {false, false, Lines({DataCycleLine(1), EventLine(1, {1, 2, 3, 4, 5})}), 1, ""}};
  for (const Case& c : cases) {
    Reading r;
    r.s.bSoundStatus = true;
    r.s.sAppPath = r.dir.Path();
    std::filesystem::create_directory(r.dir.File("Sounds"));
    r.dir.Write("Sounds/Floop.wav", "");
    r.s.bIgnoreFirstCycles = c.previousAnswer;
    r.ui.firstCycleAnswers.push_back(std::nullopt);
    r.SetupHistory(c.file, 1, 1024, 1, c.dataCycles);
    r.Read();
    EXPECT_EQ(r.iErr, c.err) << c.flagged;
    EXPECT_EQ(modTarvenix::FirstCycleChannelList(r.ui.lastFirstCycleFlags), c.flagged);
    EXPECT_EQ(r.ui.lastFirstCycleDataCycles, c.dataCycles && *c.flagged);
    EXPECT_EQ(static_cast<bool>(r.s.bIgnoreFirstCycles), c.previousAnswer);
    EXPECT_EQ(r.ui.sounds, std::vector<std::string>{"Floop.wav"}) << c.flagged;
  }
}

// Edit and Re-analyse read a data set again into the rows it had.
TEST(ReaderState, ReadingAgainStartsFromCleanRows) {
  Reading r;
  r.SetupHistory(kSixFail, 1, 10, 1, true);
  r.s.vEventCycle(1, 900) = 77;
  r.Read();
  r.Read();
  EXPECT_EQ(r.Counts(), (V{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(r.s.vEventCycle(1, 900), 0);
}

// A range chosen with a file replaces the file's channels; its headers count.
TEST(ReaderState, ARangeReplacesTheChannelSelectionFilesChannels) {
  Reading r;
  r.Setup(r.dir.Write("run.txt", kSixFail), r.dir.Write("sel.txt", "START: 1\r\n1\r\n2\r\n"), 2, 7, 1, true);
  r.Read();
  EXPECT_EQ(r.s.iGroupSize(1), 6);
  EXPECT_EQ(r.Cycles(), (V{2, 2, 2, 2, 4}));
}

// Only with channel 0 selected, which no dialog allows, can a file name 1025
// channels.
TEST(ReaderState, The1025thEventIsOutOfRange) {
  std::vector<int> all(1024);
  std::iota(all.begin(), all.end(), 1);
  Reading r;
  r.SetupHistory(Lines({DataCycleLine(3), EventLine(1, all) + "    :O."}), 0, 1024, 1, true);
  r.Read();
  EXPECT_EQ(r.ui.MessageTexts(),
            std::vector<std::string>{"Error in modTarvenix.ProcessData - Error #9  Subscript out of range\r"});
}

TEST(ReaderFiles, AHundredMegabyteLineIsReadThrough) {
  Reading r;
  {
    // Written in pieces: the test need not hold the line either.
    std::ofstream out(r.dir.File("huge.txt"), std::ios::binary);
    out << std::string(2u << 20, 'x') << "\r\n" << DataCycleLine(7) << "\r\n001::";
    std::string block;
    while (block.size() < (1u << 20)) block += "  99:O.";
    for (int i = 0; i < 100; ++i) out << block;
    out << "   1:O.   2:O.   3:O.   4:O.   5:O.\r\n" << Lines({DataCycleLine(8), EventLine(1, {6})});
  }
  r.s.bDebug = true;
  r.Setup(r.dir.File("huge.txt"), "", 1, 1024, 1, true);
  r.Read();
  EXPECT_EQ(r.iErr, 0);
  EXPECT_EQ(r.Cycles(), (V{7, 7, 7, 7, 7, 7, 8}));
  EXPECT_EQ(r.ui.debugLines[1], "Event #1 recorded on Ch # 5 @ Data cycle #7") << "read from the line's end";
  EXPECT_EQ(r.ui.debugLines[6], "Event #6 recorded on Ch # 99 @ Data cycle #7");
}

// A data history file, channel selection file or event array file that cannot
// be read, or goes missing (the data history file between the two passes):
// the calls to the UI port end with the program's own message.
TEST(ReaderFiles, ThatCannotBeReadOrGoMissing) {
  const std::string box = "MSG: Error in modTarvenix.";
  struct Case {
    const char* file;
    bool unreadable;  // else deleted when "Working..." is shown, or never written
    int16_t limit;    // 0: the IPC/JEDEC limit
    std::string lastCalls;
  } cases[] = {
      {"run.txt", true, 1, "considered: 1\n" + box + "ProcessData - Error #75  Path/File access error\r"},
      {"sel.txt", true, 1, "\n" + box + "CheckSetupEntries - Error #75  Path/File access error\r"},
      {"run.txt", false, 1, "STATUS: Working...\n" + box + "ProcessData - Error #53  File not found\r"},
      {"run.ipc", false, 0, "run.ipc could not be found.\nTEXT: Finished reading data history file.\n"
                            "TEXT: Number of analyzed events = 0\nSTATUS: Analysis did not complete successfully.\n"
                            "TEXT: Analysis requires at least 5 failed channels.\nMSG: Analysis requires at least 5 failed channels."},
  };
  for (const Case& c : cases) {
    Reading r;
    const std::string history = r.dir.Write("run.txt", Lines({DataCycleLine(3), EventLine(1, {1, 2, 3, 4, 5, 6})}));
    const bool chSel = std::string(c.file) == "sel.txt";
    if (chSel) r.dir.Write(c.file, "1\r\n2\r\n3\r\n4\r\n5\r\n");
    r.ui.onStatus = [&](const std::string& status) {
      if (status == "Working..." && !c.unreadable) fs::remove(history);
    };
    const auto run = [&] {
      r.Setup(history, chSel ? r.dir.File(c.file) : "", 1, chSel ? 0 : 10, c.limit, true);
      if (r.iErr == 0) r.Read();
      std::string calls;
      for (const std::string& call : r.ui.calls) calls += "\n" + call;
      return calls;
    };
    const std::string seen = c.unreadable ? OutOfReach(r.dir.File(c.file), Reach::Read, run) : run();
    EXPECT_EQ(seen.substr(seen.size() - std::min(seen.size(), c.lastCalls.size())), c.lastCalls) << seen;
  }
}

// The reader against the simulator's plan: over seeds and options, it must find
// the failure cycles the simulator planted, by count limit and by IPC/JEDEC rule.
using sim::SimOptions;
constexpr auto kTemp = sim::CycleLines::Temperature;
constexpr auto kMech = sim::CycleLines::Mechanical;

struct RoundTrip {
  const char* what;
  SimOptions options;
  int16_t limit;  // 0: the IPC/JEDEC limit
  bool dataCycles;
};

// The rows the reader must give for these failure cycles: with `grouped`, one
// per distinct cycle with the running count, else one per failure; one failure
// left out when every channel failed.
void ExpectedRows(const std::vector<int64_t>& failures, int groupSize, bool grouped, std::vector<int32_t>& cycles,
                  std::vector<int32_t>& counts) {
  for (std::size_t i = 0; i < failures.size(); ++i) {
    if (!grouped || i == 0 || failures[i] != failures[i - 1]) {
      cycles.push_back(static_cast<int32_t>(failures[i]));
      counts.push_back(counts.empty() ? 0 : counts.back());
    }
    ++counts.back();
  }
  if (counts.empty() || static_cast<int>(failures.size()) < groupSize) return;
  --counts.back();
  if (counts.back() == (counts.size() > 1 ? counts[counts.size() - 2] : 0)) {
    counts.pop_back();
    cycles.pop_back();
  }
}

TEST(SimulatedTest, TheReaderFindsTheFailuresTheSimulatorPlanted) {
  const SimOptions noisyTemperature = {.channels = 64, .eta = 900, .seed = 11, .cycleLines = kTemp, .dataPerCycle = 3,
                                       .ipc = true, .ipcNoise = 1};
  const RoundTrip cases[] = {
      {"32 channels, data cycles, first events", {.channels = 32, .seed = 1, .cycleLines = kTemp}, 1, true},
      {"32 channels, data cycles, third events", {.channels = 32, .seed = 2, .cycleLines = kTemp}, 3, true},
      {"32 channels, temperature cycles", {.channels = 32, .seed = 3, .cycleLines = kTemp, .dataPerCycle = 4}, 2, false},
      {"mechanical cycles counted from START:/TSTART:",
       {.channels = 40, .seed = 4, .cycleLines = kMech, .dataPerCycle = 2, .start = 500, .tstart = 500,
        .startHeader = true, .tstartHeader = true},
       1, false},
      {"1024 channels, long lines wrapped, LF ends",
       {.channels = 1024, .cycles = 200, .eta = 60, .seed = 5, .cycleLines = kTemp, .noise = 2, .lineEnd = "\n"}, 2,
       true},
      {"channels 1000 to 1024, CR ends, one entry a line",
       {.channels = 25, .firstChannel = 1000, .seed = 6, .cycleLines = kTemp, .lineEnd = "\r", .wrap = 13}, 1, false},
      {"every channel fails", {.channels = 16, .eta = 50, .seed = 7}, 1, true},
      {"failed channels keep reporting, limit 3",
       {.channels = 32, .cycles = 2000, .eta = 100, .seed = 9, .keepReporting = 80, .cycleLines = kTemp}, 3, false},
      {"failed channels keep reporting, the repeated number 999 counts once",
       {.channels = 32, .cycles = 2000, .eta = 100, .seed = 10, .keepReporting = 80, .cycleLines = kTemp}, 999, true},
      {"first-cycle failures ignored", {.channels = 32, .seed = 8, .cycleLines = kTemp, .firstCycleFailures = 3}, 1,
       true},
      {"IPC/JEDEC, temperature cycles, a noise event before many failures", noisyTemperature, 0, false},
      {"IPC/JEDEC, the same counted in data cycles", noisyTemperature, 0, true},
      {"IPC/JEDEC, mechanical cycles, up to seven noise events",
       {.channels = 48, .cycles = 2000, .eta = 1500, .seed = 12, .cycleLines = kMech, .ipc = true, .ipcNoise = 7}, 0,
       false},
      {"IPC/JEDEC counted from START:/TSTART:",
       {.channels = 40, .eta = 800, .seed = 13, .cycleLines = kMech, .dataPerCycle = 2, .start = 500, .tstart = 500,
        .startHeader = true, .tstartHeader = true, .ipc = true, .ipcNoise = 3},
       0, true},
      {"IPC/JEDEC, first-cycle failures ignored, ties in temperature cycles",
       {.channels = 1024, .eta = 2000, .seed = 14, .cycleLines = kTemp, .dataPerCycle = 10, .firstCycleFailures = 4,
        .ipc = true, .ipcNoise = 1},
       0, false},
      {"IPC/JEDEC, every channel fails", {.channels = 20, .eta = 100, .seed = 15, .cycleLines = kTemp, .ipc = true}, 0,
       true},
  };
  for (const RoundTrip& c : cases) {
    const bool ipc = c.limit == 0;
    ASSERT_EQ(sim::CheckOptions(c.options), "") << c.what;
    const sim::SimTest planned = sim::PlanTest(c.options);
    Reading r;
    const std::string history = r.dir.File("run.txt");
    if (ipc) {
      sim::WriteEventArrayFile(c.options, planned, sim::EventArrayPath(history));
    } else {
      sim::WriteHistoryFile(c.options, planned, history);
    }
    sim::WriteChannelSelectionFile(c.options, planned, r.dir.File("sel.txt"));
    r.ui.firstCycleAnswers.push_back(true);
    r.Setup(history, r.dir.File("sel.txt"), 0, 0, c.limit, c.dataCycles);
    r.Read();

    const auto failures = [&](bool withoutFirstCycle) {
      return ipc ? sim::ExpectedIpcFailureCycles(c.options, planned, c.dataCycles, withoutFirstCycle)
                 : sim::ExpectedFailureCycles(c.options, planned, c.limit, c.dataCycles, withoutFirstCycle);
    };
    const std::size_t firstCycle = failures(false).size() - failures(true).size();
    const int groupSize = c.options.channels - static_cast<int>(firstCycle);
    std::vector<int32_t> cycles, counts;
    ExpectedRows(failures(true), groupSize, ipc, cycles, counts);
    ASSERT_GE(cycles.size(), 5u) << c.what << ": the simulated test must give enough failures";
    if (c.options.ipcNoise > 0) {
      EXPECT_TRUE(std::any_of(planned.ipcFailures.begin(), planned.ipcFailures.end(),
                              [](const sim::SimEvent& e) { return e.occurrence > 1; }))
          << c.what << ": some failures must follow noise";
    }

    EXPECT_EQ(r.iErr, 0) << c.what;
    EXPECT_EQ(r.s.iGroupSize(1), groupSize) << c.what;
    EXPECT_EQ(r.Cycles(), cycles) << c.what;
    EXPECT_EQ(r.Counts(), counts) << c.what;
    EXPECT_TRUE(r.ui.messages.empty()) << c.what;
    EXPECT_EQ(modTarvenix::FirstCycleChannelList(r.ui.lastFirstCycleFlags).empty(), firstCycle == 0) << c.what;
    if (ipc) {
      EXPECT_EQ(r.s.iCycleType, c.options.cycleLines == kMech ? 2 : 1) << c.what;
    }
  }
}

TEST(SimulatedTest, ASeedGivesTheSameFileEveryTime) {
  TempDir dir;
  SimOptions o = {.channels = 64, .seed = 42, .cycleLines = kTemp, .noise = 1};
  const auto write = [&](const char* name) {
    sim::WriteHistoryFile(o, sim::PlanTest(o), dir.File(name));
    return ReadAll(dir.File(name));
  };
  const std::string first = write("a.txt");
  EXPECT_EQ(write("b.txt"), first);
  o.seed = 43;
  EXPECT_NE(write("c.txt"), first);
}

}  // namespace
}  // namespace tarvenix::test
