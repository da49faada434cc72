#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "session/Session.h"
#include "setup/SetupSequence.h"
#include "support/FailurePoints.h"
#include "support/HistoryText.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::setup {
namespace {

using test::FailureHistory;
using test::RecordingUi;
using test::TempDir;

// Ten channels; eight fail.
const std::string kEightOfTen =
    FailureHistory({{40, {3}}, {75, {1, 7}}, {90, {2}}, {120, {9}}, {160, {4, 5}}, {210, {8}}});

struct Dialog {
  Session s;
  RecordingUi ui;
  TempDir dir;
  std::string dataFile = dir.Write("run.txt", kEightOfTen);
  DataSetSettings controls = test::RangeSetup("", "");  // channels 1..10, limit 1

  // Add Data Set, the entries, OK.
  FinishUpResult Add() {
    ActivateSetup(s, ui, SetupMode::Add, controls);
    controls.sDataFile = dataFile;
    return FinishUp(s, ui, SetupMode::Add, controls, [this] { ui.calls.push_back("HIDE"); });
  }
};

TEST(SetupChecks, TheDataFileIsFiledUnderTheNextNumberBeforeTheLaterChecks) {
  Dialog d;
  ActivateSetup(d.s, d.ui, SetupMode::Add, d.controls);
  d.controls.sDataFile = d.dataFile;
  d.controls.sLastCh = "3";
  FinishUp(d.s, d.ui, SetupMode::Add, d.controls);
  EXPECT_EQ(d.s.sDataFile, d.dataFile);
  EXPECT_EQ(d.s.sDataDir, d.dir.Path());
  EXPECT_EQ(d.s.sDataFiles(1), d.dataFile);
  EXPECT_EQ(d.s.sIPCFiles(1), d.dir.File("run.ipc"));
  EXPECT_EQ(d.s.iNumDataSets, 0);
}

TEST(SetupSequence, AddFilesReadsAndAnalysesTheNewDataSetUpToFive) {
  Dialog d;
  FinishUpResult r = d.Add();
  EXPECT_TRUE(r.accepted);
  EXPECT_EQ(d.s.iNumDataSets, 1);
  EXPECT_EQ(d.s.iDataSetNum, 1);
  EXPECT_EQ(d.s.dataSetSettings(1).sDataID, "Data Set #1");
  EXPECT_EQ(d.s.iNumEvents(1), 8);
  EXPECT_EQ(d.ui.doEventsCalls, 1);
  ASSERT_FALSE(d.ui.calls.empty());
  EXPECT_EQ(d.ui.calls.front(), "HIDE") << "the dialog hides before reading starts";
  EXPECT_EQ(d.ui.statuses.back(), "Analysis complete.");
  EXPECT_EQ(d.s.sBetaResult(1).rfind("BETA = ", 0), 0u) << d.s.sBetaResult(1);

  // A second data set gets the next number; the ID proposal follows it.
  EXPECT_EQ(ActivateSetup(d.s, d.ui, SetupMode::Add, d.controls), "Tarvenix Setup for Data Set #2");
  EXPECT_EQ(d.controls.sDataID, "Data Set #2");
  EXPECT_EQ(d.controls.sDataFile, d.dataFile) << "the last data history file is proposed";
  EXPECT_TRUE(FinishUp(d.s, d.ui, SetupMode::Add, d.controls).accepted);
  EXPECT_EQ(d.s.iNumDataSets, 2);

  // With all five loaded, editing one works.
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(d.Add().accepted);
  d.s.iDataSetNum = 3;
  DataSetSettings controls;
  ActivateSetup(d.s, d.ui, SetupMode::Edit, controls);
  EXPECT_TRUE(FinishUp(d.s, d.ui, SetupMode::Edit, controls).accepted);
  EXPECT_TRUE(d.ui.messages.empty()) << d.ui.messages[0].text;
  EXPECT_EQ(d.s.iNumDataSets, 5);
}

TEST(SetupSequence, ARejectedChannelFileKeepsTheDialogOpenWithTheCountersMoved) {
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
    EXPECT_EQ(d.s.iNumDataSets, press) << "each OK moves the counters once more";
    EXPECT_EQ(d.s.iDataSetNum, press);
  }
  EXPECT_EQ(d.s.dataSetSettings(1).sDataFile, "") << "the record is saved only on success";
}

TEST(SetupSequence, EditAndReAnalyseKeepTheNumberAndOverwriteTheRecord) {
  Dialog d;
  ASSERT_TRUE(d.Add().accepted);
  // Edit: the record comes back into the controls; a new ID is entered.
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
  // Cancel in edit mode leaves the previous data set current.
  ActivateSetup(d.s, d.ui, SetupMode::Edit, again);
  CancelSetup(d.s, d.ui);
  EXPECT_EQ(d.s.iDataSetNum, 0);
}

}  // namespace
}  // namespace tarvenix::setup
