#include "input/LineReader.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace tarvenix::input {

LineReader::LineReader(std::size_t bufferSize)
    : capacity_(std::max<std::size_t>(bufferSize, 16)),
      buffer_(capacity_ + kLineEndBlock, '\0'),
      lineEnds_(capacity_ / kLineEndBlock + 1, 0) {}

void LineReader::Open(const std::string& path) {
  Close();
  file_ = modUtils::ByteFile::OpenForReading(path);
  pos_ = end_ = 0;
  eof_ = skipLeadingLf_ = inLongLine_ = false;
}

void LineReader::Close() { file_.reset(); }

bool LineReader::Refill() {
  if (eof_ || !file_) return false;
  std::size_t unchanged = end_;  // bytes whose line ends are already marked
  if (pos_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + pos_, end_ - pos_);
    end_ -= pos_;
    pos_ = 0;
    unchanged = 0;
  }
  std::size_t n = file_->Read(buffer_.data() + end_, capacity_ - end_);
  if (n == 0) {
    eof_ = true;
    return false;
  }
  if (skipLeadingLf_) {
    skipLeadingLf_ = false;
    if (pos_ == end_ && buffer_[end_] == '\n') ++pos_;
  }
  end_ += n;
  const std::size_t firstBlock = unchanged / kLineEndBlock;
  MarkLineEnds(buffer_.data() + firstBlock * kLineEndBlock, end_ - firstBlock * kLineEndBlock,
               lineEnds_.data() + firstBlock);
  return true;
}

bool LineReader::NextLineSlow(std::string_view& head, bool& complete) {
  if (inLongLine_) {
    std::string_view rest;
    while (NextPiece(rest)) {
    }
  }
  for (;;) {
    std::size_t lineEnd = pos_ < end_ ? FindLineEnd(pos_) : end_;
    if (lineEnd < end_) {
      head = std::string_view(buffer_.data() + pos_, lineEnd - pos_);
      complete = true;
      ConsumeLineEnd(lineEnd);
      return true;
    }
    if (end_ - pos_ == capacity_) {
      // One line fills the whole buffer: hand out its head, the rest follows in pieces.
      head = std::string_view(buffer_.data() + pos_, end_ - pos_);
      complete = false;
      inLongLine_ = true;
      pos_ = end_;
      return true;
    }
    if (!Refill()) {
      if (pos_ == end_) return false;
      // The last line has no line end.
      head = std::string_view(buffer_.data() + pos_, end_ - pos_);
      complete = true;
      pos_ = end_;
      return true;
    }
  }
}

bool LineReader::NextPiece(std::string_view& piece) {
  while (inLongLine_) {
    if (pos_ < end_) {
      std::size_t lineEnd = FindLineEnd(pos_);
      if (lineEnd < end_) {
        piece = std::string_view(buffer_.data() + pos_, lineEnd - pos_);
        ConsumeLineEnd(lineEnd);
        inLongLine_ = false;
        return true;
      }
      piece = std::string_view(buffer_.data() + pos_, end_ - pos_);
      pos_ = end_;
      return true;
    }
    if (!Refill()) inLongLine_ = false;
  }
  return false;
}

}  // namespace tarvenix::input
