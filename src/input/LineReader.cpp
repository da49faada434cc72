#include "input/LineReader.h"

#include <algorithm>
#include <cstring>

namespace tarvenix::input {

LineReader::LineReader(std::size_t bufferSize) : buffer_(std::max<std::size_t>(bufferSize, 16)) {}

void LineReader::Open(const std::string& path) {
  Close();
  file_ = modUtils::ByteFile::OpenForReading(path);
  pos_ = end_ = 0;
  eof_ = skipLeadingLf_ = inLongLine_ = false;
  nextLf_ = nextCr_ = kUnknown;
}

void LineReader::Close() { file_.reset(); }

bool LineReader::Refill() {
  if (eof_ || !file_) return false;
  if (pos_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + pos_, end_ - pos_);
    end_ -= pos_;
    pos_ = 0;
  }
  nextLf_ = nextCr_ = kUnknown;
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

std::size_t LineReader::FindLineEnd(std::size_t from) {
  auto search = [&](char c) {
    const void* hit = std::memchr(buffer_.data() + from, c, end_ - from);
    return hit ? static_cast<std::size_t>(static_cast<const char*>(hit) - buffer_.data()) : end_;
  };
  if (nextLf_ == kUnknown || nextLf_ < from) nextLf_ = search('\n');
  if (nextCr_ == kUnknown || nextCr_ < from) nextCr_ = search('\r');
  return std::min(nextLf_, nextCr_);
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
  std::string_view rest;
  while (NextPiece(rest)) {
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
