#pragma once
// Arrays with fixed index ranges, as the session's tables are declared
// (data sets 0..5, channels 0..1024, events 1..1024). An index outside the range
// is run-time error 9 (Subscript out of range), never undefined behaviour.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/RuntimeError.h"

namespace tarvenix {

// A boolean stored in 16 bits, true being all bits set (-1), as the session
// keeps its flags.
class Bool16 {
 public:
  constexpr Bool16() = default;
  constexpr Bool16(bool b) : raw_(b ? int16_t{-1} : int16_t{0}) {}  // NOLINT(google-explicit-constructor)
  static constexpr Bool16 FromRaw(int16_t raw) {
    Bool16 b;
    b.raw_ = raw;
    return b;
  }
  constexpr explicit operator bool() const { return raw_ != 0; }
  constexpr int16_t Raw() const { return raw_; }
  friend constexpr bool operator==(Bool16 a, Bool16 b) { return (a.raw_ != 0) == (b.raw_ != 0); }

 private:
  int16_t raw_ = 0;
};

template <typename T, int Lo, int Hi>
class Indexed {
  static_assert(Lo <= Hi);

 public:
  static constexpr int kLow = Lo;
  static constexpr int kHigh = Hi;

  Indexed() : items_(static_cast<std::size_t>(Hi - Lo + 1)) {}

  T& operator()(long long i) { return items_[Slot(i)]; }
  const T& operator()(long long i) const { return items_[Slot(i)]; }

  // Every element back to its empty value.
  void Clear() { items_.assign(items_.size(), T{}); }

 private:
  static std::size_t Slot(long long i) {
    if (i < Lo || i > Hi) Raise(err::kSubscript);
    return static_cast<std::size_t>(i - Lo);
  }
  std::vector<T> items_;
};

template <typename T, int Lo1, int Hi1, int Lo2, int Hi2>
class Indexed2 {
  static_assert(Lo1 <= Hi1 && Lo2 <= Hi2);

 public:
  Indexed2() : items_(static_cast<std::size_t>(Hi1 - Lo1 + 1) * kWidth) {}

  T& operator()(long long i, long long j) { return items_[Slot(i, j)]; }
  const T& operator()(long long i, long long j) const { return items_[Slot(i, j)]; }

  void Clear() { items_.assign(items_.size(), T{}); }
  // Every element of row i back to its empty value.
  void ClearRow(long long i) {
    std::size_t first = Slot(i, Lo2);
    for (std::size_t k = 0; k < kWidth; ++k) items_[first + k] = T{};
  }

 private:
  static constexpr std::size_t kWidth = static_cast<std::size_t>(Hi2 - Lo2 + 1);
  static std::size_t Slot(long long i, long long j) {
    if (i < Lo1 || i > Hi1 || j < Lo2 || j > Hi2) Raise(err::kSubscript);
    return static_cast<std::size_t>(i - Lo1) * kWidth + static_cast<std::size_t>(j - Lo2);
  }
  std::vector<T> items_;
};

}  // namespace tarvenix
