#pragma once
// Where the line ends (CR and LF) stand in a block of text, as bit masks: bit i
// of mask k is set when byte 64k + i is a CR or an LF. Made in one sweep over a
// freshly read block with the widest vector instructions the processor has,
// the masks let a reader find the end of each short line with one look at a
// word instead of a test per byte.

#include <cstddef>
#include <cstdint>

namespace tarvenix::input {

inline constexpr std::size_t kLineEndBlock = 64;

// Fills masks[0 .. (size + 63) / 64 - 1] for data[0 .. size-1]. Bits for bytes
// at and past `size` are left clear, but the whole last block of 64 bytes is
// read: the caller's buffer must reach that far.
void MarkLineEnds(const char* data, std::size_t size, uint64_t* masks);

// The same with plain 64-bit arithmetic, as processors without vector
// instructions run it; here so tests can hold every way against each other.
void MarkLineEndsPortable(const char* data, std::size_t size, uint64_t* masks);

}  // namespace tarvenix::input
