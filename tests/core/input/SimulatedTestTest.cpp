#include <gtest/gtest.h>

#include <algorithm>

#include "HistorySimulator.h"
#include "ReadingTest.h"

namespace tarvenix::test {
namespace {

using sim::SimOptions;
constexpr auto kTemp = sim::CycleLines::Temperature;
constexpr auto kMech = sim::CycleLines::Mechanical;

TEST(SimulatedTest, TheReaderFindsTheFailureCyclesTheSimulatorPlanted) {
  const struct RoundTrip {
    const char* what;
    SimOptions options;
    int16_t limit;
    bool dataCycles;
  } cases[] = {
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
  };
  for (const RoundTrip& c : cases) {
    const sim::SimTest planned = sim::PlanTest(c.options);
    Reading r;
    sim::WriteHistoryFile(c.options, planned, r.dir.File("run.txt"));
    sim::WriteChannelSelectionFile(c.options, planned, r.dir.File("sel.txt"));
    r.ui.firstCycleAnswers.push_back(true);
    r.SetupFiles(r.dir.File("run.txt"), r.dir.File("sel.txt"), 0, 0, c.limit, c.dataCycles);
    r.Read();

    std::vector<int64_t> expected =
        sim::ExpectedFailureCycles(c.options, planned, c.limit, c.dataCycles, /*withoutFirstCycle=*/true);
    const auto firstCycle = sim::ExpectedFailureCycles(c.options, planned, c.limit, c.dataCycles, false).size() -
                            expected.size();
    const int groupSize = c.options.channels - static_cast<int>(firstCycle);
    if (static_cast<int>(expected.size()) >= groupSize) expected.resize(static_cast<std::size_t>(groupSize - 1));
    ASSERT_GE(expected.size(), 5u) << c.what << ": the simulated test must give enough failures";

    EXPECT_EQ(r.iErr, 0) << c.what;
    EXPECT_EQ(r.s.iGroupSize(1), groupSize) << c.what;
    const std::vector<int32_t> cycles = r.Cycles();
    EXPECT_EQ(std::vector<int64_t>(cycles.begin(), cycles.end()), expected) << c.what;
    std::vector<int32_t> counts(expected.size());
    for (std::size_t i = 0; i < counts.size(); ++i) counts[i] = static_cast<int32_t>(i + 1);
    EXPECT_EQ(r.Counts(), counts) << c.what;
    EXPECT_EQ(r.ui.messages.size(), 0u) << c.what;
    EXPECT_EQ(r.CallsFrom("FIRSTCYCLE").empty(), firstCycle == 0) << c.what;
  }
}

// The rows the IPC/JEDEC limit gives for these failure cycles: one per distinct
// cycle with the running count of failed channels, one failure left out when
// every channel failed.
void GroupFailures(const std::vector<int64_t>& failures, int groupSize, std::vector<int32_t>& cycles,
                   std::vector<int32_t>& counts) {
  for (std::size_t i = 0; i < failures.size(); ++i) {
    if (i == 0 || failures[i] != failures[i - 1]) {
      cycles.push_back(static_cast<int32_t>(failures[i]));
      counts.push_back(counts.empty() ? 0 : counts.back());
    }
    ++counts.back();
  }
  if (!counts.empty() && static_cast<int>(failures.size()) >= groupSize) {
    --counts.back();
    if (counts.size() > 1 && counts.back() == counts[counts.size() - 2]) {
      counts.pop_back();
      cycles.pop_back();
    }
  }
}

TEST(SimulatedTest, TheIpcJedecRuleFindsTheFailuresBehindTheNoise) {
  const SimOptions noisyTemperature = {.channels = 64, .eta = 900, .seed = 11, .cycleLines = kTemp, .dataPerCycle = 3,
                                       .ipcNoise = 1};
  struct Case {
    const char* what;
    SimOptions options;
    bool dataCycles;
  } cases[] = {
      {"temperature cycles, a noise event before many failures", noisyTemperature, false},
      {"the same counted in data cycles", noisyTemperature, true},
      {"mechanical cycles, up to seven noise events",
       {.channels = 48, .cycles = 2000, .eta = 1500, .seed = 12, .cycleLines = kMech, .ipcNoise = 7}, false},
      {"counted from START:/TSTART:",
       {.channels = 40, .eta = 800, .seed = 13, .cycleLines = kMech, .dataPerCycle = 2, .start = 500, .tstart = 500,
        .startHeader = true, .tstartHeader = true, .ipcNoise = 3},
       true},
      {"first-cycle failures ignored, ties in temperature cycles",
       {.channels = 1024, .eta = 2000, .seed = 14, .cycleLines = kTemp, .dataPerCycle = 10, .firstCycleFailures = 4,
        .ipcNoise = 1},
       false},
      {"every channel fails", {.channels = 20, .eta = 100, .seed = 15, .cycleLines = kTemp}, true},
  };
  for (Case& c : cases) {
    c.options.ipc = true;
    ASSERT_EQ(sim::CheckOptions(c.options), "") << c.what;
    const sim::SimTest planned = sim::PlanTest(c.options);
    Reading r;
    r.ipcLimit = true;
    const std::string history = r.dir.File("run.txt");
    sim::WriteEventArrayFile(c.options, planned, sim::EventArrayPath(history));
    sim::WriteChannelSelectionFile(c.options, planned, r.dir.File("sel.txt"));
    r.ui.firstCycleAnswers.push_back(true);
    r.SetupFiles(history, r.dir.File("sel.txt"), 0, 0, 1, c.dataCycles);
    r.Read();

    const std::vector<int64_t> all = sim::ExpectedIpcFailureCycles(c.options, planned, c.dataCycles, false);
    const std::vector<int64_t> failures = sim::ExpectedIpcFailureCycles(c.options, planned, c.dataCycles, true);
    const int groupSize = c.options.channels - static_cast<int>(all.size() - failures.size());
    std::vector<int32_t> cycles, counts;
    GroupFailures(failures, groupSize, cycles, counts);
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
    EXPECT_EQ(r.s.iCycleType, c.options.cycleLines == kMech ? 2 : 1) << c.what;
    EXPECT_EQ(r.CallsFrom("FIRSTCYCLE").empty(), all.size() == failures.size()) << c.what;
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
