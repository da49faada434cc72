#include <gtest/gtest.h>

#include <algorithm>

#include "HistorySimulator.h"
#include "ReadingTest.h"

namespace tarvenix::test {
namespace {

using sim::CycleLines;
using sim::SimOptions;

struct RoundTrip {
  const char* what;
  SimOptions options;
  int16_t limit;
  bool dataCycles;
};

SimOptions Options(int channels, CycleLines lines, uint64_t seed) {
  SimOptions o;
  o.channels = channels;
  o.cycleLines = lines;
  o.seed = seed;
  return o;
}

template <typename F>
SimOptions With(SimOptions o, F change) {
  change(o);
  return o;
}

TEST(SimulatedTest, TheReaderFindsTheFailureCyclesTheSimulatorPlanted) {
  const RoundTrip cases[] = {
      {"32 channels, data cycles, first events", Options(32, CycleLines::Temperature, 1), 1, true},
      {"32 channels, data cycles, third events", Options(32, CycleLines::Temperature, 2), 3, true},
      {"32 channels, temperature cycles", With(Options(32, CycleLines::Temperature, 3), [](SimOptions& o) {
         o.dataPerCycle = 4;
       }), 2, false},
      {"mechanical cycles counted from START:/TSTART:",
       With(Options(40, CycleLines::Mechanical, 4),
            [](SimOptions& o) {
              o.dataPerCycle = 2;
              o.start = o.tstart = 500;
              o.startHeader = o.tstartHeader = true;
            }),
       1, false},
      {"1024 channels, long lines wrapped, LF ends", With(Options(1024, CycleLines::Temperature, 5),
                                                          [](SimOptions& o) {
                                                            o.eta = 60;
                                                            o.cycles = 200;
                                                            o.lineEnd = "\n";
                                                            o.noise = 2;
                                                          }),
       2, true},
      {"channels 1000 to 1024, CR ends, one entry a line",
       With(Options(25, CycleLines::Temperature, 6),
            [](SimOptions& o) {
              o.firstChannel = 1000;
              o.lineEnd = "\r";
              o.wrap = 13;
            }),
       1, false},
      {"every channel fails", With(Options(16, CycleLines::None, 7), [](SimOptions& o) { o.eta = 50; }), 1, true},
      {"failed channels keep reporting, limit 3", With(Options(32, CycleLines::Temperature, 9),
                                                       [](SimOptions& o) {
                                                         o.keepReporting = 80;
                                                         o.eta = 100;
                                                         o.cycles = 2000;
                                                       }),
       3, false},
      {"failed channels keep reporting, the repeated number 999 counts once",
       With(Options(32, CycleLines::Temperature, 10),
            [](SimOptions& o) {
              o.keepReporting = 80;
              o.eta = 100;
              o.cycles = 2000;
            }),
       999, true},
      {"first-cycle failures ignored", With(Options(32, CycleLines::Temperature, 8),
                                            [](SimOptions& o) { o.firstCycleFailures = 3; }),
       1, true},
  };
  for (const RoundTrip& c : cases) {
    const sim::SimTest planned = sim::PlanTest(c.options);
    Reading r;
    sim::WriteHistoryFile(c.options, planned, r.dir.File("run.txt"));
    sim::WriteChannelSelectionFile(c.options, planned, r.dir.File("sel.txt"));
    r.ui.firstCycleAnswers.push_back(true);
    r.SetupFromFiles(r.dir.File("run.txt"), r.dir.File("sel.txt"), c.limit, c.dataCycles);
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
  const SimOptions noisyTemperature = With(Options(64, CycleLines::Temperature, 11), [](SimOptions& o) {
    o.dataPerCycle = 3;
    o.ipcNoise = 1;
    o.eta = 900;
  });
  struct Case {
    const char* what;
    SimOptions options;
    bool dataCycles;
  } cases[] = {
      {"temperature cycles, a noise event before many failures", noisyTemperature, false},
      {"the same counted in data cycles", noisyTemperature, true},
      {"mechanical cycles, up to seven noise events",
       With(Options(48, CycleLines::Mechanical, 12), [](SimOptions& o) {
         o.ipcNoise = 7;
         o.eta = 1500;
         o.cycles = 2000;
       }),
       false},
      {"counted from START:/TSTART:", With(Options(40, CycleLines::Mechanical, 13),
                                             [](SimOptions& o) {
                                               o.ipcNoise = 3;
                                               o.eta = 800;
                                               o.dataPerCycle = 2;
                                               o.start = o.tstart = 500;
                                               o.startHeader = o.tstartHeader = true;
                                             }),
       true},
      {"first-cycle failures ignored, ties in temperature cycles",
       With(Options(1024, CycleLines::Temperature, 14),
            [](SimOptions& o) {
              o.firstCycleFailures = 4;
              o.dataPerCycle = 10;
              o.eta = 2000;
              o.ipcNoise = 1;
            }),
       false},
      {"every channel fails", With(Options(20, CycleLines::Temperature, 15), [](SimOptions& o) { o.eta = 100; }), true},
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
    r.SetupFromFiles(history, r.dir.File("sel.txt"), 1, c.dataCycles);
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
    EXPECT_EQ(r.s.iCycleType, c.options.cycleLines == CycleLines::Mechanical ? 2 : 1) << c.what;
    EXPECT_EQ(r.CallsFrom("FIRSTCYCLE").empty(), all.size() == failures.size()) << c.what;
  }
}

TEST(SimulatedTest, ASeedGivesTheSameFileEveryTime) {
  TempDir dir;
  SimOptions o = Options(64, CycleLines::Temperature, 42);
  o.noise = 1;
  sim::WriteHistoryFile(o, sim::PlanTest(o), dir.File("a.txt"));
  sim::WriteHistoryFile(o, sim::PlanTest(o), dir.File("b.txt"));
  o.seed = 43;
  sim::WriteHistoryFile(o, sim::PlanTest(o), dir.File("c.txt"));
  EXPECT_EQ(ReadAll(dir.File("a.txt")), ReadAll(dir.File("b.txt")));
  EXPECT_NE(ReadAll(dir.File("a.txt")), ReadAll(dir.File("c.txt")));
}

}  // namespace
}  // namespace tarvenix::test
