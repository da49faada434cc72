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

// Fractions and ordinates: NumPy, from the single-precision survival fractions.
// Once a second data set is added, the fraction column of data set 1 repeats
// what the current data set (2) gives for the same point numbers, and beyond
// its six points the count 0 gives negative fractions: the report has always
// shown it so.
TEST(Report, LineForLineWithOneDataSetThenTwoAndSavedWhole) {
  Session s;
  RecordingUi ui;
  s.iFractionType() = 2;
  s.sPlotTitle = "Thermal shock, lot 7";
  DataSetSettings first = RangeSetup("Board A", "/lab/run1.txt");
  first.bFirstLastCh = false;
  first.bChSelFile = true;
  first.sChSelFile = "/lab/boards.chs";
  AddAnalysedDataSet(s, ui, first, 10, test::PublishedExample());
  const std::vector<std::string> heading = {
      std::string("Created using Tarvenix v") + version::kText + " on 3/5/2026 2:07:09 PM",
      "Plot Title: Thermal shock, lot 7",
      "",
      "Data Set #1 - 'Board A' ",
      "Test Data History File: /lab/run1.txt",
      "Channel Selection File: /lab/boards.chs",
      "Data cycle analysis selected.",
      "Occurrence limit considered: 1",
      "Number of analyzed events = 10",
      "BETA = 2.03   (90% confidence level: +/- 3.3%)",
      "N50 = 80   (90% confidence range:  61 to 105)",
      "R-squared =  1.00",
      "------------------------",
      "Number        Cycle         Failure       Weibull",
      "Failed        Number        Fraction      Ordinate",
      "------        ------        --------      --------",
  };
  std::vector<std::string> expected = heading;
  expected.insert(expected.end(), {
      " 1,            25,           0.0673,      -2.6638", " 2,            43,           0.1635,      -1.7233",
      " 3,            53,           0.2596,      -1.2020", " 4,            65,           0.3558,      -0.8217",
      " 5,            76,           0.4519,      -0.5086", " 6,            86,           0.5481,      -0.2304",
      " 7,            95,           0.6442,       0.0329", " 8,            115,          0.7404,       0.2990",
      " 9,            132,          0.8365,       0.5940", " 10,           150,          0.9327,       0.9927",
      ""});
  EXPECT_EQ(ReportText(s, March5At2pm()), test::Lines(expected));

  DataSetSettings second = RangeSetup("", "/lab/run2.txt");
  second.bDataCycles = false;
  second.bTempCycles = true;
  second.bNumOccurrences = false;
  second.bIPCOccurrences = true;
  second.sFirstCh = "20";
  second.sLastCh = "31";
  AddAnalysedDataSet(s, ui, second, 12, test::TiedExample());
  expected = heading;
  expected.insert(expected.end(), {
      " 1,            25,           0.0565,      -2.6638", " 2,            43,           0.2177,      -1.7233",
      " 3,            53,           0.2984,      -1.2020", " 4,            65,           0.4597,      -0.8217",
      " 5,            76,           0.5403,      -0.5086", " 6,            86,           0.7016,      -0.2304",
      " 7,            95,          -0.0242,       0.0329", " 8,            115,         -0.0242,       0.2990",
      " 9,            132,         -0.0242,       0.5940", " 10,           150,         -0.0242,       0.9927",
      "",
      "Data Set #2 ",
      "Test Data History File: /lab/run2.txt",
      "Channels Selected: 20 to 31",
      "Temperature or mechanical cycle analysis selected.",
      "Occurrence limit considered: IPC/JEDEC Limit",
      "Number of analyzed events = 6",
      "BETA = 1.83   (90% confidence level: +/- 13.9%)",
      "N50 = 45   (90% confidence range:  34 to 61)",
      "R-squared =  0.98",
      "------------",
      "Number        Cycle         Failure       Weibull",
      "Failed        Number        Fraction      Ordinate",
      "------        ------        --------      --------",
      " 1,            12,           0.0565,      -2.8455", " 3,            26,           0.2177,      -1.4042",
      " 4,            27,           0.2984,      -1.0374", " 6,            47,           0.4597,      -0.4852",
      " 7,            48,           0.5403,      -0.2520", " 9,            58,           0.7016,       0.1901",
      "",
  });
  EXPECT_EQ(ReportText(s, March5At2pm()), test::Lines(expected));

  // Saving writes the same text in place of an old report.
  test::TempDir dir;
  const std::string path = dir.Write("analysis.txt", "old report\r\n");
  int16_t iErr = 7;
  SaveRawData(s, ui, path, iErr, March5At2pm());
  EXPECT_EQ(iErr, 0);
  EXPECT_EQ(test::ReadAll(path), test::Lines(expected));
}

TEST(Report, UnfinishedAnalysisPrintsWhatWasStored) {
  Session s;
  RecordingUi ui;
  // Too few points to finish: the error box, no result texts, the stored points.
  AddAnalysedDataSet(s, ui, RangeSetup("X", "/lab/x.txt"), 10, {{100, 1}, {200, 2}});
  const std::string text = ReportText(s, March5At2pm());
  EXPECT_NE(text.find("Number of analyzed events = 2\r\n\r\n\r\n\r\n------------------\r\n"), std::string::npos) << text;
  EXPECT_NE(text.find(" 2,            200,          0.2000,      -1.4999\r\n"), std::string::npos) << text;
}

TEST(SaveRawData, AFailureKeepsTheOldReportAndShowsTheErrorBox) {
  test::TempDir dir;
  const std::string path = dir.Write("analysis.txt", "old report\r\n");
  test::OpenForEveryone(dir.Path());
  fs::permissions(dir.Path(), fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
  const std::string outcome = test::AsUnprivilegedUser([&] {
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
