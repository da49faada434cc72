// The channel selection editor's work without its window: the name it
// proposes, and OK where the disk lets it down.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "session/FileUtils.h"
#include "session/Session.h"
#include "setup/ChSelFileEditor.h"
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

TEST(ChSelFileEditor, AFileThatCannotBeWrittenKeepsTheEditorOpen) {
  Session s;
  long long now = 0;  // a fake clock for the open's retry: each pause moves it a second
  ChannelPages pages;
  if (std::filesystem::exists("/dev/full")) {
    // Opened, but the disk is full on writing: the error box under OK's label.
    const EditorEntries range{.sChSelFile = "/dev/full", .individual = false, .sFirstCh = "1", .sLastCh = "8"};
    RecordingUi ui;
    OkResult r = WriteChSelFile(s, ui, range, pages, PageTicks{}, {[&] { return now; }, [&] { ++now; }});
    EXPECT_FALSE(r.written);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text.rfind("Error in frmTarvenixChSelFile.cmdBtnOK - Error #61  ", 0), 0u)
        << ui.messages[0].text;
  }
}

}  // namespace
}  // namespace tarvenix::chselfile
