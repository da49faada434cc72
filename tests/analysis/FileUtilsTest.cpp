#include <gtest/gtest.h>

#include <filesystem>

#include "analysis/FileUtils.h"
#include "analysis/RuntimeError.h"
#include "app/Session.h"
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
  };
  for (const Case& c : cases) {
    std::string folder = "?", name = "?";
    GetPathAndFilename(c.full, folder, name);
    EXPECT_EQ(folder, c.folder) << c.full;
    EXPECT_EQ(name, c.name) << c.full;
  }
  EXPECT_EQ(JoinPath("/a", "b"), "/a/b");
  EXPECT_EQ(JoinPath("/a/", "b"), "/a/b");
  EXPECT_EQ(JoinPath("", "b"), "b");
}

TEST(CommonAppData, FollowsTheUsersDataFolder) {
  const char* old = std::getenv("XDG_DATA_HOME");
  std::string saved = old ? old : "";
  setenv("XDG_DATA_HOME", "/tmp/xdg-test", 1);
  EXPECT_EQ(CommonAppDataFolder(), "/tmp/xdg-test");
  setenv("XDG_DATA_HOME", "relative/ignored", 1);
  EXPECT_NE(CommonAppDataFolder(), "relative/ignored");
  if (old) setenv("XDG_DATA_HOME", saved.c_str(), 1); else unsetenv("XDG_DATA_HOME");
}

TEST(LineInput, AllThreeLineEndsAndTheEndOfTheFile) {
  TempDir dir;
  std::string p = dir.Write("lines.txt", std::string("one\r\ntwo\nthree\rfour\r\n\r\nsix\0x", 28));
  auto f = VbFile::Open(FileMode::Input, p);
  std::vector<std::string> lines;
  while (!f->Eof()) lines.push_back(f->LineInput());
  std::vector<std::string> expected = {"one", "two", "three", "four", "", std::string("six\0x", 5)};
  EXPECT_EQ(lines, expected);
  EXPECT_EQ(ErrorNumberOf([&] { f->LineInput(); }), err::kInputPastEnd);
}

TEST(InputItem, CommasLineEndsQuotesAndBlanks) {
  TempDir dir;
  std::string p = dir.Write("items.txt", "5\r\n 7 , 9\n\"a, b\" ,x\r  12  \r\n,");
  auto f = VbFile::Open(FileMode::Input, p);
  std::vector<std::string> items;
  while (!f->Eof()) items.push_back(f->InputItem());
  std::vector<std::string> expected = {"5", "7", "9", "a, b", "x", "12", ""};
  EXPECT_EQ(items, expected);
  EXPECT_EQ(ErrorNumberOf([&] { f->InputItem(); }), err::kInputPastEnd);
}

TEST(OpenErrors, AnEmptyNameIsABadFileName) {
  EXPECT_EQ(ErrorNumberOf([&] { VbFile::Open(FileMode::Input, ""); }), err::kBadFileName);
}

TEST(AtomicWrite, ReplacesWholeAndLeavesNoTemporaryFiles) {
  TempDir dir;
  std::string p = dir.Write("report.txt", "old");
  WriteFileAtomically(p, "new text");
  EXPECT_EQ(ReadAll(p), "new text");
  WriteFileAtomically(dir.File("fresh.txt"), "");
  EXPECT_TRUE(IsFile(dir.File("fresh.txt")));
  int entries = 0;
  for (auto& e : fs::directory_iterator(dir.Path())) (void)e, ++entries;
  EXPECT_EQ(entries, 2);
}

TEST(AtomicWrite, WritingThroughALinkKeepsTheLink) {
  TempDir dir;
  std::string real = dir.Write("real.txt", "old");
  fs::create_symlink(real, dir.File("link.txt"));
  WriteFileAtomically(dir.File("link.txt"), "new");
  EXPECT_TRUE(fs::is_symlink(dir.File("link.txt")));
  EXPECT_EQ(ReadAll(real), "new");
}

TEST(OutputFiles, OutputReplacesOnCloseAppendAdds) {
  TempDir dir;
  std::string p = dir.Write("out.txt", "old");
  {
    auto f = VbFile::Open(FileMode::Output, p);
    f->PrintLine(" 5");
    EXPECT_EQ(ReadAll(p), "old") << "nothing is replaced before Close";
    f->PrintLine(" 7");
    f->Close();
  }
  EXPECT_EQ(ReadAll(p), " 5\r\n 7\r\n");
  {
    auto f = VbFile::Open(FileMode::Output, p);
    f->PrintLine("lost");
  }  // never closed: the old file stays
  EXPECT_EQ(ReadAll(p), " 5\r\n 7\r\n");
  auto a = VbFile::Open(FileMode::Append, p);
  a->Print("x");
  a->Close();
  EXPECT_EQ(ReadAll(p), " 5\r\n 7\r\nx");
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
