#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>

#include "support/HistoryText.h"
#include "ReadingTest.h"

namespace tarvenix::test {
namespace {

using V = std::vector<int32_t>;

TEST(ProcessData, ACountLimitRunLogsEachStepAndStoresTheFailures) {
  Reading r;
  r.s.bDebug = true;
  r.Setup(Lines({"Vorlantic data history file", DataCycleLine(9), DataCycleLine(10), EventLine(3, {5, 7}),
                 EventLine(2, {9}), DataCycleLine(12), EventLine(3, {5, 9}), DataCycleLine(15), EventLine(3, {3}),
                 ContinuationLine({11, 12}), EventLine(3, {4})}),
          1, 12, 3, true);
  r.Read();

  EXPECT_EQ(r.iErr, 0);
  EXPECT_EQ(r.Cycles(), (V{10, 10, 12, 15, 15, 15, 15}));
  EXPECT_EQ(r.Counts(), (V{1, 2, 3, 4, 5, 6, 7}));
  const std::vector<std::string> pass = {
      "DEBUG: Event #1 recorded on Ch # 7 @ Data cycle #10", "DEBUG: Event #2 recorded on Ch # 5 @ Data cycle #10",
      "DEBUG: Event #3 recorded on Ch # 9 @ Data cycle #12", "DEBUG: Event #4 recorded on Ch # 3 @ Data cycle #15",
      "DEBUG: Event #5 recorded on Ch # 12 @ Data cycle #15", "DEBUG: Event #6 recorded on Ch # 11 @ Data cycle #15",
      "DEBUG: Event #7 recorded on Ch # 4 @ Data cycle #15"};
  std::vector<std::string> expected = {"STATUS: Reading history data file ...",
                                       "TEXT: Data Set #1",
                                       "TEXT: Data Set ID: Board 7",
                                       "TEXT: Test Data History File: " + r.dataFile,
                                       "TEXT: Channels Selected:1 to 12",
                                       "TEXT: Data cycle analysis selected.",
                                       "TEXT: Occurrence limit to be considered: 3",
                                       "DEBUG: Starting First Pass\r\n"};
  expected.insert(expected.end(), pass.begin(), pass.end());
  expected.insert(expected.end(), {"DEBUG: Temperature or mechanical cycles are not available for analysis.",
                                   "STATUS: Working...", "DEBUG: Starting Second Pass\r\n"});
  expected.insert(expected.end(), pass.begin(), pass.end());
  expected.insert(expected.end(), {"TEXT: Finished reading data history file.", "TEXT: Number of analyzed events = 7",
                                   "DEBUG: Finished with reading data history file.",
                                   "DEBUG: Total number of analyzed events = 7"});
  EXPECT_EQ(r.ui.calls, expected);
}

TEST(ProcessData, TheSecondPassTracesEachEventWithTheCycleTheFirstPassFound) {
  Reading r;
  r.s.bDebug = true;
  r.ui.firstCycleAnswers.push_back(true);
  r.Setup(Lines({DataCycleLine(10), EventLine(1, {5, 7}), TempLine("2.0"), DataCycleLine(12), EventLine(1, {9}),
                 TempLine("3.0"), DataCycleLine(13), EventLine(1, {1, 2})}),
          1, 10, 1, false);
  r.Read();
  // The last two events never get a cycle line: they stay at cycle 0 and are
  // flagged as first-cycle events, but only leading ones are removed.
  EXPECT_EQ(r.ui.debugLines[6], "Temperature or mechanical cycles are available for analysis.");
  EXPECT_EQ(std::vector<std::string>(r.ui.debugLines.begin() + 8, r.ui.debugLines.begin() + 13),
            (std::vector<std::string>{"Event #1 recorded on Ch # 7 @ Data cycle #10 @ Temp./Mech. Cycle #3",
                                      "Event #2 recorded on Ch # 5 @ Data cycle #10 @ Temp./Mech. Cycle #3",
                                      "Event #3 recorded on Ch # 9 @ Data cycle #12 @ Temp./Mech. Cycle #4",
                                      "Event #4 recorded on Ch # 2 @ Data cycle #13 @ Temp./Mech. Cycle #0",
                                      "Event #5 recorded on Ch # 1 @ Data cycle #13 @ Temp./Mech. Cycle #0"}));
  EXPECT_EQ(r.ui.lastFirstCycleFlags[1] && r.ui.lastFirstCycleFlags[2], true);
  EXPECT_EQ(r.Cycles(), (V{3, 3, 4, 0, 0}));
}

TEST(ProcessData, ReadsEachLineKindAtItsPositions) {
  struct Case {
    const char* what;
    std::vector<std::string> lines;
    bool dataCycles;
    V cycles;
  } cases[] = {
      {"the data cycle number starts at position 9", {"Cycle #12", EventLine(1, {5})}, true, {2}},
      {"a data cycle line is case-sensitive", {DataCycleLine(12), "cycle # 30", EventLine(1, {5})}, true, {12}},
      {"occurrence numbers other than the limit are ignored",
       {DataCycleLine(4), EventLine(2, {5}), EventLine(11, {6}), DataCycleLine(5), EventLine(1, {6, 7})},
       true,
       {5, 5}},
      {"the occurrence number is the value of positions 1 to 3",
       {DataCycleLine(4), "  1:: 17:O.", DataCycleLine(6), "1  :: 18:O."},
       true,
       {4, 6}},
      {"a channel is recorded once", {DataCycleLine(4), EventLine(1, {5, 5}), DataCycleLine(6), EventLine(1, {5})},
       true,
       {4}},
      {"entries are read right to left and named by the three characters before the two unread ones",
       {DataCycleLine(3), "001::   8ab.  9xy."},
       true,
       {3, 3}},
      {"a leading 0 names channels from 1000",
       {DataCycleLine(8), EventLine(1, {20, 24}), DataCycleLine(9), "001:: 020:O.", EventLine(1, {1024, 1000})},
       true,
       {8, 8, 9, 9, 9}},
      {"continuation lines follow an accepted event line",
       {DataCycleLine(7), EventLine(1, {1}), ContinuationLine({2}), ContinuationLine({3}), DataCycleLine(9),
        ContinuationLine({4})},
       true,
       {7, 7, 7}},
      {"after an ignored event line a continuation line is an ordinary line",
       {DataCycleLine(7), EventLine(2, {1}), ContinuationLine({2}), EventLine(1, {3})},
       true,
       {7}},
      {"a temperature cycle count gets 0.6 before rounding",
       {DataCycleLine(2), EventLine(1, {1}), TempLine("4.0"), DataCycleLine(3), EventLine(1, {2}), TempLine("10.3"),
        DataCycleLine(4), EventLine(1, {3}), TempLine("4.9")},
       false,
       {5, 11, 6}},
      {"a mechanical cycle count is rounded as it stands",
       {DataCycleLine(2), EventLine(1, {1}), MechLine("4.0"), DataCycleLine(3), EventLine(1, {2}), MechLine("10.5")},
       false,
       {4, 10}},
      {"a cycle line labels every event since the last one",
       {DataCycleLine(2), EventLine(1, {1}), TempLine("6"), DataCycleLine(3), EventLine(1, {2}), EventLine(1, {3}),
        TempLine("7"), TempLine("9")},
       false,
       {7, 8, 8}},
      {"lines that match nothing are ignored",
       {"   Cycle # 4", "  ::", "   T = 4", DataCycleLine(12), "      T =", EventLine(1, {5})},
       true,
       {12}},
  };
  for (const Case& c : cases) {
    Reading r;
    r.s.iMinFailures = 1;
    r.Setup(Lines(c.lines), 1, 1024, 1, c.dataCycles);
    r.Read();
    EXPECT_EQ(r.iErr, 0) << c.what;
    EXPECT_EQ(r.Cycles(), c.cycles) << c.what;
    EXPECT_TRUE(r.ui.messages.empty()) << c.what;
  }
}

TEST(ProcessData, TheCycleTypeFollowsTheLastCycleLineInTemperatureAnalysis) {
  struct Case {
    bool dataCycles;
    const char* last;
    int16_t cycleType;
  } cases[] = {{false, "    T =", 1}, {false, "    M =", 2}, {true, "    M =", 0}};
  for (const Case& c : cases) {
    Reading r;
    r.s.iMinFailures = 1;
    r.Setup(Lines({DataCycleLine(3), EventLine(1, {1, 2}), MechLine("5"), TempLine("6"), c.last}), 1, 10, 1,
            c.dataCycles);
    r.Read();
    EXPECT_EQ(r.s.iCycleType, c.cycleType) << c.last;
    EXPECT_EQ(static_cast<bool>(r.s.bTempCyclesAvailable), !c.dataCycles);
  }
}

TEST(ProcessData, EventsWithoutTheirTemperatureCycleStopTheAnalysis) {
  Reading r;
  r.Setup(Lines({DataCycleLine(1), TempLine("0.0"), DataCycleLine(2), EventLine(1, {3}), TempLine("1.0"),
                 DataCycleLine(3), EventLine(1, {4}), DataCycleLine(4), EventLine(1, {5}), TempLine("3.0")}),
          1, 10, 1, false);
  r.Read();
  const std::string text =
      "No data cycle-to-temp. cycle association at cycle #3.\r\nCannot perform temperature cycle data analysis.";
  EXPECT_EQ(r.CallsFrom("TEXT: No data"),
            (std::vector<std::string>{"TEXT: " + text, "MSG: Error in  - Error #0  \r" + text,
                                      "TEXT: Temperature or mechanical cycles are not available for analysis."}));
  EXPECT_EQ(r.iErr, 1);
  EXPECT_FALSE(r.s.bTempCyclesAvailable);
}

TEST(ProcessData, TemperatureAnalysisNeedsCycleLinesAfterTheEvents) {
  struct Case {
    const char* what;
    std::vector<std::string> lines;
  } cases[] = {
      {"no temperature lines at all", {DataCycleLine(5), EventLine(1, {1, 2, 3, 4, 5, 6})}},
      {"no event reaches the limit", {DataCycleLine(5), EventLine(2, {1, 2}), TempLine("3.0")}},
  };
  for (const Case& c : cases) {
    Reading r;
    r.s.bSoundStatus = true;
    r.s.sAppPath = r.dir.Path();
    std::filesystem::create_directory(r.dir.File("Sounds"));
    r.dir.Write("Sounds/Floop.wav", "");
    r.s.bTempCyclesAvailable = true;
    r.Setup(Lines(c.lines), 1, 10, 1, false);
    r.Read();
    EXPECT_EQ(r.iErr, 1) << c.what;
    EXPECT_EQ(r.ui.textLines.back(), "Temperature or mechanical cycles are not available for analysis.") << c.what;
    EXPECT_FALSE(r.s.bTempCyclesAvailable) << c.what;
    EXPECT_TRUE(r.ui.messages.empty()) << c.what;
    EXPECT_EQ(r.ui.sounds, std::vector<std::string>{"Floop.wav"}) << "the warning sound";
  }
}

TEST(ProcessData, EventsBeforeTheInitialCycleEndTheRunWithCode5) {
  // Data cycles: the event's own data cycle is compared with START:.
  Reading data;
  data.SetupWithFile(Lines({DataCycleLine(90), EventLine(1, {4, 6})}), "START: 100\r\n4\r\n6\r\n", 1, true);
  data.Read();
  EXPECT_EQ(data.iErr, 1);
  EXPECT_EQ(data.ui.MessageTexts(),
            std::vector<std::string>{"\rThe data history file contains channels which have events at cycle-\r"
                                     "counts less than those specified in the cycle-offset files.\r\r"
                                     "#1 Event recorded on Ch #6 @ Data cycle #90\rSpecified initial cycle = 100"});

  // Temperature cycles: the cycle line that labels the events is compared with
  // TSTART:; the message for this case has always ended in the error box.
  Reading temp;
  temp.SetupWithFile(Lines({DataCycleLine(90), EventLine(1, {4, 6}), TempLine("2.0")}), "TSTART: 5\r\n4\r\n6\r\n", 1,
                     false);
  temp.Read();
  EXPECT_EQ(temp.iErr, 1);
  EXPECT_EQ(temp.ui.MessageTexts(),
            std::vector<std::string>{"Error in modTarvenix.DisplayError - Error #13  Type mismatch\r"});
  EXPECT_EQ(temp.ui.statuses.back(), "Analysis did not complete successfully.");
}

TEST(ProcessData, FailureCyclesCountFromTheInitialCycle) {
  struct Case {
    const char* chSel;
    bool dataCycles;
    V cycles;
  } cases[] = {
      {"START: 100\r\nTSTART: 3\r\n1\r\n2\r\n3\r\n4\r\n", true, {5, 20, 20}},
      {"START: 100\r\nTSTART: 3\r\n1\r\n2\r\n3\r\n4\r\n", false, {2, 7, 7}},
      {"1\r\n2\r\n3\r\n4\r\n", false, {5, 10, 10}},
  };
  for (const Case& c : cases) {
    Reading r;
    r.s.iMinFailures = 1;
    r.SetupWithFile(Lines({DataCycleLine(105), EventLine(2, {1}), TempLine("4.0"), DataCycleLine(120),
                           EventLine(2, {2, 3}), MechLine("10")}),
                    c.chSel, 2, c.dataCycles);
    r.Read();
    EXPECT_EQ(r.iErr, 0) << c.chSel;
    EXPECT_EQ(r.Cycles(), c.cycles) << c.chSel;
    EXPECT_EQ(r.ui.textLines[3], "Channel Selection File: " + r.dir.File("sel.txt"));
  }
}

TEST(ProcessData, FirstCycleEventsAreIgnoredOnlyWhenTheUserSaysSo) {
  struct Case {
    bool dataCycles;
    std::optional<bool> answer;
    bool previousAnswer;  // stands when the question is closed unanswered
  } cases[] = {{true, true, false}, {true, false, true}, {false, true, false}, {false, false, true},
               {true, std::nullopt, true}};
  for (const Case& c : cases) {
    Reading r;
    r.s.bIgnoreFirstCycles = c.previousAnswer;
    r.ui.firstCycleAnswers.push_back(c.answer);
    // Data cycle 1 lies in temperature cycle 1 (count 0.2), the rest later.
    r.Setup(Lines({DataCycleLine(1), EventLine(1, {1024, 3}), TempLine("0.2"), DataCycleLine(4),
                   EventLine(1, {5, 6, 7, 8, 9, 10}), TempLine("2.0")}),
            1, 1024, 1, c.dataCycles);
    r.Read();
    const bool ignored = c.answer.value_or(c.previousAnswer);
    const std::string kind = c.dataCycles ? "data-cycle" : "temp./mech.-cycle";
    std::vector<std::string> log = {"TEXT: First " + kind + " events found.", "FIRSTCYCLE: 3 1024"};
    if (ignored)
      log.insert(log.end(), {"TEXT: User has chosen to re-run analysis and ignore first " + kind + " events.",
                             "STATUS: Working..."});
    else
      log.push_back("TEXT: User has chosen not to ignore first " + kind + " events. Analysis stopped.");
    std::vector<std::string> calls = r.CallsFrom("TEXT: First");
    if (ignored) calls.resize(std::min(calls.size(), log.size()));  // the second pass follows
    EXPECT_EQ(calls, log);
    EXPECT_EQ(r.iErr, ignored ? 0 : 1);
    EXPECT_EQ(r.s.iGroupSize(1), ignored ? 1022 : 1024);
    if (ignored) {
      EXPECT_EQ(r.s.iChSelected(3) + r.s.iChSelected(1024), 0);
      EXPECT_EQ(r.Cycles(), V(6, c.dataCycles ? 4 : 3));
      EXPECT_EQ(r.Counts(), (V{1, 2, 3, 4, 5, 6}));
    }
    EXPECT_EQ(static_cast<bool>(r.s.bIgnoreFirstCycles), ignored);
    EXPECT_EQ(r.ui.lastFirstCycleDataCycles, c.dataCycles);
  }
}

TEST(ProcessData, TooFewFailuresAndAllChannelsFailed) {
  struct Case {
    int16_t last;
    std::vector<int> failing;
    int16_t err;
    V counts;
  } cases[] = {
      {10, {1, 2, 3, 4}, 1, {}},
      {10, {1, 2, 3, 4, 5}, 0, {1, 2, 3, 4, 5}},
      {10, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 0, {1, 2, 3, 4, 5, 6, 7, 8, 9}},
      {6, {1, 2, 3, 4, 5, 6}, 0, {1, 2, 3, 4, 5}},
  };
  for (const Case& c : cases) {
    Reading r;
    r.Setup(Lines({DataCycleLine(30), EventLine(1, c.failing)}), 1, c.last, 1, true);
    r.Read();
    EXPECT_EQ(r.iErr, c.err) << c.failing.size();
    if (!c.err) {
      EXPECT_EQ(r.Counts(), c.counts) << c.failing.size();
    }
    EXPECT_EQ(r.ui.textLines.back(), c.err ? "Analysis requires at least 5 failed channels."
                                           : "Number of analyzed events = " + std::to_string(c.failing.size()));
  }
}

TEST(ProcessData, ASecondDataSetStartsOnAnEmptyLineAndClearsItsOldRows) {
  Reading r;
  r.ui.UpdateTextBox("earlier results");
  r.s.vEventCycle(1, 900) = 77;
  r.s.vEventCount(1, 0) = 5;
  r.Setup(Lines({DataCycleLine(3), EventLine(1, {1, 2, 3, 4, 5})}), 1, 10, 1, true);
  r.Read();
  EXPECT_EQ(r.ui.textLines[1], "");
  EXPECT_EQ(r.ui.textLines[2], "Data Set #1");
  EXPECT_EQ(r.s.vEventCycle(1, 900), 0);
  EXPECT_EQ(r.Counts(), (V{1, 2, 3, 4, 5}));
}

}  // namespace
}  // namespace tarvenix::test
