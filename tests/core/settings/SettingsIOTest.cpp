// The settings file "Tarvenix.ini": what each text reads as (a bad one gets
// the program's own message and the defaults), what quitting writes, and a
// folder that cannot be written.

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "session/Session.h"
#include "settings/SettingsIO.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::modIO {
namespace {

namespace fs = std::filesystem;
using test::ReadAll;

struct SettingsEnv {
  test::TempDir dir;
  Session s;
  test::RecordingUi ui;
  SettingsEnv() {
    s.bSoundStatus = false;
    s.sDataLogDir = dir.File("Vorlantic") + "/";
    s.sDefaultDataDir = s.sDataLogDir + "Data/";
    fs::create_directories(s.sDataLogDir);
  }
  std::string File() const { return SettingsFilePath(s); }
};

std::string Utf16(const std::string& text) {
  std::string wide = "\xff\xfe";
  for (char c : text) wide += std::string{c, '\0'};
  return wide;
}

std::string PseudoRandomBytes(std::size_t n) {
  std::string bytes(n, '\0');
  uint32_t state = 2024;
  for (char& b : bytes) b = static_cast<char>((state = state * 1103515245u + 12345u) >> 24);
  return bytes;
}

TEST(Settings, EachTextReadsAsItsOptionsAndABadOneKeepsTheDefaults) {
  const std::string overflow = "Error in modIO.ReadTarvenixIni - Error #6  Overflow\r";
  const std::string mismatch = "Error in modIO.ReadTarvenixIni - Error #13  Type mismatch\r";
  struct Row {
    const char* input;
    std::string content;
    std::array<int16_t, 3> options;
    bool sound;
    std::vector<std::string> messages;
  } rows[] = {
      {"rounded numbers",
       "[General]\nN50/N63 Parameter=1\nFailure Fraction=2.6\nConfidence Level=1\nSound Status=False\n", {1, 3, 1},
       false, {}},
      {"any case, junk as 0", "[GENERAL]\nn50/n63 parameter=abc\nfailure fraction= 1 \nSound Status=0\n", {0, 1, 0},
       false, {}},
      {"halves to even, an empty sound status", "[General]\nConfidence Level=2.5\nSound Status=\n", {0, 0, 2}, true,
       {}},
      {"a 10 KB number", "[General]\r\nN50/N63 Parameter=1\r\nFailure Fraction=" + std::string(10240, '1') + "\r\n",
       {1, 0, 0}, true, {overflow}},
      {"a 10 KB text", "[General]\r\nConfidence Level=1\r\nSound Status=" + std::string(10240, 'x') + "\r\n",
       {0, 0, 1}, true, {mismatch}},
      {"10 KB of zeros", "[General]\r\nFailure Fraction=" + std::string(10240, '0') + "2\r\n", {0, 0, 0}, true, {}},
      {"binary junk", PseudoRandomBytes(8192), {0, 0, 0}, true, {}},
      {"no section header", "N50/N63 Parameter=1\r\nFailure Fraction=2\r\n", {0, 0, 0}, true, {}},
      {"UTF-16 text", Utf16("[General]\r\nN50/N63 Parameter=1\r\n"), {0, 0, 0}, true, {}},
  };
  for (const Row& row : rows) {
    SettingsEnv env;
    env.s.bSoundStatus = true;  // the default, kept where nothing says otherwise
    env.dir.Write("Vorlantic/Tarvenix.ini", row.content);
    ReadTarvenixIni(env.s, env.ui);
    EXPECT_EQ(env.ui.MessageTexts(), row.messages) << row.input;
    EXPECT_EQ(env.s.iAnalysisOptions, row.options) << row.input;
    EXPECT_EQ(static_cast<bool>(env.s.bSoundStatus), row.sound) << row.input;

    // Quitting writes the settings over whatever was there, and they read back.
    EXPECT_TRUE(WriteTarvenixIni(env.s, env.ui)) << row.input;
    Session again;
    again.sDataLogDir = env.s.sDataLogDir;
    ReadTarvenixIni(again, env.ui);
    EXPECT_EQ(again.iAnalysisOptions, row.options) << row.input;
  }
}

TEST(Settings, WritingKeepsForeignKeys) {
  SettingsEnv env;
  env.dir.Write("Vorlantic/Tarvenix.ini", "[General]\r\nSound Status=False\r\nWindow=3\r\n[Mine]\r\nx=y\r\n");
  env.s.iAnalysisOptions = {1, 2, 1};
  env.s.bSoundStatus = true;
  ASSERT_TRUE(WriteTarvenixIni(env.s, env.ui));
  EXPECT_EQ(ReadAll(env.File()),
            "[General]\r\nSound Status=True\r\nWindow=3\r\nN50/N63 Parameter=1\r\nFailure Fraction=2\r\n"
            "Confidence Level=1\r\n[Mine]\r\nx=y\r\n");
}

TEST(Settings, AFileThatCannotBeReplacedAtQuitStaysAsItWas) {
  SettingsEnv env;
  const std::string old = "[General]\r\nSound Status=False\r\n; mine\r\n";
  env.dir.Write("Vorlantic/Tarvenix.ini", old);
  env.s.iAnalysisOptions = {1, 1, 1};
  const std::string seen = test::OutOfReach(env.File(), test::Reach::Write, [&] {
    std::string text = WriteTarvenixIni(env.s, env.ui) ? "written" : "refused";
    for (const std::string& m : env.ui.MessageTexts()) text += "\n" + m;
    return text;
  });
  EXPECT_EQ(seen, "refused\nError in modIniFiles.PutKeyValue - Error #75  Path/File access error\r"
                  "The settings could not be saved to " + env.File());
  EXPECT_EQ(ReadAll(env.File()), old);
  EXPECT_EQ(std::distance(fs::directory_iterator(env.s.sDataLogDir), fs::directory_iterator()), 1)
      << "no temporary file is left behind";
}

TEST(Settings, TheCompanionsFileOnlyPointsTheDataFolder) {
  SettingsEnv env;
  env.s.sDataDir = "/elsewhere";
  ReadVorlanticIni(env.s, env.ui);
  EXPECT_EQ(env.s.sDataDir, env.s.sDefaultDataDir);
}

}  // namespace
}  // namespace tarvenix::modIO
