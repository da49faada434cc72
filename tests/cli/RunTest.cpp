#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "HistorySimulator.h"
#include "Run.h"
#include "support/HistoryText.h"
#include "support/TempDir.h"

namespace tarvenix::cli {
namespace {

using test::FailureHistory;
using test::ReadAll;
using test::TempDir;

// Ten of eleven channels fail at the cycles of the published rank-regression
// example; the eleventh never fails.
const std::string kTenOfEleven = FailureHistory(
    {{25, {1}}, {43, {2}}, {53, {3}}, {65, {4}}, {76, {5}}, {86, {6}}, {95, {7}}, {115, {8}}, {132, {9}}, {150, {10}}});
// Only three channels fail.
const std::string kThreeFail = FailureHistory({{30, {1}}, {60, {2}}, {90, {3}}});

struct CliRun {
  TempDir dir;
  std::ostringstream out, err;
  int status = -1;
  const std::string one = dir.Write("one.txt", kTenOfEleven);  // the file most runs read
  const std::string report = dir.File("analysis.txt");

  int Run(std::vector<std::string> args) {
    status = cli::Run(args, out, err);
    return status;
  }
  std::vector<std::string> OutLines() const { return Split(out.str()); }
  std::vector<std::string> ErrLines() const { return Split(err.str()); }
  std::vector<std::string> LastErrLines(std::size_t n) const {
    std::vector<std::string> lines = ErrLines();
    return {lines.end() - static_cast<std::ptrdiff_t>(std::min(n, lines.size())), lines.end()};
  }
  static std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
  }
};

bool Has(const std::vector<std::string>& lines, const std::string& line) {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

std::vector<std::string> ReadingLines(const std::string& file, int set, const std::string& id,
                                      const std::string& channels) {
  return {"Data Set #" + std::to_string(set), "Data Set ID: " + id, "Test Data History File: " + file,
          "Channels Selected:" + channels, "Data cycle analysis selected.", "Occurrence limit to be considered: 1"};
}

// Figures: tools/reference/weibull_reference.py, data set "eleven".
TEST(CliRun, AnalysesEachGroupInOrderAndWritesTheReport) {
  CliRun r;
  const std::string two = r.dir.Write("two.txt", kThreeFail);
  r.Run({"--report", r.report, "--data", r.one, "--channels", "1-11", "--id", "Lot 7", "--data", two, "--channels",
         "1-8"});
  EXPECT_EQ(r.status, kExitIncomplete);
  std::vector<std::string> expected = ReadingLines(r.one, 1, "Lot 7", "1 to 11");
  expected.insert(expected.end(), {"Finished reading data history file.", "Number of analyzed events = 10",
                                   "BETA = 1.82   (90% confidence level: +/- 4.6%)",
                                   "N50 = 80   (90% confidence range:  60 to 105)", "R-squared =  0.99", ""});
  std::vector<std::string> second = ReadingLines(two, 2, "Data Set #2", "1 to 8");
  expected.insert(expected.end(), second.begin(), second.end());
  expected.insert(expected.end(), {"Finished reading data history file.", "Number of analyzed events = 3",
                                   "Analysis requires at least 5 failed channels."});
  EXPECT_EQ(r.OutLines(), expected);
  EXPECT_EQ(r.ErrLines(), (std::vector<std::string>{
                              "STATUS: Reading history data file ...", "STATUS: Working...",
                              "STATUS: Analysis complete.", "STATUS: Reading history data file ...",
                              "STATUS: Working...", "STATUS: Analysis did not complete successfully.",
                              "MESSAGE: Analysis requires at least 5 failed channels."}));
  const std::string text = ReadAll(r.report);
  EXPECT_NE(text.find("\r\nData Set #1 - 'Lot 7' \r\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\r\nData Set #2 - 'Data Set #2' \r\n"), std::string::npos) << text;
}

TEST(CliRun, GlobalOptionsChooseTheFiguresAndEveryDataSetCompletes) {
  CliRun r;
  r.Run({"--n63", "--confidence", "95", "--debug", "--data", r.one, "--channels", "1-11", "--data", r.one,
         "--channels=1-11"});
  EXPECT_EQ(r.status, kExitComplete);
  const std::vector<std::string> lines = r.OutLines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "N63 = 98   (95% confidence range:  70 to 136)"), 2);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "BETA = 1.82   (95% confidence level: +/- 5.6%)"), 2);
  // The debug trace goes to standard error.
  EXPECT_TRUE(Has(r.ErrLines(), "Analysis of group data size of 11 channels."));
  EXPECT_TRUE(Has(r.ErrLines(), "Event #1 recorded on Ch # 1 @ Data cycle #25"));
}

TEST(CliRun, ARefusedEntryStopsTheRunAsCancelWouldAndTheReportCoversWhatWasLoaded) {
  CliRun r;
  r.Run({"--report", r.report, "--data", r.one, "--channels", "1-11", "--data", r.one, "--channels", "9-3", "--data",
         r.one, "--channels", "1-11"});
  EXPECT_EQ(r.status, kExitIncomplete);
  EXPECT_EQ(r.LastErrLines(2), (std::vector<std::string>{"MESSAGE: The first channel number may not be greater than or",
                                                         "equal to the last channel."}));
  const std::string text = ReadAll(r.report);
  EXPECT_NE(text.find("Data Set #1 "), std::string::npos);
  EXPECT_EQ(text.find("Data Set #2"), std::string::npos) << "the third group never ran";
}

TEST(CliRun, EntriesTheDialogWouldRefuse) {
  const std::pair<std::vector<std::string>, std::vector<std::string>> cases[] = {  // {options, standard error}
      {{}, {"MESSAGE: The entry for first channel is invalid."}},
      {{"--channels", "12"}, {"MESSAGE: The entry for last channel is invalid."}},
      {{"--channels", "1-11", "--limit", "70000"}, {"MESSAGE: Error in frmTarvenixSetup.FinishUp - Error #6  Overflow", ""}},
  };
  for (const auto& [options, err] : cases) {
    CliRun r;
    std::vector<std::string> args = {"--data", r.one};
    args.insert(args.end(), options.begin(), options.end());
    r.Run(args);
    EXPECT_EQ(r.status, kExitIncomplete) << testing::PrintToString(options);
    EXPECT_EQ(r.ErrLines(), err) << testing::PrintToString(options);
    EXPECT_EQ(r.out.str(), "");
  }
}

// The rows of a report's tables, the only lines that begin with a number:
// each row's failed count and cycle.
std::vector<std::pair<int32_t, int32_t>> ReportRows(const std::string& report) {
  std::vector<std::pair<int32_t, int32_t>> rows;
  std::istringstream in(report);
  for (std::string line; std::getline(in, line);) {
    int32_t failed = 0, cycle = 0;
    char comma = 0;
    if (std::istringstream(line) >> failed >> comma >> cycle && comma == ',') rows.emplace_back(failed, cycle);
  }
  return rows;
}

TEST(CliRun, TheIpcJedecLimitRecoversASimulatedTestsFailures) {
  const std::pair<sim::CycleLines, std::string> cases[] = {{sim::CycleLines::Temperature, "temp"},
                                                          {sim::CycleLines::Mechanical, "data"}};
  for (const auto& [lines, cycles] : cases) {
    sim::SimOptions o;
    o.channels = 40;
    o.cycles = 1500;
    o.eta = 900;
    o.dataPerCycle = 2;
    o.cycleLines = lines;
    o.ipc = true;
    o.ipcNoise = sim::MaxIpcNoise(lines);
    o.firstCycleFailures = 2;
    o.seed = 21;
    const sim::SimTest planned = sim::PlanTest(o);
    CliRun r;
    const std::string history = r.dir.File("board.txt");
    sim::WriteHistoryFile(o, planned, history);
    sim::WriteEventArrayFile(o, planned, sim::EventArrayPath(history));
    sim::WriteChannelSelectionFile(o, planned, r.dir.File("board-channels.txt"));
    r.Run({"--report", r.report, "--ignore-first-cycles", "yes", "--data", history, "--chsel",
           r.dir.File("board-channels.txt"), "--cycles", cycles, "--ipc"});
    EXPECT_EQ(r.status, kExitComplete) << cycles << "\n" << r.err.str();

    const std::vector<int64_t> failures = sim::ExpectedIpcFailureCycles(o, planned, cycles == "data", true);
    std::vector<std::pair<int32_t, int32_t>> expected;  // a row per cycle, with the count so far
    for (std::size_t i = 0; i < failures.size(); ++i)
      if (i + 1 == failures.size() || failures[i + 1] != failures[i])
        expected.emplace_back(static_cast<int32_t>(i + 1), static_cast<int32_t>(failures[i]));
    ASSERT_GE(expected.size(), 5u);
    ASSERT_LT(failures.size(), 38u) << "some channels must survive";
    EXPECT_EQ(ReportRows(ReadAll(r.report)), expected) << cycles;
    EXPECT_TRUE(Has(r.OutLines(), "Occurrence limit to be considered: IPC/JEDEC Limit"));
    EXPECT_TRUE(Has(r.OutLines(), "Channels failed under the IPC/JEDEC rule = " + std::to_string(failures.size())));
  }
}

TEST(CliRun, UsageErrorsRunNothingAndWriteNothing) {
  CliRun r;
  r.Run({"--report", r.report, "--data", r.one, "--channels", "1-11", "--colour"});
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.out.str(), "");
  EXPECT_EQ(r.err.str(),
            "tarvenix-cli: unknown option '--colour'\nTry 'tarvenix-cli --help' for more information.\n");
  EXPECT_FALSE(std::filesystem::exists(r.report));
}

TEST(CliRun, AReportThatCannotBeWrittenFailsTheRun) {
  CliRun r;
  r.Run({"--report", r.dir.File("no folder/analysis.txt"), "--data", r.one, "--channels", "1-11"});
  EXPECT_EQ(r.status, kExitIncomplete);
  EXPECT_EQ(r.LastErrLines(2),
            (std::vector<std::string>{"MESSAGE: Error in modTarvenix.SaveRawData - Error #76  Path not found", ""}));
}

}  // namespace
}  // namespace tarvenix::cli
