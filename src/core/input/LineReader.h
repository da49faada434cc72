#pragma once
// The lines of a large text file, handed out without copying: the file is read
// in large blocks into one buffer that is reused for the whole file, so memory
// does not grow with the file and nothing is allocated per line. CR LF, LF and a
// lone CR each end a line. A line longer than the buffer comes as its head (the
// first buffer-full of bytes) followed by pieces, so even a line of hundreds of
// megabytes needs no more than the buffer.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "session/FileUtils.h"
#include "input/LineEnds.h"

namespace tarvenix::input {

class LineReader {
 public:
  static constexpr std::size_t kDefaultBufferSize = std::size_t{1} << 20;

  explicit LineReader(std::size_t bufferSize = kDefaultBufferSize);

  // Raises the classic open errors (53, 75, 76 ...).
  void Open(const std::string& path);
  void Close();

  // The next line without its line end: its first bytes (all of it when
  // `complete`, else the first buffer-full). False at the end of the file. The
  // view stays valid until the next call. Parts of a long line the caller did
  // not ask for with NextPiece are skipped.
  // Every line of a file passes here, so the common case, a whole line in
  // the data held, is inline; the rest goes to NextLineSlow.
  bool NextLine(std::string_view& head, bool& complete) {
    if (!inLongLine_ && pos_ < end_) {
      const std::size_t lineEnd = FindLineEnd(pos_);
      if (lineEnd < end_) {
        head = std::string_view(buffer_.data() + pos_, lineEnd - pos_);
        complete = true;
        ConsumeLineEnd(lineEnd);
        return true;
      }
    }
    return NextLineSlow(head, complete);
  }
  // After an incomplete head: the next piece of the same line; false once the
  // line has ended.
  bool NextPiece(std::string_view& piece);

 private:
  // Reads more of the file behind the data held; false at the end of the file.
  bool Refill();
  bool NextLineSlow(std::string_view& head, bool& complete);

  // Index of the first CR or LF at or after `from` in the data held, or end_.
  // The masks were made when the block was read, so for most lines this is
  // one look at a word.
  std::size_t FindLineEnd(std::size_t from) const {
    std::size_t block = from / kLineEndBlock;
    uint64_t ends = lineEnds_[block] & (~uint64_t{0} << (from % kLineEndBlock));
    while (ends == 0) {
      if (++block * kLineEndBlock >= end_) return end_;
      ends = lineEnds_[block];
    }
    return block * kLineEndBlock + static_cast<std::size_t>(std::countr_zero(ends));
  }

  // Steps over the line end at `at`; a CR that ends the data held may be the
  // first half of a CR LF whose LF comes with the next block.
  void ConsumeLineEnd(std::size_t at) {
    pos_ = at + 1;
    if (buffer_[at] != '\r') return;
    if (pos_ < end_) {
      if (buffer_[pos_] == '\n') ++pos_;
    } else {
      skipLeadingLf_ = true;
    }
  }

  std::unique_ptr<modUtils::ByteFile> file_;
  std::size_t capacity_;      // bytes the buffer holds
  std::vector<char> buffer_;  // capacity_ bytes and a last block's worth more, never read from the file
  // Where the line ends stand in the data held: bit i of element k is set when
  // byte 64k + i is a CR or an LF. Made for each block read, in one sweep.
  std::vector<uint64_t> lineEnds_;
  std::size_t pos_ = 0;  // first byte not handed out
  std::size_t end_ = 0;  // end of the data held
  bool eof_ = false;
  bool skipLeadingLf_ = false;  // the previous block ended in CR
  bool inLongLine_ = false;     // a long line's rest is still unread
};

}  // namespace tarvenix::input
