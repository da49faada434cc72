#include "input/HistoryLines.h"

#include <algorithm>
#include <cstring>

#include "base/Basic.h"
#include "base/RuntimeError.h"

namespace tarvenix::input {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Everything from `position` (from 1) to the end, as Mid does.
std::string_view From(std::string_view line, std::size_t position) {
  return line.size() >= position ? line.substr(position - 1) : std::string_view();
}

// A character after which Val certainly reads no more of a number.
bool EndsNumber(char c) {
  return !(IsDigit(c) || c == ' ' || c == '\t' || c == '\n' || c == '.' || c == 'e' || c == 'E' || c == 'd' ||
           c == 'D');
}

}  // namespace

double FieldValue(std::string_view field) {
  std::size_t i = 0;
  while (i < field.size() && field[i] == ' ') ++i;
  uint64_t value = 0;
  std::size_t digits = 0;
  // Up to 15 digits a double holds exactly; anything longer goes to Val.
  for (; i < field.size() && IsDigit(field[i]) && digits < 15; ++i, ++digits)
    value = value * 10 + static_cast<uint64_t>(field[i] - '0');
  if (digits > 0 && (i == field.size() || EndsNumber(field[i]))) return static_cast<double>(value);
  return basic::Val(field);
}

int32_t DataCycleOf(std::string_view line) { return basic::CLng(FieldValue(From(line, 9))); }
int32_t TempCycleOf(std::string_view line) { return basic::CLng(FieldValue(From(line, 34)) + 0.6); }
int32_t MechCycleOf(std::string_view line) { return basic::CLng(FieldValue(From(line, 37))); }
double OccurrenceFieldOf(std::string_view line) { return FieldValue(line.substr(0, 3)); }

int DecodeChannel(char c1, char c2, char c3, int16_t& channel) {
  if (c1 == '0' && IsDigit(c2) && IsDigit(c3)) {
    channel = static_cast<int16_t>(1000 + (c2 - '0') * 10 + (c3 - '0'));
    return 0;
  }
  char text[4] = {'1', c1, c2, c3};
  // The "1" goes in front only when the first character is "0".
  std::string_view field = c1 == '0' ? std::string_view(text, 4) : std::string_view(text + 1, 3);
  try {
    channel = basic::CInt(FieldValue(field));
  } catch (const RuntimeError& e) {
    return e.Number();
  }
  return 0;
}

EntryScanner::EntryScanner() : rightmost_(kMaxChannel + 1, 0), seenIn_(kMaxChannel + 1, 0) {
  order_.reserve(kMaxChannel + 1);
}

void EntryScanner::Begin() {
  fed_ = 0;
  ++generation_;
  order_.clear();
  repeated_ = false;
  error_ = 0;
  hasDecoded_ = false;
}

void EntryScanner::Entry(uint64_t dotPosition, char c1, char c2, char c3) {
  int error = 0;
  int16_t channel = 0;
  if (dotPosition <= 5) {
    error = err::kInvalidCall;  // the channel would start before the line does
  } else {
    error = DecodeChannel(c1, c2, c3, channel);
    if (error == 0 && (channel < 0 || channel > kMaxChannel)) error = err::kSubscript;
  }
  if (error != 0) {
    // The backwards walk stops here; nothing to the left is ever reached.
    error_ = error;
    ++generation_;
    order_.clear();
    repeated_ = false;
    return;
  }
  if (!hasDecoded_) {
    hasDecoded_ = true;
    lastDecoded_ = channel;
  }
  const auto slot = static_cast<std::size_t>(channel);
  if (seenIn_[slot] != generation_) {
    seenIn_[slot] = generation_;
    order_.push_back(channel);
  } else {
    repeated_ = true;
  }
  rightmost_[slot] = dotPosition;
}

void EntryScanner::Feed(std::string_view piece) {
  const char* data = piece.data();
  const std::size_t size = piece.size();
  // The byte at line position `position`, from this piece or the tail of the last.
  auto byteAt = [&](uint64_t position) {
    return position > fed_ ? data[position - fed_ - 1] : tail_[4 - (fed_ - position)];
  };
  for (std::size_t i = 0; i < size;) {
    const void* hit = std::memchr(data + i, '.', size - i);
    if (!hit) break;
    i = static_cast<std::size_t>(static_cast<const char*>(hit) - data);
    const uint64_t dot = fed_ + i + 1;
    if (dot <= 5) {
      Entry(dot, 0, 0, 0);
    } else {
      Entry(dot, byteAt(dot - 5), byteAt(dot - 4), byteAt(dot - 3));
    }
    ++i;
  }
  if (size >= 5) {
    std::memcpy(tail_, data + size - 5, 5);
  } else {
    std::memmove(tail_, tail_ + size, 5 - size);
    std::memcpy(tail_ + 5 - size, data, size);
  }
  fed_ += size;
}

void EntryScanner::End() {
  // With every channel named once, the entries were met left to right, so the
  // backwards walk's order is theirs reversed.
  if (!repeated_) {
    std::reverse(order_.begin(), order_.end());
    return;
  }
  std::sort(order_.begin(), order_.end(), [&](int16_t a, int16_t b) {
    return rightmost_[static_cast<std::size_t>(a)] > rightmost_[static_cast<std::size_t>(b)];
  });
}

}  // namespace tarvenix::input
