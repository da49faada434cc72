#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "session/FileUtils.h"
#include "base/RuntimeError.h"
#include "session/Session.h"
#include "support/ErrorNumber.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::modUtils {
namespace {

using test::ErrorNumberOf;
using test::ReadAll;
using test::RecordingUi;
using test::TempDir;
namespace fs = std::filesystem;

#ifdef _WIN32
constexpr int kWindows = 1;
#else
constexpr int kWindows = 0;
#endif

TEST(Paths, SplitAtTheLastSeparator) {
  struct Case {
    const char* full;
    const char* folder;
    const char* name;
  } cases[] = {
      {"/lab/tests/run.txt", "/lab/tests", "run.txt"},
      {"/run.txt", "", "run.txt"},
      {"run.txt", "", "run.txt"},
      {"/lab/tests/", "/lab/tests", ""},
#ifdef _WIN32
      // Drive letters, and "\" and "/" alike.
      {"C:\\Lab\\tests\\run.txt", "C:\\Lab\\tests", "run.txt"},
      {"D:/Lab\\run.txt", "D:/Lab", "run.txt"},
      {"C:\\run.txt", "C:", "run.txt"},
      {"\\\\server\\share\\run.txt", "\\\\server\\share", "run.txt"},
#endif
  };
  for (const Case& c : cases) {
    std::string folder = "?", name = "?";
    GetPathAndFilename(c.full, folder, name);
    EXPECT_EQ(folder, c.folder) << c.full;
    EXPECT_EQ(name, c.name) << c.full;
  }
  EXPECT_EQ(JoinPath("/a", "b"), std::string("/a") + kPathSep + "b");
  EXPECT_EQ(JoinPath("/a/", "b"), "/a/b");
  EXPECT_EQ(JoinPath("", "b"), "b");
#ifdef _WIN32
  EXPECT_EQ(JoinPath("C:\\Data", "b"), "C:\\Data\\b");
  EXPECT_EQ(JoinPath("C:\\", "b"), "C:\\b");
#endif
}

// Windows: %PROGRAMDATA%, read through the wide-character call so a name in
// any script comes through. Elsewhere: the user's data folder, and only an
// absolute one.
TEST(CommonAppData, FollowsTheSystemsDataFolder) {
#ifdef _WIN32
  const char* name = "PROGRAMDATA";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"D:\\Gemeinsame Daten \u00fc\u00df \u65e5\u672c", "D:\\Gemeinsame Daten \u00fc\u00df \u65e5\u672c"}};
#else
  const char* name = "XDG_DATA_HOME";
  const std::vector<std::pair<std::string, std::string>> cases = {{"/tmp/xdg-test", "/tmp/xdg-test"},
                                                                  {"relative/ignored", ""}};
#endif
  const char* old = std::getenv(name);
  const std::string saved = old ? old : "";
  for (const auto& [value, expected] : cases) {
    test::SetEnvironment(name, value);
    if (expected.empty()) {
      EXPECT_NE(CommonAppDataFolder(), value);
    } else {
      EXPECT_EQ(CommonAppDataFolder(), expected);
    }
  }
  test::SetEnvironment(name, old ? saved : "");
}

TEST(Reading, LinesAndItemsUpToTheEndOfTheFile) {
  struct Case {
    std::string bytes;
    std::string (VbFile::*read)();
    std::vector<std::string> expected;
  } cases[] = {
      // All three line ends; a NUL stays in its line.
      {std::string("one\r\ntwo\nthree\rfour\r\n\r\nsix\0x", 28), &VbFile::LineInput,
       {"one", "two", "three", "four", "", std::string("six\0x", 5)}},
      // Items end at commas and line ends; quotes keep commas; blanks around go.
      {"5\r\n 7 , 9\n\"a, b\" ,x\r  12  \r\n,", &VbFile::InputItem, {"5", "7", "9", "a, b", "x", "12", ""}},
  };
  for (const Case& c : cases) {
    TempDir dir;
    auto f = VbFile::Open(FileMode::Input, dir.Write("in.txt", c.bytes));
    std::vector<std::string> got;
    while (!f->Eof()) got.push_back(((*f).*c.read)());
    EXPECT_EQ(got, c.expected);
    EXPECT_EQ(ErrorNumberOf([&] { ((*f).*c.read)(); }), err::kInputPastEnd);
  }
  EXPECT_EQ(ErrorNumberOf([&] { VbFile::Open(FileMode::Input, ""); }), err::kBadFileName);
}

TEST(AtomicWrite, ReplacesWholeKeepsALinkAndLeavesNoTemporaryFiles) {
  TempDir dir;
  std::string p = dir.Write("report.txt", "old");
  WriteFileAtomically(p, "new text");
  EXPECT_EQ(ReadAll(p), "new text");
  WriteFileAtomically(dir.File("fresh.txt"), "");
  EXPECT_TRUE(IsFile(dir.File("fresh.txt")));
#ifndef _WIN32  // links need rights a Windows user seldom has
  fs::create_symlink(p, dir.File("link.txt"));
  WriteFileAtomically(dir.File("link.txt"), "through the link");
  EXPECT_TRUE(fs::is_symlink(dir.File("link.txt")));
  EXPECT_EQ(ReadAll(p), "through the link");
#endif
  int entries = 0;
  for (auto& e : fs::directory_iterator(dir.Path())) (void)e, ++entries;
  EXPECT_EQ(entries, 3 - kWindows);
}

TEST(OutputFiles, OutputReplacesOnCloseAppendAdds) {
  TempDir dir;
  std::string p = dir.Write("out.txt", "old");
  auto f = VbFile::Open(FileMode::Output, p);
  f->PrintLine(" 5");
  EXPECT_EQ(ReadAll(p), "old") << "nothing is replaced before Close";
  f->PrintLine(" 7");
  f->Close();
  EXPECT_EQ(ReadAll(p), " 5\r\n 7\r\n");
  VbFile::Open(FileMode::Output, p)->PrintLine("lost");  // never closed: the old file stays
  EXPECT_EQ(ReadAll(p), " 5\r\n 7\r\n");
  auto a = VbFile::Open(FileMode::Append, p);
  a->Print("x");
  a->Close();
  EXPECT_EQ(ReadAll(p), " 5\r\n 7\r\nx");
}

// A file another program holds: retried for ten seconds, then explained; on
// Windows, where that is how a file is in use, it opens once let go.
TEST(OpenFile, AFileInUseIsRetriedForTenSeconds) {
  TempDir dir;
  const std::string path = dir.Write("in use.txt", "data\r\n");
  long long now = 100;
  int pauses = 0;
  std::function<void()> atThirdPause = [] {};
  RetryClock clock{[&] { return now; },
                   [&] {
                     ++now;
                     if (++pauses == 3) atThirdPause();
                   }};
  const auto open = [&] {
    Session s;
    RecordingUi ui;
    int16_t iErr = 7;
    auto f = OpenFile(s, ui, "Input", path, iErr, clock);
    return std::to_string(iErr) + " " + std::to_string(pauses) + " " + (f ? f->LineInput() : ui.messages.at(0).title);
  };
  EXPECT_EQ(test::OutOfReach(path, test::Reach::Read, open), "1 10 modUtils.OpenFile Error #75 Path/File access error");
#ifdef _WIN32
  pauses = 0;
  test::HeldByAnotherProgram held(path);
  atThirdPause = [&] { held.Release(); };
  EXPECT_EQ(open(), "0 3 data");
#endif
}

TEST(OpenFile, RetriesForTenSecondsThenExplains) {
  TempDir dir;
  Session s;
  RecordingUi ui;
  long long now = 100;
  int pauses = 0;
  RetryClock clock{[&] { return now; }, [&] { ++pauses, ++now; }};
  int16_t iErr = 7;
  auto f = OpenFile(s, ui, "Input", dir.File("missing.txt"), iErr, clock);
  EXPECT_EQ(f, nullptr);
  EXPECT_EQ(iErr, 1);
  EXPECT_EQ(pauses, 10);
  ASSERT_EQ(ui.messages.size(), 1u);
  EXPECT_EQ(ui.messages[0].text, "The file, '" + dir.File("missing.txt") +
                                     "' could not be opened.\rThe file may be in use by another program.");
  EXPECT_EQ(ui.messages[0].title, "modUtils.OpenFile Error #53 File not found");

  iErr = 7;
  auto g = OpenFile(s, ui, "Output", dir.File("new.txt"), iErr, clock);
  ASSERT_NE(g, nullptr);
  EXPECT_EQ(iErr, 0);
}

}  // namespace
}  // namespace tarvenix::modUtils
