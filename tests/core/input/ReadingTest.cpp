// What reading leaves that no transcript of the batch tool shows, and files
// no case folder can hold; the case folders under tests/cases show the rest.

#include "ReadingTest.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <numeric>
#include <optional>

#include "input/FirstCycle.h"
#include "support/HistoryText.h"

namespace tarvenix::test {
namespace {

using V = std::vector<int32_t>;

// Six channels failing from data cycle 3, each event followed by its
// temperature cycle line.
const std::string kSixFail =
    Lines({DataCycleLine(3), EventLine(1, {1, 2, 3, 4, 5}), TempLine("4.0"), DataCycleLine(5), EventLine(1, {6}),
           TempLine("6.0")});

// The plot's axis names the kind of the last cycle line read in
// temperature/mechanical analysis, under the IPC/JEDEC limit that of the
// event array's last channel line.
TEST(Reading, TheCycleTypeFollowsTheLastCycleLineRead) {
  struct Case {
    std::string last;
    bool dataCycles;
    int16_t limit;
    int16_t cycleType;
  } cases[] = {{"    T =", false, 1, 1}, {"    M =", false, 1, 2}, {"    M =", true, 1, 0},
               {"1024:,M,", false, 0, 2}, {"1024:,T,", false, 0, 1}};
  for (const Case& c : cases) {
    Reading r;
    if (c.limit == 0) {
      std::string lines;
      for (int ch = 1; ch < 1024; ++ch) lines += std::to_string(ch) + ":1,T1,\r\n";
      r.dir.Write("run.ipc", lines + c.last + "\r\n");
    }
    r.SetupHistory(Lines({DataCycleLine(3), EventLine(1, {1, 2}), MechLine("5"), TempLine("6"), c.last}), 1, 10,
                   c.limit, c.dataCycles);
    r.Read();
    EXPECT_EQ(r.s.iCycleType, c.cycleType) << c.last;
  }
}

// The question shows the flagged channels and the kind of cycle; closed
// without an answer it leaves the one given before. Its warning sounds, and
// so does the one when temperature cycles cannot be had.
TEST(Reading, TheFirstCycleQuestionAndTheWarningSound) {
  struct Case {
    bool dataCycles;
    bool previousAnswer;
    std::string file;
    int16_t err;
    const char* flagged;
  } cases[] = {{true, true, Lines({DataCycleLine(1), EventLine(1, {1024, 3})}) + kSixFail, 0, " 3 1024"},
               {false, false, Lines({DataCycleLine(1), EventLine(1, {7}), TempLine("0.2")}) + kSixFail, 1, " 7"},
               {false, false, Lines({DataCycleLine(1), EventLine(1, {1, 2, 3, 4, 5})}), 1, ""}};
  for (const Case& c : cases) {
    Reading r;
    r.s.bSoundStatus = true;
    r.s.sAppPath = r.dir.Path();
    std::filesystem::create_directory(r.dir.File("Sounds"));
    r.dir.Write("Sounds/Floop.wav", "");
    r.s.bIgnoreFirstCycles = c.previousAnswer;
    r.ui.firstCycleAnswers.push_back(std::nullopt);
    r.SetupHistory(c.file, 1, 1024, 1, c.dataCycles);
    r.Read();
    EXPECT_EQ(r.iErr, c.err) << c.flagged;
    EXPECT_EQ(modTarvenix::FirstCycleChannelList(r.ui.lastFirstCycleFlags), c.flagged);
    EXPECT_EQ(r.ui.lastFirstCycleDataCycles, c.dataCycles && *c.flagged);
    EXPECT_EQ(static_cast<bool>(r.s.bIgnoreFirstCycles), c.previousAnswer);
    EXPECT_EQ(r.ui.sounds, std::vector<std::string>{"Floop.wav"}) << c.flagged;
  }
}

// Edit and Re-analyse read a data set again into the rows it had.
TEST(Reading, ReadingAgainStartsFromCleanRows) {
  Reading r;
  r.SetupHistory(kSixFail, 1, 10, 1, true);
  r.s.vEventCycle(1, 900) = 77;
  r.Read();
  r.Read();
  EXPECT_EQ(r.Counts(), (V{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(r.s.vEventCycle(1, 900), 0);
}

// A range chosen with a file replaces the file's channels; its headers count.
TEST(Reading, ARangeReplacesTheChannelSelectionFilesChannels) {
  Reading r;
  r.Setup(r.dir.Write("run.txt", kSixFail), r.dir.Write("sel.txt", "START: 1\r\n1\r\n2\r\n"), 2, 7, 1, true);
  r.Read();
  EXPECT_EQ(r.s.iGroupSize(1), 6);
  EXPECT_EQ(r.Cycles(), (V{2, 2, 2, 2, 4}));
}

// Only with channel 0 selected, which no dialog allows, can a file name 1025
// channels.
TEST(Reading, The1025thEventIsOutOfRange) {
  std::vector<int> all(1024);
  std::iota(all.begin(), all.end(), 1);
  Reading r;
  r.SetupHistory(Lines({DataCycleLine(3), EventLine(1, all) + "    :O."}), 0, 1024, 1, true);
  r.Read();
  EXPECT_EQ(r.ui.MessageTexts(),
            std::vector<std::string>{"Error in modTarvenix.ProcessData - Error #9  Subscript out of range\r"});
}

TEST(Reading, AHundredMegabyteLineIsReadThrough) {
  Reading r;
  {
    // Written in pieces: the test need not hold the line either.
    std::ofstream out(r.dir.File("huge.txt"), std::ios::binary);
    out << std::string(2u << 20, 'x') << "\r\n" << DataCycleLine(7) << "\r\n001::";
    std::string block;
    while (block.size() < (1u << 20)) block += "  99:O.";
    for (int i = 0; i < 100; ++i) out << block;
    out << "   1:O.   2:O.   3:O.   4:O.   5:O.\r\n" << Lines({DataCycleLine(8), EventLine(1, {6})});
  }
  r.s.bDebug = true;
  r.Setup(r.dir.File("huge.txt"), "", 1, 1024, 1, true);
  r.Read();
  EXPECT_EQ(r.iErr, 0);
  EXPECT_EQ(r.Cycles(), (V{7, 7, 7, 7, 7, 7, 8}));
  EXPECT_EQ(r.ui.debugLines[1], "Event #1 recorded on Ch # 5 @ Data cycle #7") << "read from the line's end";
  EXPECT_EQ(r.ui.debugLines[6], "Event #6 recorded on Ch # 99 @ Data cycle #7");
}

}  // namespace
}  // namespace tarvenix::test
