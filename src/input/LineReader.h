#pragma once
// The lines of a large text file, handed out without copying: the file is read
// in large blocks into one buffer that is reused for the whole file, so memory
// does not grow with the file and nothing is allocated per line. CR LF, LF and a
// lone CR each end a line. A line longer than the buffer comes as its head (the
// first buffer-full of bytes) followed by pieces, so even a line of hundreds of
// megabytes needs no more than the buffer.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/FileUtils.h"

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
  bool NextLine(std::string_view& head, bool& complete);
  // After an incomplete head: the next piece of the same line; false once the
  // line has ended.
  bool NextPiece(std::string_view& piece);

 private:
  // Reads more of the file behind the data held; false at the end of the file.
  bool Refill();
  // Index of the first CR or LF at or after `from` in the data held, or end_.
  std::size_t FindLineEnd(std::size_t from);
  // Steps over the line end at `at`; a CR that ends the data held may be the
  // first half of a CR LF whose LF comes with the next block.
  void ConsumeLineEnd(std::size_t at);

  std::unique_ptr<modUtils::ByteFile> file_;
  std::vector<char> buffer_;
  std::size_t pos_ = 0;  // first byte not handed out
  std::size_t end_ = 0;  // end of the data held
  bool eof_ = false;
  bool skipLeadingLf_ = false;  // the previous block ended in CR
  bool inLongLine_ = false;     // a long line's rest is still unread
};

}  // namespace tarvenix::input
