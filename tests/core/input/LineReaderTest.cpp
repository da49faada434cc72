#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "input/LineReader.h"
#include "support/ErrorNumber.h"
#include "support/TempDir.h"

namespace tarvenix::input {
namespace {

using test::TempDir;

// What the reader must give: CR LF, LF and a lone CR each end a line; a last
// line without an end still counts.
std::vector<std::string> ReferenceLines(const std::string& bytes) {
  std::vector<std::string> lines;
  std::string line;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const char c = bytes[i];
    if (c == '\r' || c == '\n') {
      lines.push_back(line);
      line.clear();
      if (c == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
    } else {
      line.push_back(c);
    }
  }
  if (!line.empty()) lines.push_back(line);
  return lines;
}

// Every line, its head and pieces put together, through a reader with `bufferSize`.
std::vector<std::string> ReadLines(const std::string& path, std::size_t bufferSize) {
  LineReader reader(bufferSize);
  reader.Open(path);
  std::vector<std::string> lines;
  std::string_view head, piece;
  bool complete = false;
  while (reader.NextLine(head, complete)) {
    EXPECT_LE(head.size(), bufferSize);
    std::string line(head);
    if (!complete)
      while (reader.NextPiece(piece)) line.append(piece);
    lines.push_back(line);
  }
  return lines;
}

TEST(LineReader, EveryKindOfLineEndAndAnyBytesWithAnyBuffer) {
  std::vector<std::string> cases = {
      "",
      "\r\n",
      "a\r\nb\r\n",
      "a\nb",
      "a\rb\r",
      "a\r\n\r\nb",
      "a\n\rb",
      std::string("a\0b\nc\0", 6),
      "\xff\xfe\x80 text\r\n",
      std::string(40, 'x') + "\r\n" + std::string(15, 'y') + "\r\n" + std::string(16, 'z'),
  };
  // Random text across block boundaries, with long runs without a line end
  // so that lines outgrow the buffer.
  uint32_t state = 12345;
  auto next = [&] { return state = state * 1103515245u + 12345u; };
  const char alphabet[] = {'a', 'b', '\r', '\n', '\0', ' '};
  for (int round = 0; round < 40; ++round) {
    std::string bytes;
    const std::size_t length = next() % 300;
    for (std::size_t i = 0; i < length; ++i) bytes.push_back(alphabet[(next() >> 16) % sizeof alphabet]);
    if (round % 3 == 0) bytes.insert(next() % (bytes.size() + 1), std::string(next() % 90, 'q'));
    cases.push_back(bytes);
  }
  TempDir dir;
  for (const std::string& bytes : cases) {
    const std::string path = dir.Write("f.txt", bytes);
    for (std::size_t size = 16; size <= 41; ++size) {
      const std::size_t bufferSize = size == 41 ? 1u << 20 : size;
      EXPECT_EQ(ReadLines(path, bufferSize), ReferenceLines(bytes)) << "buffer " << bufferSize << ": " << bytes;
    }
  }
}

TEST(LineReader, TheRestOfALongLineIsSkippedWhenNotAskedFor) {
  TempDir dir;
  LineReader reader(16);
  reader.Open(dir.Write("long.txt", std::string(100, 'x') + "\r\nnext\r\n"));
  std::string_view head;
  bool complete = true;
  ASSERT_TRUE(reader.NextLine(head, complete));
  EXPECT_FALSE(complete);
  EXPECT_EQ(head, std::string(16, 'x'));
  ASSERT_TRUE(reader.NextLine(head, complete));
  EXPECT_TRUE(complete);
  EXPECT_EQ(head, "next");
  EXPECT_FALSE(reader.NextLine(head, complete));
}

TEST(LineReader, OpeningFailsWithTheClassicErrors) {
  TempDir dir;
  LineReader reader;
  EXPECT_EQ(test::ErrorNumberOf([&] { reader.Open(dir.File("missing.txt")); }), 53);
  EXPECT_EQ(test::ErrorNumberOf([&] { reader.Open(dir.Path()); }), 75);
  EXPECT_EQ(test::ErrorNumberOf([&] { reader.Open(dir.File("no/such/folder.txt")); }), 76);
  EXPECT_EQ(test::ErrorNumberOf([&] { reader.Open(""); }), 52);
}

}  // namespace
}  // namespace tarvenix::input
