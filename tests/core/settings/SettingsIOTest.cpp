#include <gtest/gtest.h>

#include <filesystem>

#include "session/FileUtils.h"
#include "settings/IniFiles.h"
#include "session/Session.h"
#include "settings/SettingsIO.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::modIO {
namespace {

using test::ReadAll;
using test::RecordingUi;
using test::TempDir;

struct SettingsEnv {
  TempDir dir;
  Session s;
  RecordingUi ui;
  SettingsEnv() {
    s.sDataLogDir = dir.File("Vorlantic") + "/";
    s.sDefaultDataDir = s.sDataLogDir + "Data/";
  }
  void WriteSettings(const std::string& text) {
    std::filesystem::create_directories(s.sDataLogDir);
    dir.Write("Vorlantic/Tarvenix.ini", text);
  }
};

TEST(Settings, ValuesAreRoundedNumbersAndJunkReadsAsZero) {
  struct Case {
    const char* text;
    std::array<int16_t, 3> options;
    bool sound;
  } cases[] = {
      {"[General]\nN50/N63 Parameter=1\nFailure Fraction=2.6\nConfidence Level=1\nSound Status=False\n", {1, 3, 1}, false},
      {"[GENERAL]\nn50/n63 parameter=abc\nfailure fraction= 1 \nSound Status=0\n", {0, 1, 0}, false},
      {"[General]\nConfidence Level=2.5\nSound Status=\n", {0, 0, 2}, true},
  };
  for (const Case& c : cases) {
    SettingsEnv env;
    env.WriteSettings(c.text);
    ReadTarvenixIni(env.s, env.ui);
    EXPECT_EQ(env.s.iAnalysisOptions, c.options) << c.text;
    EXPECT_EQ(static_cast<bool>(env.s.bSoundStatus), c.sound) << c.text;
    EXPECT_TRUE(env.ui.messages.empty()) << c.text;
  }
}

TEST(Settings, WritingKeepsForeignKeys) {
  SettingsEnv env;
  env.WriteSettings("[General]\r\nSound Status=False\r\nWindow=3\r\n[Mine]\r\nx=y\r\n");
  env.s.iAnalysisOptions = {1, 2, 1};
  env.s.bSoundStatus = true;
  ASSERT_TRUE(WriteTarvenixIni(env.s, env.ui));
  EXPECT_EQ(ReadAll(SettingsFilePath(env.s)),
            "[General]\r\nSound Status=True\r\nWindow=3\r\nN50/N63 Parameter=1\r\nFailure Fraction=2\r\n"
            "Confidence Level=1\r\n[Mine]\r\nx=y\r\n");
}

TEST(Settings, TheCompanionsFileOnlyPointsTheDataFolder) {
  SettingsEnv env;
  env.s.sDataDir = "/elsewhere";
  ReadVorlanticIni(env.s, env.ui);
  EXPECT_EQ(env.s.sDataDir, env.s.sDefaultDataDir);
}

}  // namespace
}  // namespace tarvenix::modIO
