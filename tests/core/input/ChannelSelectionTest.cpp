#include <gtest/gtest.h>

#include <vector>

#include "session/Session.h"
#include "input/ChannelSelection.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::modTarvenix {
namespace {

using V = std::vector<int>;

// One CheckSetupEntries call on data set d of a fresh session, its data file
// "/lab/run.txt" read in data cycles with a channel selection file.
struct Check {
  test::TempDir dir;
  Session s;
  test::RecordingUi ui;
  int16_t iErr = 0;
  DataSetSettings setup;

  explicit Check(int16_t d = 1, const std::string& chSelFile = "") {
    s.iDataSetNum = d;
    setup.sDataFile = "/lab/run.txt";
    setup.sDataID = "  Board A  ";
    setup.bNumOccurrences = true;
    setup.bDataCycles = true;
    setup.bChSelFile = true;
    setup.sChSelFile = chSelFile;
  }
  Check& File(const std::string& content) {
    setup.sChSelFile = dir.Write("sel.txt", content);
    return *this;
  }
  void Run(int16_t limit, int16_t first = 0, int16_t last = 0) {
    CheckSetupEntries(s, ui, setup, first, last, limit, iErr);
  }
  V Selected() const {
    V channels;
    for (int ch = 0; ch <= kMaxChannels; ++ch)
      if (s.iChSelected(ch) == 1) channels.push_back(ch);
    return channels;
  }
};

TEST(CheckSetupEntries, ReadsHeadersAndEntriesUnderTheCurrentDataSet) {
  struct Case {
    const char* content;
    V channels;
    int32_t start, tstart;  // lInitialCycle afterwards; both start at -1
  } cases[] = {
      {"start: 10.6\ntstart: 4\n1\n2\n", {1, 2}, 11, 4},
      {"TSTART: 7\r\nSTART: 1\r\nSTART: 2\r\n1024\r\n", {1024}, 2, 7},
      {"START:\rTSTART:   \r3.0\r", {3}, -1, 0},
      {"12\r\n 14 , \"16\"\r\n20", {12, 14, 16, 20}, -1, -1},
  };
  for (const Case& k : cases) {
    Check c(2);
    c.s.lInitialCycle(0) = c.s.lInitialCycle(1) = -1;
    c.File(k.content).Run(1);
    EXPECT_EQ(c.iErr, 0) << k.content;
    EXPECT_TRUE(c.ui.calls.empty()) << k.content;
    EXPECT_EQ(c.Selected(), k.channels) << k.content;
    EXPECT_EQ(c.s.iGroupSize(2), static_cast<int16_t>(k.channels.size())) << k.content;
    EXPECT_EQ(c.s.lInitialCycle(0), k.start) << k.content;
    EXPECT_EQ(c.s.lInitialCycle(1), k.tstart) << k.content;
    EXPECT_EQ(c.s.sDataFiles(2), "/lab/run.txt");
    EXPECT_EQ(c.s.sIPCFiles(2), "/lab/run.ipc");
    EXPECT_EQ(c.s.sDataIDs(2), "Board A");
  }
}

TEST(CheckSetupEntries, RejectsTheFirstBadEntryNamingItsLine) {
  struct Case {
    const char* content;
    int line;
    const char* reason;
    V keptChannels;
  } cases[] = {
      {"5\r\n0\r\n", 2, kChannelRangeText, {5}},
      {"START: 3\r\n5\r\n1025\r\n", 3, kChannelRangeText, {5}},
      {"3.5\r\n", 1, kBadChannelText, {}},
      {"x3\r\n", 1, kBadChannelText, {}},
      {"2\r\n12.5\r\n", 2, kBadChannelText, {2}},
      {"4\r\n6,4\r\n", 3, kDuplicateChannelText, {4, 6}},
      {"4\r\n\r\n", 2, kBadChannelText, {4}},
      {"12, 14\r\n", 1, kBadChannelText, {}},  // the first entry is taken as a whole line
  };
  for (const Case& k : cases) {
    Check c;
    c.File(k.content).Run(7);
    EXPECT_EQ(c.iErr, 1) << k.content;
    // The box has no procedure label.
    EXPECT_EQ(c.ui.MessageTexts(), std::vector<std::string>{"Error in  - Error #0  \rError in channel selection file:\r" +
                                                            c.setup.sChSelFile + "\rat line number: " +
                                                            std::to_string(k.line) + "\r\r" + k.reason})
        << k.content;
    EXPECT_EQ(c.Selected(), k.keptChannels) << k.content;
    EXPECT_EQ(c.s.iGroupSize(1), static_cast<int16_t>(k.keptChannels.size())) << k.content;
    EXPECT_EQ(c.s.iOccurrenceLimits(1), 0) << "the procedure ends before the limit is stored";
  }
}

TEST(CheckSetupEntries, OtherFaultsGoToTheErrorBox) {
  test::TempDir dir;
  struct Case {
    std::string dataFile;
    std::string chSelFile;
    std::string box;
  } cases[] = {
      {"/lab/run.txt", dir.File("missing.txt"), "Error #53  File not found"},
      {"/lab/run.txt", dir.Write("headers.txt", "START: 5\r\n"), "Error #62  Input past end of file"},
      {"/lab/run.txt", dir.Path(), "Error #75  Path/File access error"},
      {"r.t", dir.Write("ok.txt", "5\r\n"), "Error #5  Invalid procedure call or argument"},
  };
  for (const Case& k : cases) {
    Check c(1, k.chSelFile);
    c.setup.sDataFile = k.dataFile;
    c.Run(7);
    EXPECT_EQ(c.iErr, 1) << k.chSelFile;
    ASSERT_EQ(c.ui.messages.size(), 1u) << k.chSelFile;
    EXPECT_EQ(c.ui.messages[0].text, "Error in modTarvenix.CheckSetupEntries - " + k.box + "\r");
    EXPECT_EQ(c.ui.messages[0].icon, MessageIcon::Critical);
  }
}

TEST(CheckSetupEntries, ARangeSelectsItsChannelsAndWinsOverAFile) {
  V lastChannels;
  for (int ch = 1000; ch <= 1024; ++ch) lastChannels.push_back(ch);
  struct Case {
    bool alsoFile;
    int16_t first, last;
    V channels;
    int16_t groupSize;
  } cases[] = {
      {false, 10, 12, {10, 11, 12}, 3},
      {true, 10, 12, {10, 11, 12}, 3},
      {false, 1000, 1024, lastChannels, 25},
      {false, 12, 10, {}, -1},
  };
  for (const Case& k : cases) {
    Check c(3);
    c.File("START: 50\r\n1\r\n2\r\n");
    c.setup.bChSelFile = k.alsoFile;
    c.setup.bFirstLastCh = true;
    c.Run(2, k.first, k.last);
    EXPECT_EQ(c.iErr, 0);
    EXPECT_EQ(c.Selected(), k.channels) << k.first << ".." << k.last;
    EXPECT_EQ(c.s.iGroupSize(3), k.groupSize);
    EXPECT_EQ(c.s.iLastChannels(3), k.last);
    EXPECT_EQ(c.s.iOccurrenceLimits(3), 2);
    EXPECT_EQ(c.s.lInitialCycle(0), k.alsoFile ? 50 : 0) << "the file's header is read even when the range wins";
  }
}

TEST(CheckSetupEntries, InitialCyclesStayUntilAnotherFileSetsThem) {
  Check c;
  c.File("START: 40\r\nTSTART: 8\r\n5\r\n").Run(1);
  c.s.iDataSetNum = 2;
  c.setup.bChSelFile = false;
  c.setup.bFirstLastCh = true;
  c.Run(1, 1, 10);
  EXPECT_EQ(c.s.lInitialCycle(0), 40);
  EXPECT_EQ(c.s.lInitialCycle(1), 8);
  c.s.iDataSetNum = 3;
  c.setup.bChSelFile = true;
  c.setup.bFirstLastCh = false;
  c.File("TSTART: 2\r\n5\r\n").Run(1);
  EXPECT_EQ(c.s.lInitialCycle(0), 40);
  EXPECT_EQ(c.s.lInitialCycle(1), 2);
  EXPECT_EQ(c.iErr, 0);
}

}  // namespace
}  // namespace tarvenix::modTarvenix
