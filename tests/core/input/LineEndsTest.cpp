#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "input/LineEnds.h"

namespace tarvenix::input {
namespace {

// One test per byte: what the masks must say.
std::vector<uint64_t> ExpectedMasks(const std::string& text) {
  std::vector<uint64_t> masks((text.size() + kLineEndBlock - 1) / kLineEndBlock, 0);
  for (std::size_t i = 0; i < text.size(); ++i)
    if (text[i] == '\r' || text[i] == '\n') masks[i / kLineEndBlock] |= uint64_t{1} << (i % kLineEndBlock);
  return masks;
}

std::string RandomText(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  std::string text(size, '\0');
  for (char& c : text) c = static_cast<char>(random() & 0xFF);
  return text;
}

// The masks from `mark` for `text` placed `offset` bytes into a buffer whose
// bytes past the text are all line ends, so marks past the end would show.
std::vector<uint64_t> Marked(void (*mark)(const char*, std::size_t, uint64_t*), const std::string& text,
                             std::size_t offset) {
  std::string buffer(offset, 'x');
  buffer += text;
  buffer.append(kLineEndBlock, '\n');
  std::vector<uint64_t> masks((text.size() + kLineEndBlock - 1) / kLineEndBlock + 1, 0xA5A5A5A5A5A5A5A5ull);
  mark(buffer.data() + offset, text.size(), masks.data());
  masks.pop_back();  // one past the last block: never written
  return masks;
}

TEST(LineEnds, EveryWayMarksExactlyTheCrAndLfBytes) {
  // Bytes one bit away from CR and LF, and with the high bit set, catch
  // comparisons done on the wrong bits or with the wrong signedness.
  const char kNearMisses[] = "\x0a\x0d\x8a\x8d\x0b\x0c\x0e\x09\x2a\x2d\xff\x00\x80\x7f\x1a\x1d";
  const std::string nearMisses(kNearMisses, sizeof kNearMisses - 1);
  struct Case {
    const char* name;
    std::string text;
  };
  std::vector<Case> cases = {
      {"empty", ""},
      {"one LF", "\n"},
      {"all line ends", std::string(200, '\r')},
      {"CR LF across a block boundary", std::string(63, 'a') + "\r\n" + std::string(70, 'b')},
      {"line end in the last byte of a block", std::string(63, 'a') + "\n"},
      {"line end in the first byte of a block", std::string(64, 'a') + "\r" + "b"},
      {"near misses", nearMisses + nearMisses + nearMisses + nearMisses + "\n"},
      {"no line end at all", std::string(130, 'z')},
      {"history lines", "Cycle # 12\r\n003:: 005:I. 007:I.\r\n     . 009:I.\r\n    T =  125.0 C  Cycle count:   4.00\r\n"},
      {"random bytes", RandomText(1000, 1)},
      {"random bytes, odd size", RandomText(4097, 2)},
  };
  // Every size up to three blocks.
  const std::string random = RandomText(3 * kLineEndBlock, 3);
  for (std::size_t size = 0; size <= random.size(); ++size) cases.push_back({"random bytes, sized", random.substr(0, size)});
  for (const Case& c : cases) {
    const std::vector<uint64_t> expected = ExpectedMasks(c.text);
    for (std::size_t offset : {0, 1, 7, 33}) {
      const std::string where = c.name + (", size " + std::to_string(c.text.size())) + ", offset " + std::to_string(offset);
      EXPECT_EQ(Marked(MarkLineEnds, c.text, offset), expected) << where;
      EXPECT_EQ(Marked(MarkLineEndsPortable, c.text, offset), expected) << where;
    }
  }
}

}  // namespace
}  // namespace tarvenix::input
