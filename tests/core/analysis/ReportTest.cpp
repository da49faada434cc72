#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "analysis/Report.h"
#include "session/Session.h"
#include "support/FailurePoints.h"
#include "support/HistoryText.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"
#include "tarvenix/Version.h"

namespace tarvenix::modTarvenix {
namespace {

namespace fs = std::filesystem;
using test::AddAnalysedDataSet;
using test::RangeSetup;
using test::RecordingUi;

std::tm March5At2pm() {
  std::tm t{};
  t.tm_year = 2026 - 1900;
  t.tm_mon = 2;
  t.tm_mday = 5;
  t.tm_hour = 14;
  t.tm_min = 7;
  t.tm_sec = 9;
  return t;
}

// The report's layout with its numbers is shown by the case folders
// (tests/cases); these are the forms the batch tool cannot give.
TEST(Report, AnIdLessHeadingAndTheIpcLimit) {
  Session s;
  RecordingUi ui;
  DataSetSettings setup = RangeSetup("", "/lab/run2.txt");
  setup.bNumOccurrences = false;
  setup.bIPCOccurrences = true;
  AddAnalysedDataSet(s, ui, setup, 12, test::TiedExample());
  const std::string text = ReportText(s, March5At2pm());
  EXPECT_EQ(text.rfind(std::string("Created using Tarvenix v") + version::kText + " on 3/5/2026 2:07:09 PM\r\n", 0), 0u);
  EXPECT_NE(text.find("\r\nData Set #1 \r\nTest Data History File: /lab/run2.txt\r\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\r\nOccurrence limit considered: IPC/JEDEC Limit\r\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\r\n------------\r\n"), std::string::npos) << "dashes under the 12-character heading";
}

// An analysis that did not complete shows no numbers, not even an earlier run's.
TEST(Report, AnUnfinishedAnalysisSaysSoInPlaceOfResultsAndPoints) {
  Session s;
  RecordingUi ui;
  AddAnalysedDataSet(s, ui, RangeSetup("X", "/lab/x.txt"), 10, {{100, 1}, {200, 2}});  // too few to fit
  s.sBetaResult(1) = "BETA = 9.99 from before";
  EXPECT_NE(ReportText(s, March5At2pm())
                .find("\r\nOccurrence limit considered: 1\r\nAnalysis did not complete successfully.\r\n\r\n"),
            std::string::npos);
  EXPECT_EQ(ReportText(s, March5At2pm()).find("BETA"), std::string::npos);
}

TEST(SaveRawData, AFailureKeepsTheOldReportAndShowsTheErrorBox) {
  test::TempDir dir;
  const std::string path = dir.Write("analysis.txt", "old report\r\n");
  const std::string outcome = test::OutOfReach(path, test::Reach::Write, [&] {
    Session s;
    RecordingUi ui;
    int16_t iErr = 0;
    SaveRawData(s, ui, path, iErr, March5At2pm());
    return std::to_string(iErr) + "|" + (ui.messages.empty() ? "" : ui.messages[0].text);
  });
  EXPECT_EQ(outcome, "1|Error in modTarvenix.SaveRawData - Error #75  Path/File access error\r");
  EXPECT_EQ(test::ReadAll(path), "old report\r\n");
}

}  // namespace
}  // namespace tarvenix::modTarvenix
