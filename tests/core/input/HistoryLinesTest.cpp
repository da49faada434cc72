#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Basic.h"
#include "base/RuntimeError.h"
#include "input/HistoryLines.h"
#include "support/ErrorNumber.h"

namespace tarvenix::input {
namespace {

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
    int16_t channel = 0;
    try {
      channel = basic::CInt(basic::Val(field));
    } catch (const RuntimeError& e) {
      walk.error = e.Number();
      return walk;
    }
    if (channel < 0 || channel > 1024) {
      walk.error = err::kSubscript;
      return walk;
    }
    walk.decoded = true;
    walk.last = channel;
    if (std::find(walk.channels.begin(), walk.channels.end(), channel) == walk.channels.end())
      walk.channels.push_back(channel);
  }
  return walk;
}

TEST(EntryScanner, SeesWhatTheBackwardsWalkSeesInAnyPieces) {
  const std::string fixed[] = {
      "001::   5:O.  17:O. 024:O. 000:O.",
      "001::   5:O.   5:O.   7:O.",
      "001::  9E9:O.   5:O.",
      "001:: 099:O.   5:O.",
      "1. ::   5:O.",
      "     .  12:O.  13:O.",
      "001::   8ab.  9xy.",
      "001:: 1.5:O. &H1:O.",
      "",
      "no entries here",
  };
  std::vector<std::string> lines(std::begin(fixed), std::end(fixed));
  uint32_t state = 7;
  auto next = [&] { return state = state * 1664525u + 1013904223u; };
  const char alphabet[] = {' ', ' ', '.', '.', '0', '1', '2', '5', '9', 'x', ':', 'E'};
  for (int i = 0; i < 300; ++i) {
    std::string line;
    const std::size_t length = next() % 60;
    for (std::size_t k = 0; k < length; ++k) line.push_back(alphabet[(next() >> 16) % sizeof alphabet]);
    lines.push_back(line);
  }

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

TEST(HistoryLines, FieldValuesAreValsValues) {
  const char* fields[] = {"12",   " 12",    "12 34", "1.5", "-3",  "",    "abc",     "007",
                          "12e2", "12d",    "5x",    "\t5", "7 ", "1 .5", "&H1F",  "123456789012345678",
                          "  ",   "999999", ".5"};
  for (const char* f : fields) EXPECT_EQ(FieldValue(f), basic::Val(f)) << '"' << f << '"';
}

TEST(HistoryLines, NumbersAtTheirPositions) {
  EXPECT_EQ(DataCycleOf("Cycle #"), 0);
  EXPECT_EQ(DataCycleOf("Cycle # 2147483647"), 2147483647);
  EXPECT_EQ(test::ErrorNumberOf([] { DataCycleOf("Cycle # 2147483648"); }), err::kOverflow);
  EXPECT_EQ(TempCycleOf("    T ="), 1) << "nothing at position 34 is 0, plus 0.6";
  EXPECT_EQ(MechCycleOf("    M ="), 0);
  EXPECT_TRUE(IsContinuationLine("     ."));
  EXPECT_FALSE(IsContinuationLine("    ."));
}

// The rules as written: each test in turn, the later match winning.
HistoryLineKind ReferenceKind(std::string_view line) {
  auto has = [&](std::size_t position, std::string_view text) {
    return line.size() >= position - 1 + text.size() && line.substr(position - 1, text.size()) == text;
  };
  HistoryLineKind kind = HistoryLineKind::Other;
  if (has(1, "Cycle #")) kind = HistoryLineKind::DataCycle;
  if (has(4, "::")) kind = HistoryLineKind::Event;
  if (has(5, "T =")) kind = HistoryLineKind::TempCycle;
  if (has(5, "M =")) kind = HistoryLineKind::MechCycle;
  return kind;
}

// Short lines made of the characters the tests look at, so every near miss
// of every kind comes up (and a few written out: the rules' own examples and
// a line one short of each kind): the fast classifier and occurrence reading
// must agree with the rules on all of them.
TEST(HistoryLines, FastReadingsAgreeWithTheRules) {
  const char alphabet[] = {'C', 'y', 'c', 'l', 'e', ' ', '#', ':', 'T', 'M', '=', '0', '3', '9', '.', '-', '\xB3'};
  uint32_t state = 11;
  auto next = [&] { return state = state * 1664525u + 1013904223u; };
  std::vector<std::string> lines = {"Cycle #", "Cycle # 5", "Cycle ", "CYCLE # 1", "003::", "999:: 005:I.", "01::",
                                    "    T =", "    M =  2.5", "   T =", "    M", "003:", " 3::", "3  ::", "-03::",
                                    "1.5::", "&H1::", "03", ""};
  for (int i = 0; i < 20000; ++i) {
    std::string line;
    const std::size_t length = next() % 10;
    for (std::size_t k = 0; k < length; ++k) line.push_back(alphabet[(next() >> 16) % sizeof alphabet]);
    // Often a real prefix with one character changed.
    if (next() % 2 == 0) {
      static const char* const prefixes[] = {"Cycle # 12", "003:: 005", "    T = 25", "    M = 1"};
      line = prefixes[(next() >> 16) % 4];
      line[(next() >> 16) % line.size()] = alphabet[(next() >> 16) % sizeof alphabet];
      line.resize((next() >> 16) % (line.size() + 1));
    }
    lines.push_back(line);
  }
  for (const std::string& line : lines) {
    ASSERT_EQ(ClassifyHistoryLine(line), ReferenceKind(line)) << '"' << line << '"';
    ASSERT_EQ(OccurrenceOf(line), basic::Val(std::string_view(line).substr(0, 3))) << '"' << line << '"';
  }
}

}  // namespace
}  // namespace tarvenix::input
