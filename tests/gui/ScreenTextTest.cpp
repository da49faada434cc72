// Texts from the core on the screen: messages quote file names in the system's
// encoding, while data set IDs and file contents are single-byte text, and
// what is typed goes back as single-byte text.

#include <gtest/gtest.h>

#include <string>

#include <QString>

#include "QtStrings.h"

namespace tarvenix {
namespace {

TEST(ScreenText, FileNamesInUtf8AndSingleByteTextBothReadRightAndTypedTextGoesBack) {
  const std::pair<std::string, QString> cases[] = {
      {"Error in channel selection file:\r/data/m\xc3\xa9sure 85\xc2\xb0" "C.txt\rat line number: 3",
       QString::fromUtf8("Error in channel selection file:\n/data/m\xc3\xa9sure 85\xc2\xb0" "C.txt\nat line number: 3")},
      {"Board 85\xb0" "C, caf\xe9", QString::fromUtf8("Board 85\xc2\xb0" "C, caf\xc3\xa9")},
      {"line one\r\nline two", QStringLiteral("line one\nline two")},
      {std::string("a\0b", 3), QString::fromLatin1("a\0b", 3)},
      {"\xc3", QString::fromUtf8("\xc3\x83")},  // a cut UTF-8 sequence is single-byte text
  };
  for (const auto& [bytes, shown] : cases) EXPECT_EQ(ToQt(bytes), shown) << bytes;
  for (const char* typed : {"Board A", "85\xb0" "C", "caf\xe9 \xb5m"}) EXPECT_EQ(FromQt(ToQt(typed)), typed);
}

}  // namespace
}  // namespace tarvenix
