// Start-up's session side: the paths and the hand-off file a companion program
// leaves in the program folder.

#include <gtest/gtest.h>

#include <filesystem>

#include "session/FileUtils.h"
#include "session/Session.h"
#include "settings/Startup.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix {
namespace {

using modUtils::kPathSep;
using test::RecordingUi;
using test::TempDir;

TEST(SessionPaths, FollowTheProgramAndCommonDataFolders) {
#ifdef _WIN32
  // Lower-cased, as Windows ignores case in names.
  const std::string program = "C:\\Program Files\\Tarvenix", kept = "c:\\program files\\tarvenix";
  const std::string common = "C:\\ProgramData";
#else
  const std::string program = "/opt/Tarvenix", kept = program;  // case matters here
  const std::string common = "/var/data";
#endif
  Session s;
  s.iDataSetNum = 3;
  modTarvenix::SetSessionPaths(s, program, common);
  EXPECT_EQ(s.iDataSetNum, 0);
  EXPECT_EQ(s.sAppPath, kept);
  EXPECT_EQ(s.sDataLogDir, common + kPathSep + "Vorlantic" + kPathSep);
  EXPECT_EQ(s.sDefaultDataDir, s.sDataLogDir + "Data" + kPathSep);
  EXPECT_EQ(s.sDataDir, s.sDefaultDataDir);
  EXPECT_EQ(s.sHelpFile, kept + kPathSep + "Vorlantic.chm");
}

TEST(HandOffFile, IsTakenOverOnceWhateverItNames) {
  TempDir dir;
  const std::string data = dir.Write("run 7.txt", "x");
  struct Case {
    const char* what;
    std::string content;  // nothing: no hand-off file at all
    bool present;
    std::string sDataFile;
    std::string sDataDir;  // "" = the default data folder
    int16_t iLastCh;
    std::vector<std::string> messages;  // start-up goes on after each
  };
  const Case cases[] = {
      {"file and last channel", "\"" + data + "\",48\r\n", true, data, dir.Path(), 48, {}},
      {"file only", "\"" + data + "\"\r\n", true, data, dir.Path(), 0, {}},
      {"file on its own line, channel on the next", data + "\n32\n", true, data, dir.Path(), 32, {}},
      {"missing file", "\"" + dir.File("gone.txt") + "\",48\r\n", true, "", "", 0, {}},
      {"empty hand-off file", "", true, "", "", 0, {}},
      {"no hand-off file", "", false, "", "", 0, {}},
      {"last channel too large", "\"" + data + "\",99999\r\n", true, data, dir.Path(), 0,
       {"Error in modTarvenix.Main - Error #6  Overflow\r"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TempDir program;
    const std::string handOff = program.File("Dortemp.ini");
    if (c.present) program.Write("Dortemp.ini", c.content);
    Session s;
    RecordingUi ui;
    modTarvenix::SetSessionPaths(s, program.Path(), dir.Path());
    EXPECT_EQ(modTarvenix::TakeOverHandOffFile(s, ui), c.present);
    EXPECT_EQ(s.sDataFile, c.sDataFile);
    EXPECT_EQ(s.sDataDir, c.sDataDir.empty() ? s.sDefaultDataDir : c.sDataDir);
    EXPECT_EQ(s.iLastCh, c.iLastCh);
    EXPECT_FALSE(std::filesystem::exists(handOff));
    EXPECT_EQ(ui.MessageTexts(), c.messages);
  }
}

}  // namespace
}  // namespace tarvenix
