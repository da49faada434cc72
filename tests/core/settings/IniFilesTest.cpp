#include <gtest/gtest.h>

#include "settings/IniFiles.h"
#include "session/Session.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::modIniFiles {
namespace {

using test::ReadAll;
using test::RecordingUi;
using test::TempDir;

const char* kSample =
    "; written by hand\r\n"
    "[Other]\r\n"
    "Key=other value\r\n"
    "\r\n"
    "[General]\r\n"
    "N50/N63 Parameter = 1 \r\n"
    "Quoted=\"  spaced  \"\r\n"
    "; a comment inside\r\n"
    "\r\n"
    "[general]\r\n"
    "Failure Fraction=2\r\n";

TEST(IniLookup, CaseInsensitiveFirstSectionTrimmedAndUnquoted) {
  struct Case {
    const char* section;
    const char* key;
    const char* value;
  } cases[] = {
      {"General", "N50/N63 Parameter", "1"},
      {"GENERAL", "n50/n63 parameter", "1"},
      {"General", "Quoted", "  spaced  "},
      {"General", "Failure Fraction", ""},  // only in the second, duplicate section
      {"Other", "KEY", "other value"},
      {"Missing", "Key", ""},
      {"General", "Missing", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(LookupValue(kSample, c.section, c.key), c.value) << c.section << "/" << c.key;
  EXPECT_EQ(LookupValue("", "General", "Key"), "");
  EXPECT_EQ(LookupValue("Key=1\n", "General", "Key"), "") << "a key before any section belongs to none";
  EXPECT_EQ(LookupValue("[General]\nKey=1", "General", "Key"), "1") << "no line end at the end of the file";
}

TEST(IniUpdate, KeepsEverythingElseInItsPlace) {
  std::string t = UpdateValue(kSample, "general", "n50/n63 parameter", "0");
  EXPECT_EQ(t,
            "; written by hand\r\n[Other]\r\nKey=other value\r\n\r\n[General]\r\nn50/n63 parameter=0\r\n"
            "Quoted=\"  spaced  \"\r\n; a comment inside\r\n\r\n[general]\r\nFailure Fraction=2\r\n");
  std::string added = UpdateValue(kSample, "General", "Sound Status", "True");
  EXPECT_NE(added.find("; a comment inside\r\nSound Status=True\r\n\r\n[general]"), std::string::npos) << added;
  std::string newSection = UpdateValue("[A]\nx=1", "General", "K", "v");
  EXPECT_EQ(newSection, "[A]\nx=1\n[General]\nK=v\n");
  EXPECT_EQ(UpdateValue("", "General", "K", "v"), "[General]\r\nK=v\r\n");
  EXPECT_EQ(LookupValue(UpdateValue("", "S", "K", "a\r\nb"), "S", "K"), "a  b");
}

TEST(IniFiles, MissingFilesLongValuesAndAMissingFolder) {
  TempDir dir;
  Session s;
  RecordingUi ui;
  EXPECT_EQ(GetKeyValue(s, ui, dir.File("none.ini"), "General", "Key"), "");
  EXPECT_EQ(GetKeyValue(s, ui, dir.Path(), "General", "Key"), "") << "a folder reads as no file";
  std::string file = dir.File("new.ini");
  ASSERT_TRUE(PutKeyValue(s, ui, file, "General", "Long", std::string(10000, 'v')));
  EXPECT_EQ(GetKeyValue(s, ui, file, "General", "Long"), std::string(99, 'v'));
  std::string junk = dir.Write("junk.ini", std::string("\0\xff\x01[General\nKey\0=1\n", 17));
  EXPECT_EQ(GetKeyValue(s, ui, junk, "General", "Key"), "");
  EXPECT_TRUE(ui.messages.empty());

  EXPECT_FALSE(PutKeyValue(s, ui, dir.File("no/such/Tarvenix.ini"), "General", "K", "v"));
  ASSERT_EQ(ui.messages.size(), 1u);
  EXPECT_EQ(ui.messages[0].text.rfind("Error in modIniFiles.PutKeyValue - Error #76  Path not found\r", 0), 0u);
}

}  // namespace
}  // namespace tarvenix::modIniFiles
