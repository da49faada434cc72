#include <gtest/gtest.h>

#include "analysis/Messages.h"
#include "session/Session.h"
#include "support/RecordingUi.h"

namespace tarvenix::modTarvenix {
namespace {

using test::RecordingUi;

TEST(DisplayData, PrefixesTheStoredTextsSoASecondCallDoublesThem) {
  Session s;
  RecordingUi ui;
  s.iDataSetNum = 2;
  s.sNLabel = "N50 =";
  s.sBetaResult(2) = " 2.35   (90% confidence level: +/- 12.3%)";
  s.sNResult(2) = " 1234   (90% confidence range:  1001 to 1521)";
  s.sRSquaredResult(2) = "R-squared =  0.98";
  DisplayData(s, ui, 0);
  std::vector<std::string> first = {"TEXT: BETA = 2.35   (90% confidence level: +/- 12.3%)",
                                    "TEXT: N50 = 1234   (90% confidence range:  1001 to 1521)",
                                    "TEXT: R-squared =  0.98", "STATUS: Analysis complete."};
  EXPECT_EQ(ui.calls, first);
  ui.calls.clear();
  DisplayData(s, ui, 1);
  std::vector<std::string> second = {"TEXT: Data Set #2", "TEXT: BETA =BETA = 2.35   (90% confidence level: +/- 12.3%)",
                                     "TEXT: N50 =N50 = 1234   (90% confidence range:  1001 to 1521)",
                                     "TEXT: R-squared =  0.98", "STATUS: Analysis complete."};
  EXPECT_EQ(ui.calls, second);
}

TEST(DisplayError, ShortCodesGoToTheResultsBoxAndANotice) {
  const std::pair<int16_t, std::string> cases[] = {
      {2, "Channels with first temperature or mechanical cycle  events cannot be analyzed."},
      {4, "Analysis cannot be performed on fewer than 5 channels."},
  };
  for (const auto& [code, message] : cases) {
    Session s;
    RecordingUi ui;
    s.iMinFailures = 5;
    s.bDataCycles = false;
    DisplayError(s, ui, code, 0, 0);
    std::vector<std::string> expected = {"STATUS: Analysis did not complete successfully.", "TEXT: " + message,
                                         "MSG: " + message};
    EXPECT_EQ(ui.calls, expected) << code;
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Exclamation);
  }
}

TEST(DisplayError, EventsBeforeTheInitialCycleAndUnknownCodesGiveFiveLines) {
  struct Case {
    int16_t code;
    bool dataCycles;
    int32_t dataOffset;
    std::vector<std::string> lines;
  } cases[] = {
      {5, true, 0, {"The data history file contains channels which have events at cycle-",
                    "counts less than those specified in the cycle-offset files.", "",
                    "#3 Event recorded on Ch #17 @ Data cycle #40", ""}},
      {5, false, 120, {"The data history file contains channels which have events at cycle-",
                       "counts less than those specified in the cycle-offset files.", "",
                       "#3 Event recorded on Ch # 17 @ Data cycle #40 @ appropriate Temp./Mech. Cycle #", ""}},
      {3, true, 0, {"", "", "", "", ""}},
  };
  for (const Case& c : cases) {
    Session s;
    RecordingUi ui;
    s.iDataSetNum = 1;
    s.iNumEvents(1) = 3;
    s.bDataCycles = c.dataCycles;
    s.lInitialCycle(0) = c.dataOffset;
    DisplayError(s, ui, c.code, 17, 40);
    EXPECT_EQ(ui.textLines, c.lines) << c.code;
    std::string message;
    for (const std::string& l : c.lines) message += "\r" + l;
    EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{message});
  }
}

}  // namespace
}  // namespace tarvenix::modTarvenix
