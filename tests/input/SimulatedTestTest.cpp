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
