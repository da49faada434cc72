// The reader against the simulator's plan: over seeds and options, it must find
// the failure cycles the simulator planted, by count limit and by IPC/JEDEC rule.

#include <gtest/gtest.h>

#include <algorithm>

#include "HistorySimulator.h"
#include "ReadingTest.h"
#include "input/FirstCycle.h"

namespace tarvenix::test {
namespace {

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
