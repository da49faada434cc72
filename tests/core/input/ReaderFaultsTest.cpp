#include <gtest/gtest.h>

#include <fstream>

#include "support/HistoryText.h"
#include "input/DataHistory.h"
#include "ReadingTest.h"

namespace tarvenix::test {
namespace {

using V = std::vector<int32_t>;

// Every entry of channels 1..1024 on one event line.
std::vector<int> AllChannels() {
  std::vector<int> channels;
  for (int ch = 1; ch <= 1024; ++ch) channels.push_back(ch);
  return channels;
}

TEST(ReaderFaults, BadEntriesEndTheRunWithTheErrorBox) {
  struct Case {
    const char* what;
    std::string content;
    int16_t first;
    std::string box;
  } cases[] = {
      {"an entry beyond channel 1024", Lines({DataCycleLine(3), "001:: 099:O."}), 1, "Error #9  Subscript out of range"},
      {"an entry beyond 16 bits", Lines({DataCycleLine(3), "001:: 9E9:O."}), 1, "Error #6  Overflow"},
      // Channel 0 is selected too, so a blank entry is one more event.
      {"the 1025th event", Lines({DataCycleLine(3), EventLine(1, AllChannels()) + "    :O."}), 0,
       "Error #9  Subscript out of range"},
  };
  for (const Case& c : cases) {
    Reading r;
    r.s.bDebug = true;
    r.Setup(c.content, c.first, 1024, 1, true);
    r.Read();
    EXPECT_EQ(r.iErr, 1) << c.what;
    EXPECT_EQ(r.ui.MessageTexts(), std::vector<std::string>{"Error in modTarvenix.ProcessData - " + c.box + "\r"})
        << c.what;
  }
}

// Line ends as such are the line reader's; these show the reader takes its
// lines from it whatever they hold.
TEST(ReaderFaults, TextIsReadWhateverItsLineEndsAndBytes) {
  const std::vector<std::string> lines = {"Vorlantic", DataCycleLine(4), EventLine(1, {1, 2}), TempLine("4.0"),
                                          DataCycleLine(6), EventLine(1, {3, 4, 5}), TempLine("6.0")};
  struct Case {
    const char* what;
    std::string content;
  } cases[] = {
      {"mixed, no end on the last line", Lines({lines[0], lines[1], lines[2]}, "\n") + Lines({lines[3], lines[4]}, "\r") +
                                             Lines({lines[5]}) + lines[6]},
      {"NUL bytes and bytes above 127",
       Lines({std::string("\0\0\0\xff\xfe", 5), lines[1], std::string("001::   1\0\0.   2\x80\x81.", 19), lines[3],
              lines[4], lines[5], lines[6]})},
      {"blank lines between", Lines({"", lines[1], lines[2], "", lines[3], "", lines[4], lines[5], lines[6], ""})},
  };
  for (const Case& c : cases) {
    for (bool dataCycles : {true, false}) {
      Reading r;
      r.Setup(c.content, 1, 10, 1, dataCycles);
      r.Read();
      EXPECT_EQ(r.iErr, 0) << c.what;
      EXPECT_EQ(r.Cycles(), dataCycles ? (V{4, 4, 6, 6, 6}) : (V{5, 5, 7, 7, 7})) << c.what;
      EXPECT_TRUE(r.ui.messages.empty()) << c.what;
    }
  }
}

TEST(ReaderFaults, AHundredMegabyteLineIsReadThrough) {
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
  r.SetupFiles(r.dir.File("huge.txt"), "", 1, 1024, 1, true);
  r.Read();
  EXPECT_EQ(r.iErr, 0);
  EXPECT_EQ(r.Cycles(), (V{7, 7, 7, 7, 7, 7, 8}));
  EXPECT_EQ(r.ui.debugLines[1], "Event #1 recorded on Ch # 5 @ Data cycle #7") << "read from the line's end";
  EXPECT_EQ(r.ui.debugLines[6], "Event #6 recorded on Ch # 99 @ Data cycle #7");
}

}  // namespace
}  // namespace tarvenix::test
