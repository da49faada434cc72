// What a user sees for a bad settings file, or a settings folder that cannot
// be written at quit: the program's own message, and it carries on. The batch
// tool reads no settings; the other bad inputs are case folders under
// tests/cases/bad-inputs/ and, for files no case folder can hold,
// ReadingTest.cpp. README's "Bad inputs" table summarises them all.

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "session/Session.h"
#include "settings/SettingsIO.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::test {
namespace {

namespace fs = std::filesystem;

std::string ErrorBox(const std::string& label, int number, const std::string& description) {
  return "Error in " + label + " - Error #" + std::to_string(number) + "  " + description + "\r";
}

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

struct Settings {
  TempDir dir;
  Session s;
  RecordingUi ui;
  Settings() {
    s.bSoundStatus = false;
    s.sDataLogDir = dir.File("Vorlantic") + "/";
    fs::create_directories(s.sDataLogDir);
  }
  std::string File() const { return modIO::SettingsFilePath(s); }
};

TEST(BadInputs, SettingsFiles) {
  struct SettingsRow {
    const char* input;
    std::string content;
    std::vector<std::string> messages;
    std::array<int16_t, 3> options;
  } rows[] = {
      {"a 10 KB number", "[General]\r\nN50/N63 Parameter=1\r\nFailure Fraction=" + std::string(10240, '1') + "\r\n",
       {ErrorBox("modIO.ReadTarvenixIni", 6, "Overflow")}, {1, 0, 0}},
      {"a 10 KB text", "[General]\r\nConfidence Level=1\r\nSound Status=" + std::string(10240, 'x') + "\r\n",
       {ErrorBox("modIO.ReadTarvenixIni", 13, "Type mismatch")}, {0, 0, 1}},
      {"10 KB of zeros", "[General]\r\nFailure Fraction=" + std::string(10240, '0') + "2\r\n", {}, {0, 0, 0}},
      {"binary junk", PseudoRandomBytes(8192), {}, {0, 0, 0}},
      {"no section header", "N50/N63 Parameter=1\r\nFailure Fraction=2\r\n", {}, {0, 0, 0}},
      {"UTF-16 text", Utf16("[General]\r\nN50/N63 Parameter=1\r\n"), {}, {0, 0, 0}},
  };
  for (const SettingsRow& row : rows) {
    Settings env;
    env.dir.Write("Vorlantic/Tarvenix.ini", row.content);
    modIO::ReadTarvenixIni(env.s, env.ui);
    EXPECT_EQ(env.ui.MessageTexts(), row.messages) << row.input;
    EXPECT_EQ(env.s.iAnalysisOptions, row.options) << row.input;

    // Quitting writes the settings over whatever was there.
    EXPECT_TRUE(modIO::WriteTarvenixIni(env.s, env.ui)) << row.input;
    Session again;
    again.sDataLogDir = env.s.sDataLogDir;
    modIO::ReadTarvenixIni(again, env.ui);
    EXPECT_EQ(again.iAnalysisOptions, row.options) << row.input;
  }
}

TEST(BadInputs, ASettingsFolderThatCannotBeWrittenAtQuit) {
  Settings env;
  const std::string old = "[General]\r\nSound Status=False\r\n; mine\r\n";
  env.dir.Write("Vorlantic/Tarvenix.ini", old);
  env.s.iAnalysisOptions = {1, 1, 1};
  OpenForEveryone(env.dir.Path());
  fs::permissions(env.s.sDataLogDir, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
  const std::string seen = AsUnprivilegedUser([&] {
    const bool written = modIO::WriteTarvenixIni(env.s, env.ui);
    std::string text = written ? "written" : "refused";
    for (const std::string& m : env.ui.MessageTexts()) text += "\n" + m;
    return text;
  });
  EXPECT_EQ(seen, "refused\n" + ErrorBox("modIniFiles.PutKeyValue", 75, "Path/File access error") +
                      "The settings could not be saved to " + env.File());
  EXPECT_EQ(ReadAll(env.File()), old);
  EXPECT_EQ(std::distance(fs::directory_iterator(env.s.sDataLogDir), fs::directory_iterator()), 1)
      << "no temporary file is left behind";
}

}  // namespace
}  // namespace tarvenix::test
