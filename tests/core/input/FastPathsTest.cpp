// The reader's fast paths against the plain rules they stand for, over written
// and pseudo-random inputs: line-end masks, lines from a buffer of any size,
// the kind and numbers of a line, channel entries fed in pieces.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Basic.h"
#include "base/RuntimeError.h"
#include "input/HistoryLines.h"
#include "input/LineEnds.h"
#include "input/LineReader.h"
#include "support/ErrorNumber.h"
#include "support/TempDir.h"

namespace tarvenix::input {
namespace {

// Texts of up to `maxLength` characters from `alphabet`, the same every run.
struct RandomTexts {
  uint32_t state;
  uint32_t Next() { return state = state * 1664525u + 1013904223u; }
  std::string Text(std::string_view alphabet, std::size_t maxLength) {
    std::string text(Next() % (maxLength + 1), ' ');
    for (char& c : text) c = alphabet[(Next() >> 16) % alphabet.size()];
    return text;
  }
};

bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

// The masks `mark` gives for `text` placed `offset` bytes into a buffer whose
// bytes past the text are all line ends, so marks past the end would show.
std::vector<uint64_t> Marked(void (*mark)(const char*, std::size_t, uint64_t*), const std::string& text,
                             std::size_t offset) {
  std::string buffer = std::string(offset, 'x') + text + std::string(kLineEndBlock, '\n');
  std::vector<uint64_t> masks((text.size() + kLineEndBlock - 1) / kLineEndBlock + 1, 0xA5A5A5A5A5A5A5A5ull);
  mark(buffer.data() + offset, text.size(), masks.data());
  masks.pop_back();  // one past the last block: never written
  return masks;
}

TEST(LineEnds, EveryWayMarksExactlyTheCrAndLfBytes) {
  // Bytes one bit away from CR and LF, and with the high bit set, catch
  // comparisons done on the wrong bits or with the wrong signedness.
  const std::string nearMisses("\x0a\x0d\x8a\x8d\x0b\x0c\x0e\x09\x2a\x2d\xff\x00\x80\x7f\x1a\x1d", 16);
  std::vector<std::string> cases = {std::string(200, '\r'), std::string(63, 'a') + "\r\n" + std::string(70, 'b'),
                                    std::string(63, 'a') + "\n", std::string(64, 'a') + "\rb",
                                    nearMisses + nearMisses + nearMisses + nearMisses + "\n"};
  RandomTexts random{3};
  std::string bytes(4097, ' ');
  for (char& c : bytes) c = static_cast<char>(random.Next() >> 24);
  for (std::size_t size = 0; size <= 3 * kLineEndBlock; ++size) cases.push_back(bytes.substr(0, size));
  cases.insert(cases.end(), {bytes, std::string(130, 'z'), "Cycle # 12\r\n003:: 005:I. 007:I.\r\n     . 009:I.\r\n"});
  for (const std::string& text : cases) {
    std::vector<uint64_t> expected((text.size() + kLineEndBlock - 1) / kLineEndBlock, 0);
    for (std::size_t i = 0; i < text.size(); ++i)
      if (IsLineEnd(text[i])) expected[i / kLineEndBlock] |= uint64_t{1} << (i % kLineEndBlock);
    for (std::size_t offset : {0, 1, 7, 33}) {
      EXPECT_EQ(Marked(MarkLineEnds, text, offset), expected) << "size " << text.size() << ", offset " << offset;
      EXPECT_EQ(Marked(MarkLineEndsPortable, text, offset), expected) << "size " << text.size();
    }
  }
}

TEST(LineReader, EveryKindOfLineEndAndAnyBytesWithAnyBuffer) {
  std::vector<std::string> cases = {"", "\r\n", "a\r\nb\r\n", "a\nb", "a\rb\r", "a\r\n\r\nb", "a\n\rb",
                                    std::string("a\0b\nc\0", 6), "\xff\xfe\x80 text\r\n",
                                    std::string(40, 'x') + "\r\n" + std::string(15, 'y') + "\r\n" + std::string(16, 'z')};
  // Long runs without a line end make lines outgrow the buffer.
  RandomTexts random{12345};
  for (int round = 0; round < 40; ++round)
    cases.push_back(random.Text(std::string("ab\r\n\0 ", 6), 300) + std::string(round % 3 ? 0 : random.Next() % 90, 'q') +
                    random.Text("a\r\n", 20));
  test::TempDir dir;
  for (const std::string& bytes : cases) {
    // CR LF, LF and a lone CR each end a line; a last line without an end counts.
    std::vector<std::string> expected(1);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      if (!IsLineEnd(bytes[i])) {
        expected.back().push_back(bytes[i]);
        continue;
      }
      expected.emplace_back();
      if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
    }
    if (expected.back().empty()) expected.pop_back();
    const std::string path = dir.Write("f.txt", bytes);
    for (std::size_t size = 16; size <= 41; ++size) {
      const std::size_t bufferSize = size == 41 ? 1u << 20 : size;
      LineReader reader(bufferSize);
      reader.Open(path);
      std::vector<std::string> lines;
      std::string_view head, piece;
      bool complete = false;
      while (reader.NextLine(head, complete)) {
        EXPECT_LE(head.size(), bufferSize);
        lines.emplace_back(head);
        while (!complete && reader.NextPiece(piece)) lines.back().append(piece);
      }
      EXPECT_EQ(lines, expected) << "buffer " << bufferSize << ": " << bytes;
    }
  }
}

TEST(LineReader, OpeningFailsWithTheClassicErrors) {
  test::TempDir dir;
  LineReader reader;
  EXPECT_EQ(test::ErrorNumberOf([&] { reader.Open(dir.File("missing.txt")); }), 53);
  EXPECT_EQ(test::ErrorNumberOf([&] { reader.Open(dir.Path()); }), 75);
  EXPECT_EQ(test::ErrorNumberOf([&] { reader.Open(dir.File("no/such/folder.txt")); }), 76);
  EXPECT_EQ(test::ErrorNumberOf([&] { reader.Open(""); }), 52);
}

struct Walk {
  std::vector<int16_t> channels;  // first sightings, in walking order
  int error = 0;
  bool decoded = false;
  int16_t last = 0;
};

// The rule as the logger's manual states it: from the last character back to
// the first, at each "." the three characters five to three places before it,
// with a "1" in front when the first is "0"; a channel outside the table, or a
// "." too near the start, stops the walk.
Walk WalkBackwards(const std::string& line) {
  Walk walk;
  for (std::size_t p = line.size(); p >= 1; --p) {
    if (line[p - 1] != '.') continue;
    if (p <= 5) {
      walk.error = err::kInvalidCall;
      return walk;
    }
    std::string field = line.substr(p - 6, 3);
    if (field[0] == '0') field = "1" + field;
    try {
      walk.last = basic::CInt(basic::Val(field));
    } catch (const RuntimeError& e) {
      walk.error = e.Number();
      return walk;
    }
    if (walk.last < 0 || walk.last > 1024) {
      walk.error = err::kSubscript;
      return walk;
    }
    walk.decoded = true;
    if (std::find(walk.channels.begin(), walk.channels.end(), walk.last) == walk.channels.end())
      walk.channels.push_back(walk.last);
  }
  return walk;
}

TEST(EntryScanner, SeesWhatTheBackwardsWalkSeesInAnyPieces) {
  std::vector<std::string> lines = {"001::   5:O.  17:O. 024:O. 000:O.", "001::   5:O.   5:O.   7:O.",
                                    "001::  9E9:O.   5:O.", "001:: 099:O.   5:O.", "1. ::   5:O.",
                                    "     .  12:O.  13:O.", "001::   8ab.  9xy.", "001:: 1.5:O. &H1:O.", ""};
  RandomTexts random{7};
  for (int i = 0; i < 300; ++i) lines.push_back(random.Text("  ..01259x:E", 60));
  EntryScanner scanner;
  for (const std::string& line : lines) {
    const Walk walk = WalkBackwards(line);
    for (std::size_t pieceSize : {1u, 2u, 5u, 7u, 1000u}) {
      scanner.Begin();
      for (std::size_t at = 0; at < line.size(); at += pieceSize)
        scanner.Feed(std::string_view(line).substr(at, pieceSize));
      scanner.End();
      EXPECT_EQ(scanner.Error(), walk.error) << '"' << line << "\" in pieces of " << pieceSize;
      EXPECT_EQ(scanner.Channels(), walk.channels) << '"' << line << "\" in pieces of " << pieceSize;
      if (walk.error == 0) {
        EXPECT_EQ(scanner.HasDecoded(), walk.decoded) << line;
        if (walk.decoded) {
          EXPECT_EQ(scanner.LastDecoded(), walk.last) << line;
        }
      }
    }
  }
}

TEST(HistoryLines, NumbersAtTheirPositionsAreValsValues) {
  for (const char* f : {"12", " 12", "12 34", "1.5", "-3", "", "abc", "007", "12e2", "12d", "5x", "\t5", "7 ", "1 .5",
                        "&H1F", "123456789012345678", "  ", "999999", ".5"})
    EXPECT_EQ(FieldValue(f), basic::Val(f)) << '"' << f << '"';
  EXPECT_EQ(DataCycleOf("Cycle # 2147483647"), 2147483647);
  EXPECT_EQ(test::ErrorNumberOf([] { DataCycleOf("Cycle # 2147483648"); }), err::kOverflow);
  EXPECT_EQ(TempCycleOf("    T ="), 1) << "nothing at position 34 is 0, plus 0.6";
  EXPECT_EQ(MechCycleOf("    M ="), 0);
}

// Short lines made of the characters the kinds look at, so every near miss of
// every kind comes up (and a few written out: the rules' own examples and a
// line one short of each kind). The rules as written: each test in turn, the
// later match winning; the occurrence number is Val of positions 1 to 3.
TEST(HistoryLines, FastReadingsAgreeWithTheRules) {
  std::vector<std::string> lines = {"Cycle #", "Cycle # 5", "Cycle ", "CYCLE # 1", "003::", "999:: 005:I.", "01::",
                                    "    T =", "    M =  2.5", "   T =", "    M", "003:", " 3::", "3  ::", "-03::",
                                    "1.5::", "&H1::", "03", ""};
  const std::string alphabet = "Cycle #:TM=039.-\xB3";
  RandomTexts random{11};
  for (int i = 0; i < 20000; ++i) {
    // Often a real prefix with one character changed.
    static const char* const prefixes[] = {"Cycle # 12", "003:: 005", "    T = 25", "    M = 1"};
    std::string line = random.Text(alphabet, 9);
    if (random.Next() % 2 == 0) {
      line = prefixes[(random.Next() >> 16) % 4];
      line[(random.Next() >> 16) % line.size()] = alphabet[(random.Next() >> 16) % alphabet.size()];
      line.resize((random.Next() >> 16) % (line.size() + 1));
    }
    lines.push_back(line);
  }
  for (const std::string& line : lines) {
    auto has = [&](std::size_t position, std::string_view text) { return line.compare(position - 1, text.size(), text) == 0; };
    HistoryLineKind kind = HistoryLineKind::Other;
    if (line.size() >= 7 && has(1, "Cycle #")) kind = HistoryLineKind::DataCycle;
    if (line.size() >= 5 && has(4, "::")) kind = HistoryLineKind::Event;
    if (line.size() >= 7 && has(5, "T =")) kind = HistoryLineKind::TempCycle;
    if (line.size() >= 7 && has(5, "M =")) kind = HistoryLineKind::MechCycle;
    ASSERT_EQ(ClassifyHistoryLine(line), kind) << '"' << line << '"';
    ASSERT_EQ(OccurrenceOf(line), basic::Val(std::string_view(line).substr(0, 3))) << '"' << line << '"';
  }
  EXPECT_TRUE(IsContinuationLine("     ."));
  EXPECT_FALSE(IsContinuationLine("    ."));
}

}  // namespace
}  // namespace tarvenix::input
