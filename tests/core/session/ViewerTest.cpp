// View Datafile: the companion's viewer gets the file and "090", each whole
// whatever blanks or script the name holds, and does not hold us up; a
// missing file or viewer, or one that is not a program, gets its notice.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "session/FileUtils.h"
#include "session/Session.h"
#include "session/Viewer.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::test {
namespace {

namespace fs = std::filesystem;

// What the stub viewer wrote, once it has written it (or after 10 seconds).
std::string ViewerArguments(const TempDir& program) {
  const std::string path = program.File("viewer-args.txt");
  for (int i = 0; i < 500 && !modUtils::IsFile(path); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(20));
  return ReadAll(path);
}

TEST(ViewDataFile, StartsTheViewerWithTheFileAndTheViewCode) {
  TempDir data;
  const std::string file = data.Write("Pr\u00fcflauf 7 \u65e5\u672c.txt", "x");
  const std::string viewer = "quillet.exe";
  struct Row {
    const char* what;
    std::string file;
    std::string viewerBytes;  // "": none; "stub": the stand-in program
    std::string notice;       // "" when the viewer starts
  } rows[] = {
      {"no such file", data.File("gone.txt"), "stub",
       "The file " + data.File("gone.txt") + "\rcould not be opened for editing because it does not exist."},
      {"no viewer", file, "", "Can't find Quillet.exe. Try reinstalling Vorlantic."},
      {"a viewer that is no program", file, "not a program", "Could not open the file {viewer}"},
      {"the viewer", file, "stub", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    TempDir program;
    if (row.viewerBytes == "stub") {
      fs::copy_file(modUtils::NativePath(TARVENIX_VIEWER_STUB), modUtils::NativePath(program.File(viewer)));
    } else if (!row.viewerBytes.empty()) {
      program.Write(viewer, row.viewerBytes);
    }
    Session s;
    s.sAppPath = program.Path();
    RecordingUi ui;
    modTarvenix::ViewDataFile(s, ui, row.file);
    std::string notice = row.notice;
    if (std::size_t at = notice.find("{viewer}"); at != std::string::npos) notice.replace(at, 8, program.File(viewer));
    EXPECT_EQ(ui.MessageTexts(), notice.empty() ? std::vector<std::string>{} : std::vector<std::string>{notice});
    if (notice.empty()) {
      EXPECT_EQ(ViewerArguments(program), file + "\n090\n");
    }
  }
}

}  // namespace
}  // namespace tarvenix::test
