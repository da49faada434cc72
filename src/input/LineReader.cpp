#include "input/LineReader.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace tarvenix::input {

LineReader::LineReader(std::size_t bufferSize) : buffer_(std::max<std::size_t>(bufferSize, 16)) {}

void LineReader::Open(const std::string& path) {
  Close();
  file_ = modUtils::ByteFile::OpenForReading(path);
  pos_ = end_ = 0;
  eof_ = skipLeadingLf_ = inLongLine_ = false;
}

void LineReader::Close() { file_.reset(); }

bool LineReader::Refill() {
  if (eof_ || !file_) return false;
  if (pos_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + pos_, end_ - pos_);
    end_ -= pos_;
    pos_ = 0;
  }
  std::size_t n = file_->Read(buffer_.data() + end_, buffer_.size() - end_);
  if (n == 0) {
    eof_ = true;
    return false;
  }
  if (skipLeadingLf_) {
    skipLeadingLf_ = false;
    if (pos_ == end_ && buffer_[end_] == '\n') ++pos_;
  }
  end_ += n;
  return true;
}

namespace {

// Whether any of the eight bytes of `word` is a CR or an LF (the classic test
// for a zero byte, applied to the word xor each line end).
bool HasLineEnd(uint64_t word) {
  constexpr uint64_t kOnes = 0x0101010101010101ull;
  constexpr uint64_t kHighs = 0x8080808080808080ull;
  const uint64_t lf = word ^ (kOnes * '\n');
  const uint64_t cr = word ^ (kOnes * '\r');
  return ((((lf - kOnes) & ~lf) | ((cr - kOnes) & ~cr)) & kHighs) != 0;
}

}  // namespace

// Lines are short, so one pass looking for both ends a word at a time beats
// two library searches per line.
std::size_t LineReader::FindLineEnd(std::size_t from) {
  const char* data = buffer_.data();
  std::size_t i = from;
  for (; i + 8 <= end_; i += 8) {
    uint64_t word;
    std::memcpy(&word, data + i, 8);
    if (HasLineEnd(word)) break;
  }
  for (; i < end_; ++i)
    if (data[i] == '\n' || data[i] == '\r') return i;
  return end_;
}

void LineReader::ConsumeLineEnd(std::size_t at) {
  pos_ = at + 1;
  if (buffer_[at] != '\r') return;
  if (pos_ < end_) {
    if (buffer_[pos_] == '\n') ++pos_;
  } else {
    skipLeadingLf_ = true;
  }
}

bool LineReader::NextLine(std::string_view& head, bool& complete) {
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
    if (end_ - pos_ == buffer_.size()) {
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
