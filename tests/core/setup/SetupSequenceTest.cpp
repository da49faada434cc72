// The setup dialog's work without the window: OK's refusals, and add, edit and
// re-analyse from the entries to the analysed data set.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "session/Session.h"
#include "setup/SetupSequence.h"
#include "support/FailurePoints.h"
#include "support/HistoryText.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::setup {
namespace {

using test::RecordingUi;

// Ten channels; eight fail.
const std::string kEightOfTen =
    test::FailureHistory({{40, {3}}, {75, {1, 7}}, {90, {2}}, {120, {9}}, {160, {4, 5}}, {210, {8}}});

struct Dialog {
  Session s;
  RecordingUi ui;
  test::TempDir dir;
  std::string dataFile = dir.Write("run.txt", kEightOfTen);
  DataSetSettings controls = test::RangeSetup("", "");  // channels 1..10, limit 1

  // Add Data Set, the entries, OK.
  FinishUpResult Add() {
    ActivateSetup(s, ui, SetupMode::Add, controls);
    controls.sDataFile = dataFile;
    return FinishUp(s, ui, SetupMode::Add, controls, [this] { ui.calls.push_back("HIDE"); });
  }
};

TEST(SetupChecks, EachRefusalShowsItsMessageFocusesItsBoxAndLoadsNothing) {
  struct Case {
    const char* what;
    void (*change)(DataSetSettings&, const std::string& folder);
    const char* message;
    SetupFocus focus;
  } cases[] = {
      {"missing channel selection file",
       [](DataSetSettings& c, const std::string& dir) {
         c.bFirstLastCh = false, c.bChSelFile = true, c.sChSelFile = dir + "/none.chs";
       },
       kChSelFileMissing, SetupFocus::txtChSelFile},
      {"missing data file", [](DataSetSettings& c, const std::string& dir) { c.sDataFile = dir + "/none.txt"; },
       kDataFileMissing, SetupFocus::txtDataFile},
      {"a folder as data file", [](DataSetSettings& c, const std::string& dir) { c.sDataFile = dir; },
       kDataFileMissing, SetupFocus::txtDataFile},
      {"missing event array file",
       [](DataSetSettings& c, const std::string&) { c.bNumOccurrences = false, c.bIPCOccurrences = true; },
       kIpcFileMissing, SetupFocus::txtDataFile},
      {"first 3.5", [](DataSetSettings& c, const std::string&) { c.sFirstCh = "3.5"; }, kFirstChannelInvalid,
       SetupFocus::txtFirstCh},
      {"first empty", [](DataSetSettings& c, const std::string&) { c.sFirstCh = ""; }, kFirstChannelInvalid,
       SetupFocus::txtFirstCh},
      {"first 0", [](DataSetSettings& c, const std::string&) { c.sFirstCh = "0"; }, kFirstChannelInvalid,
       SetupFocus::txtFirstCh},
      {"last ten", [](DataSetSettings& c, const std::string&) { c.sLastCh = "ten"; }, kLastChannelInvalid,
       SetupFocus::txtLastCh},
      {"last 1025", [](DataSetSettings& c, const std::string&) { c.sLastCh = "1025"; }, kLastChannelInvalid,
       SetupFocus::txtLastCh},
      {"first above last", [](DataSetSettings& c, const std::string&) { c.sFirstCh = "11"; }, kChannelOrder,
       SetupFocus::txtFirstCh},
      {"first equal to last", [](DataSetSettings& c, const std::string&) { c.sFirstCh = "10"; }, kChannelOrder,
       SetupFocus::txtFirstCh},
      {"four channels", [](DataSetSettings& c, const std::string&) { c.sFirstCh = "7"; }, kTooFewChannels,
       SetupFocus::txtFirstCh},
      {"limit 0", [](DataSetSettings& c, const std::string&) { c.sOccurrenceLimit = "0"; }, kZeroOccurrenceLimit,
       SetupFocus::None},
      {"limit -0", [](DataSetSettings& c, const std::string&) { c.sOccurrenceLimit = "-0"; }, kZeroOccurrenceLimit,
       SetupFocus::None},
  };
  for (const Case& c : cases) {
    Dialog d;
    ActivateSetup(d.s, d.ui, SetupMode::Add, d.controls);
    d.controls.sDataFile = d.dataFile;
    c.change(d.controls, d.dir.Path());
    const FinishUpResult r = FinishUp(d.s, d.ui, SetupMode::Add, d.controls);
    EXPECT_FALSE(r.accepted) << c.what;
    EXPECT_EQ(r.focus, c.focus) << c.what;
    EXPECT_EQ(d.ui.MessageTexts(), std::vector<std::string>{c.message}) << c.what;
    EXPECT_EQ(d.s.iNumDataSets, 0) << c.what;
  }
  // Five channels are enough.
  Dialog d;
  d.controls.sFirstCh = "6";
  EXPECT_TRUE(d.Add().accepted);
}

TEST(SetupSequence, AddFilesReadsAndAnalysesTheNewDataSetUpToFive) {
  Dialog d;
  EXPECT_TRUE(d.Add().accepted);
  EXPECT_EQ(d.s.iNumDataSets, 1);
  EXPECT_EQ(d.s.dataSetSettings(1).sDataID, "Data Set #1");
  EXPECT_EQ(d.s.sIPCFiles(1), d.dir.File("run.ipc"));
  EXPECT_EQ(d.s.sDataDir, d.dir.Path());
  EXPECT_EQ(d.s.iNumEvents(1), 8);
  EXPECT_EQ(d.ui.doEventsCalls, 1);
  ASSERT_FALSE(d.ui.calls.empty());
  EXPECT_EQ(d.ui.calls.front(), "HIDE") << "the dialog hides before reading starts";
  EXPECT_EQ(d.ui.statuses.back(), "Analysis complete.");

  // The next data set gets the next number, ID proposal and the last file.
  EXPECT_EQ(ActivateSetup(d.s, d.ui, SetupMode::Add, d.controls), "Tarvenix Setup for Data Set #2");
  EXPECT_EQ(d.controls.sDataID, "Data Set #2");
  EXPECT_EQ(d.controls.sDataFile, d.dataFile);
  EXPECT_TRUE(FinishUp(d.s, d.ui, SetupMode::Add, d.controls).accepted);
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(d.Add().accepted);
  EXPECT_EQ(d.s.iNumDataSets, 5);
  EXPECT_TRUE(d.ui.messages.empty());
}

TEST(SetupSequence, ARejectedChannelFileKeepsTheDialogOpenAndLoadsNothing) {
  Dialog d;
  d.controls.bFirstLastCh = false;
  d.controls.bChSelFile = true;
  d.controls.sChSelFile = d.dir.Write("bad.chs", "1\r\n2\r\n2\r\n");
  for (int press = 1; press <= 2; ++press) {
    if (press == 1) ActivateSetup(d.s, d.ui, SetupMode::Add, d.controls);
    d.controls.sDataFile = d.dataFile;
    FinishUpResult r = FinishUp(d.s, d.ui, SetupMode::Add, d.controls);
    EXPECT_FALSE(r.accepted);
    EXPECT_EQ(r.focus, SetupFocus::txtChSelFile);
    EXPECT_EQ(d.s.iNumDataSets, 0) << "an add that did not complete loads nothing";
    EXPECT_EQ(d.s.iDataSetNum, 1) << "the dialog stays on the new data set's number";
  }
  EXPECT_EQ(d.s.dataSetSettings(1).sDataFile, "") << "the record is saved only on success";
  CancelSetup(d.s, d.ui);
  EXPECT_EQ(d.s.iDataSetNum, 0);
}

TEST(SetupSequence, EditAndReAnalyseKeepTheNumberAndOverwriteTheRecord) {
  Dialog d;
  ASSERT_TRUE(d.Add().accepted);
  DataSetSettings controls;
  EXPECT_EQ(ActivateSetup(d.s, d.ui, SetupMode::Edit, controls), "Tarvenix Setup for Data Set #1");
  EXPECT_EQ(controls.sDataFile, d.dataFile);
  EXPECT_EQ(controls.sLastCh, "10");
  controls.sDataID = "Board 7";
  EXPECT_TRUE(FinishUp(d.s, d.ui, SetupMode::Edit, controls).accepted);
  EXPECT_EQ(d.s.iNumDataSets, 1);
  EXPECT_EQ(d.s.dataSetSettings(1).sDataID, "Board 7");
  // Re-analyse repeats the saved choices under the options in force now.
  d.s.iNParamType() = 1;
  DataSetSettings again;
  ActivateSetup(d.s, d.ui, SetupMode::ReAnalyze, again);
  EXPECT_TRUE(FinishUp(d.s, d.ui, SetupMode::ReAnalyze, again).accepted);
  EXPECT_EQ(d.s.iNumDataSets, 1);
  EXPECT_EQ(d.s.sNResult(1).rfind("N63 = ", 0), 0u) << d.s.sNResult(1);
  // Cancel in any mode goes back to the data set that was current.
  for (SetupMode mode : {SetupMode::Edit, SetupMode::Add, SetupMode::ReAnalyze}) {
    ActivateSetup(d.s, d.ui, mode, again);
    CancelSetup(d.s, d.ui);
    EXPECT_EQ(d.s.iDataSetNum, 1);
  }
}

// A re-analysis that does not complete leaves nothing of the run before, and
// every run ends with its status, whichever way it stopped.
TEST(SetupSequence, ARunThatDoesNotCompleteSaysSoLastAndLeavesNoResults) {
  struct Case {
    const char* what;
    std::string file;
  } cases[] = {
      {"too few failures", test::FailureHistory({{40, {3}}, {75, {1}}, {90, {2}}})},
      {"first-cycle events kept", test::FailureHistory({{1, {3}}}) + kEightOfTen},
  };
  for (const Case& c : cases) {
    Dialog d;
    ASSERT_TRUE(d.Add().accepted);
    ASSERT_TRUE(d.s.bAnalysisComplete(1));
    d.dir.Write("run.txt", c.file);
    d.ui.firstCycleAnswers.push_back(false);
    DataSetSettings again;
    ActivateSetup(d.s, d.ui, SetupMode::ReAnalyze, again);
    EXPECT_TRUE(FinishUp(d.s, d.ui, SetupMode::ReAnalyze, again).accepted) << c.what;
    EXPECT_EQ(d.ui.statuses.back(), "Analysis did not complete successfully.") << c.what;
    EXPECT_FALSE(d.s.bAnalysisComplete(1)) << c.what;
    EXPECT_EQ(d.s.iNumEvents(1), 0) << c.what;
    EXPECT_EQ(d.s.sBetaResult(1) + d.s.sNResult(1) + d.s.sRSquaredResult(1), "") << c.what;
  }
  // Add works on the number the new data set gets, whichever one is current.
  Dialog d;
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(d.Add().accepted);
  d.s.iDataSetNum = 2;
  EXPECT_EQ(ActivateSetup(d.s, d.ui, SetupMode::Add, d.controls), "Tarvenix Setup for Data Set #4");
  EXPECT_EQ(d.controls.sDataID, "Data Set #4");
}

}  // namespace
}  // namespace tarvenix::setup
