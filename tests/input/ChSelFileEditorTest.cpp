// The channel selection editor's work without its window: the name it
// proposes, and OK where the disk lets it down.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "analysis/FileUtils.h"
#include "app/Session.h"
#include "input/ChSelFileEditor.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::chselfile {
namespace {

using test::RecordingUi;
using test::TempDir;

TEST(ChSelFileEditor, ProposesTheDataFileNameInTheDataFolder) {
  const std::string sep(1, modUtils::kPathSep);
  struct Case {
    std::string dataDir;
    std::string dataFile;
    std::string proposed;
  };
  const Case cases[] = {
      {"/lab/data", "/elsewhere/board 7.txt", "/lab/data" + sep + "board 7_ChSelFile.txt"},
      {"/lab/data/", "run.txt", "/lab/data/run_ChSelFile.txt"},
      // The last four characters go whatever they are.
      {"/d", "/d/run.data", "/d" + sep + "run._ChSelFile.txt"},
      // A name too short to have them is kept whole.
      {"/d", "/d/abc", "/d" + sep + "abc_ChSelFile.txt"},
      {"/d", "", "/d" + sep + "_ChSelFile.txt"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(ProposedFileName(c.dataDir, c.dataFile), c.proposed) << c.dataFile;
}

// A fake clock for OpenFile's retry: each pause moves it a second.
modUtils::RetryClock FastClock(long long& now) {
  return {[&now] { return now; }, [&now] { ++now; }};
}

TEST(ChSelFileEditor, AFileThatCannotBeWrittenKeepsTheEditorOpen) {
  Session s;
  long long now = 0;
  EditorEntries range;
  range.individual = false;
  range.sFirstCh = "1";
  range.sLastCh = "8";
  ChannelPages pages;
  {
    // A target that cannot be opened: after the retry, OpenFile's own message
    // and then the editor's.
    TempDir dir;
    std::filesystem::create_directory(dir.File("taken.txt"));
    range.sChSelFile = dir.File("taken.txt");
    RecordingUi ui;
    OkResult r = WriteChSelFile(s, ui, range, pages, PageTicks{}, FastClock(now));
    EXPECT_FALSE(r.written);
    EXPECT_EQ(r.focus, setup::SetupFocus::txtChSelFile);
    ASSERT_EQ(ui.messages.size(), 2u);
    EXPECT_EQ(ui.messages[0].text, "The file, '" + range.sChSelFile +
                                       "' could not be opened.\rThe file may be in use by another program.");
    EXPECT_EQ(ui.messages[1].text, kCannotOpen);
    EXPECT_GE(now, 10);
  }
  if (std::filesystem::exists("/dev/full")) {
    // Opened, but the disk is full on writing: the error box under OK's label.
    range.sChSelFile = "/dev/full";
    RecordingUi ui;
    OkResult r = WriteChSelFile(s, ui, range, pages, PageTicks{}, FastClock(now));
    EXPECT_FALSE(r.written);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text.rfind("Error in frmTarvenixChSelFile.cmdBtnOK - Error #61  ", 0), 0u)
        << ui.messages[0].text;
  }
}

}  // namespace
}  // namespace tarvenix::chselfile
