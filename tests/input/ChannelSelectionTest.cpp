#include <gtest/gtest.h>

#include <vector>

#include "app/Session.h"
#include "input/ChannelSelection.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::modTarvenix {
namespace {

using test::RecordingUi;
using test::TempDir;

std::vector<int> Range(int first, int last) {
  std::vector<int> channels;
  for (int ch = first; ch <= last; ++ch) channels.push_back(ch);
  return channels;
}

std::vector<int> SelectedChannels(const Session& s) {
  std::vector<int> channels;
  for (int ch = 0; ch <= kMaxChannels; ++ch)
    if (s.iChSelected(ch) == 1) channels.push_back(ch);
  return channels;
}

DataSetSettings FileSetup(const std::string& dataFile, const std::string& chSelFile) {
  DataSetSettings setup;
  setup.sDataFile = dataFile;
  setup.sDataID = "  Board A  ";
  setup.bNumOccurrences = true;
  setup.bDataCycles = true;
  setup.bChSelFile = true;
  setup.sChSelFile = chSelFile;
  return setup;
}

// The box a rejected file gets: an error message with no procedure label.
std::string RejectionBox(const std::string& file, int line, const std::string& reason) {
  return "Error in  - Error #0  \rError in channel selection file:\r" + file + "\rat line number: " +
         std::to_string(line) + "\r\r" + reason;
}

TEST(CheckSetupEntries, FilesTheSetupUnderTheCurrentDataSet) {
  TempDir dir;
  Session s;
  RecordingUi ui;
  s.iDataSetNum = 2;
  std::string chsel = dir.Write("sel.txt", "START: 120\r\nTSTART:\r\n5\r\n7,9\r\n");
  s.lInitialCycle(1) = 33;
  DataSetSettings setup = FileSetup("/lab/run.txt", chsel);
  setup.bDataCycles = false;
  int16_t iErr = 0;
  CheckSetupEntries(s, ui, setup, 0, 0, 3, iErr);

  EXPECT_EQ(iErr, 0);
  EXPECT_TRUE(ui.calls.empty());
  EXPECT_EQ(SelectedChannels(s), (std::vector<int>{5, 7, 9}));
  EXPECT_EQ(s.iGroupSize(2), 3);
  EXPECT_EQ(s.lInitialCycle(0), 120);
  EXPECT_EQ(s.lInitialCycle(1), 33) << "a bare TSTART: leaves the value";
  EXPECT_EQ(s.sDataFiles(2), "/lab/run.txt");
  EXPECT_EQ(s.sIPCFiles(2), "/lab/run.ipc");
  EXPECT_EQ(s.sDataIDs(2), "Board A");
  EXPECT_EQ(s.sChSelFiles(2), chsel);
  EXPECT_TRUE(s.bUseChSelFiles(2));
  EXPECT_EQ(s.iOccurrenceLimits(2), 3);
  EXPECT_FALSE(s.bDataCycles);
  EXPECT_TRUE(s.bNumOccurrences);
}

TEST(CheckSetupEntries, ReadsHeadersAndEntries) {
  struct Case {
    const char* content;
    std::vector<int> channels;
    int32_t start, tstart;  // lInitialCycle afterwards; both start at -1
  } cases[] = {
      {"start: 10.6\ntstart: 4\n1\n2\n", {1, 2}, 11, 4},
      {"TSTART: 7\r\nSTART: 1\r\nSTART: 2\r\n1024\r\n", {1024}, 2, 7},
      {"START:\rTSTART:   \r3.0\r", {3}, -1, 0},
      {"12\r\n 14 , \"16\"\r\n20", {12, 14, 16, 20}, -1, -1},
  };
  for (const Case& c : cases) {
    TempDir dir;
    Session s;
    RecordingUi ui;
    s.iDataSetNum = 1;
    s.lInitialCycle(0) = s.lInitialCycle(1) = -1;
    int16_t iErr = 0;
    CheckSetupEntries(s, ui, FileSetup("/lab/run.txt", dir.Write("sel.txt", c.content)), 0, 0, 1, iErr);
    EXPECT_EQ(iErr, 0) << c.content;
    EXPECT_EQ(SelectedChannels(s), c.channels) << c.content;
    EXPECT_EQ(s.iGroupSize(1), static_cast<int16_t>(c.channels.size())) << c.content;
    EXPECT_EQ(s.lInitialCycle(0), c.start) << c.content;
    EXPECT_EQ(s.lInitialCycle(1), c.tstart) << c.content;
  }
}

TEST(CheckSetupEntries, RejectsTheFirstBadEntryNamingItsLine) {
  struct Case {
    const char* content;
    int line;
    const char* reason;
    std::vector<int> keptChannels;
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
  for (const Case& c : cases) {
    TempDir dir;
    Session s;
    RecordingUi ui;
    s.iDataSetNum = 1;
    std::string chsel = dir.Write("sel.txt", c.content);
    int16_t iErr = 0;
    CheckSetupEntries(s, ui, FileSetup("/lab/run.txt", chsel), 0, 0, 7, iErr);
    EXPECT_EQ(iErr, 1) << c.content;
    EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{RejectionBox(chsel, c.line, c.reason)}) << c.content;
    EXPECT_EQ(SelectedChannels(s), c.keptChannels) << c.content;
    EXPECT_EQ(s.iGroupSize(1), static_cast<int16_t>(c.keptChannels.size())) << c.content;
    EXPECT_EQ(s.iOccurrenceLimits(1), 0) << "the procedure ends before the limit is stored";
  }
}

TEST(CheckSetupEntries, OtherFaultsGoToTheErrorBox) {
  TempDir dir;
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
  for (const Case& c : cases) {
    Session s;
    RecordingUi ui;
    s.iDataSetNum = 1;
    int16_t iErr = 0;
    CheckSetupEntries(s, ui, FileSetup(c.dataFile, c.chSelFile), 0, 0, 7, iErr);
    EXPECT_EQ(iErr, 1) << c.chSelFile;
    ASSERT_EQ(ui.messages.size(), 1u) << c.chSelFile;
    EXPECT_EQ(ui.messages[0].text, "Error in modTarvenix.CheckSetupEntries - " + c.box + "\r");
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Critical);
  }
}

TEST(CheckSetupEntries, ARangeSelectsItsChannelsAndWinsOverAFile) {
  struct Case {
    bool alsoFile;
    int16_t first, last;
    std::vector<int> channels;
    int16_t groupSize;
  } cases[] = {
      {false, 10, 12, {10, 11, 12}, 3},
      {true, 10, 12, {10, 11, 12}, 3},
      {false, 1000, 1024, Range(1000, 1024), 25},
      {false, 12, 10, {}, -1},
  };
  for (const Case& c : cases) {
    TempDir dir;
    Session s;
    RecordingUi ui;
    s.iDataSetNum = 3;
    DataSetSettings setup = FileSetup("/lab/run.txt", dir.Write("sel.txt", "START: 50\r\n1\r\n2\r\n"));
    setup.bChSelFile = c.alsoFile;
    setup.bFirstLastCh = true;
    int16_t iErr = 0;
    CheckSetupEntries(s, ui, setup, c.first, c.last, 2, iErr);
    EXPECT_EQ(iErr, 0);
    EXPECT_EQ(SelectedChannels(s), c.channels) << c.first << ".." << c.last;
    EXPECT_EQ(s.iGroupSize(3), c.groupSize);
    EXPECT_EQ(s.iFirstChannels(3), c.first);
    EXPECT_EQ(s.iLastChannels(3), c.last);
    EXPECT_EQ(s.iOccurrenceLimits(3), 2);
    EXPECT_EQ(s.lInitialCycle(0), c.alsoFile ? 50 : 0) << "the file's header is read even when the range wins";
  }
}

TEST(CheckSetupEntries, InitialCyclesStayUntilAnotherFileSetsThem) {
  TempDir dir;
  Session s;
  RecordingUi ui;
  int16_t iErr = 0;
  s.iDataSetNum = 1;
  CheckSetupEntries(s, ui, FileSetup("/lab/a.txt", dir.Write("a.txt", "START: 40\r\nTSTART: 8\r\n5\r\n")), 0, 0, 1,
                    iErr);
  s.iDataSetNum = 2;
  DataSetSettings range = FileSetup("/lab/b.txt", "");
  range.bChSelFile = false;
  range.bFirstLastCh = true;
  CheckSetupEntries(s, ui, range, 1, 10, 1, iErr);
  EXPECT_EQ(s.lInitialCycle(0), 40);
  EXPECT_EQ(s.lInitialCycle(1), 8);
  s.iDataSetNum = 3;
  CheckSetupEntries(s, ui, FileSetup("/lab/c.txt", dir.Write("c.txt", "TSTART: 2\r\n5\r\n")), 0, 0, 1, iErr);
  EXPECT_EQ(s.lInitialCycle(0), 40);
  EXPECT_EQ(s.lInitialCycle(1), 2);
  EXPECT_EQ(iErr, 0);
}

}  // namespace
}  // namespace tarvenix::modTarvenix
