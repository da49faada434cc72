// Files the user owns are replaced whole or not at all: when the disk fills up
// while one is written, the old file stays byte for byte, no temporary file is
// left beside it, and the user is told.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

#include "session/FileUtils.h"
#include "analysis/Report.h"
#include "settings/IniFiles.h"
#include "session/Session.h"
#include "support/ErrorNumber.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::test {
namespace {

namespace fs = std::filesystem;

// Bytes a file may grow to on the "full" disk: less than any of the new texts.
constexpr std::size_t kRoomLeft = 16;

int FilesIn(const std::string& folder) {
  return static_cast<int>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(NoDataLost, AFullDiskLeavesEveryOldFileWhole) {
  struct Row {
    const char* file;
    // Writes the file; the message shown, or the error number raised.
    std::function<std::string(Session&, RecordingUi&, const std::string&)> write;
    std::string told;  // "{file}" stands for the file's path
  } rows[] = {
      {"the settings file",
       [](Session& s, RecordingUi& ui, const std::string& path) {
         modIniFiles::PutKeyValue(s, ui, path, "General", "Sound Status", "True");
         return ui.MessageTexts().empty() ? std::string() : ui.MessageTexts().back();
       },
       "Error in modIniFiles.PutKeyValue - Error #61  Disk full\rThe settings could not be saved to {file}"},
      {"the analysis report",
       [](Session& s, RecordingUi& ui, const std::string& path) {
         int16_t iErr = 0;
         modTarvenix::SaveRawData(s, ui, path, iErr);
         return std::to_string(iErr) + " " + (ui.MessageTexts().empty() ? std::string() : ui.MessageTexts().back());
       },
       "1 Error in modTarvenix.SaveRawData - Error #61  Disk full\r"},
      {"a text file written line by line (the debug log)",
       [](Session&, RecordingUi&, const std::string& path) {
         return std::to_string(ErrorNumberOf([&] {
           auto file = modUtils::VbFile::Open(modUtils::FileMode::Output, path);
           file->PrintLine("Starting First Pass");
           file->PrintLine("Event #1 recorded on Ch # 5 @ Data cycle #7");
           file->Close();
         }));
       },
       "61"},
  };
  for (const Row& row : rows) {
    TempDir dir;
    const std::string old = "[General]\r\nSound Status=False\r\n; the user's own notes\r\n";
    const std::string path = dir.Write("owned.txt", old);
    Session s;
    s.bSoundStatus = false;
    RecordingUi ui;
    std::string told;
    {
      DiskSpaceLimit full(kRoomLeft);
      told = row.write(s, ui, path);
    }
    std::string expected = row.told;
    if (std::size_t at = expected.find("{file}"); at != std::string::npos) expected.replace(at, 6, path);
    EXPECT_EQ(told, expected) << row.file;
    EXPECT_EQ(ReadAll(path), old) << row.file;
    EXPECT_EQ(FilesIn(dir.Path()), 1) << row.file << ": no temporary file is left behind";
  }
}

}  // namespace
}  // namespace tarvenix::test
