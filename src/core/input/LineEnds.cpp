#include "input/LineEnds.h"

#if defined(__SSE2__) || defined(_M_X64) || defined(_M_AMD64)
#define TARVENIX_SSE2 1
#include <emmintrin.h>
#endif
#if defined(TARVENIX_SSE2) && (defined(__GNUC__) || defined(__clang__))
// AVX2 is chosen at run time, so the program still runs on older processors.
#define TARVENIX_AVX2_AT_RUN_TIME 1
#include <immintrin.h>
#endif

namespace tarvenix::input {
namespace {

uint64_t BlockMaskPortable(const char* p) {
  constexpr uint64_t kOnes = 0x0101010101010101ull;
  constexpr uint64_t kLows = 0x7F7F7F7F7F7F7F7Full;
  // 0x80 in each byte of `word` that is zero, and nowhere else: no borrow runs
  // from one byte into the next.
  auto zeroBytes = [](uint64_t word) { return ~(((word & kLows) + kLows) | word | kLows); };
  uint64_t mask = 0;
  for (int k = 0; k < 8; ++k) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(p + 8 * k);
    uint64_t word = 0;
    for (int i = 7; i >= 0; --i) word = word << 8 | bytes[i];  // byte i in bits 8i..8i+7 on any processor
    const uint64_t highs = zeroBytes(word ^ (kOnes * '\n')) | zeroBytes(word ^ (kOnes * '\r'));
    // The eight high bits gathered into one byte, byte 0 lowest.
    mask |= (((highs >> 7) * 0x0102040810204080ull) >> 56) << (8 * k);
  }
  return mask;
}

#ifdef TARVENIX_SSE2
uint64_t BlockMaskSse2(const char* p) {
  const __m128i lf = _mm_set1_epi8('\n');
  const __m128i cr = _mm_set1_epi8('\r');
  uint64_t mask = 0;
  for (int k = 0; k < 4; ++k) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * k));
    const __m128i hits = _mm_or_si128(_mm_cmpeq_epi8(v, lf), _mm_cmpeq_epi8(v, cr));
    mask |= static_cast<uint64_t>(static_cast<uint32_t>(_mm_movemask_epi8(hits))) << (16 * k);
  }
  return mask;
}
#endif

#ifdef TARVENIX_AVX2_AT_RUN_TIME
__attribute__((target("avx2"))) void MarkLineEndsAvx2(const char* data, std::size_t blocks, uint64_t* masks) {
  const __m256i lf = _mm256_set1_epi8('\n');
  const __m256i cr = _mm256_set1_epi8('\r');
  for (std::size_t b = 0; b < blocks; ++b) {
    const char* p = data + b * kLineEndBlock;
    const __m256i lo = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    const __m256i hi = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 32));
    const auto low = static_cast<uint32_t>(
        _mm256_movemask_epi8(_mm256_or_si256(_mm256_cmpeq_epi8(lo, lf), _mm256_cmpeq_epi8(lo, cr))));
    const auto high = static_cast<uint32_t>(
        _mm256_movemask_epi8(_mm256_or_si256(_mm256_cmpeq_epi8(hi, lf), _mm256_cmpeq_epi8(hi, cr))));
    masks[b] = static_cast<uint64_t>(high) << 32 | low;
  }
}

bool HasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
}
#endif

// Every block, then the bits past the data cleared.
template <uint64_t (*BlockMask)(const char*)>
void MarkWith(const char* data, std::size_t blocks, uint64_t* masks) {
  for (std::size_t b = 0; b < blocks; ++b) masks[b] = BlockMask(data + b * kLineEndBlock);
}

void ClearPastEnd(std::size_t size, std::size_t blocks, uint64_t* masks) {
  if (const std::size_t used = size % kLineEndBlock; used != 0) masks[blocks - 1] &= (uint64_t{1} << used) - 1;
}

}  // namespace

void MarkLineEnds(const char* data, std::size_t size, uint64_t* masks) {
  const std::size_t blocks = (size + kLineEndBlock - 1) / kLineEndBlock;
#if defined(TARVENIX_AVX2_AT_RUN_TIME)
  if (HasAvx2()) {
    MarkLineEndsAvx2(data, blocks, masks);
  } else {
    MarkWith<BlockMaskSse2>(data, blocks, masks);
  }
#elif defined(TARVENIX_SSE2)
  MarkWith<BlockMaskSse2>(data, blocks, masks);
#else
  MarkWith<BlockMaskPortable>(data, blocks, masks);
#endif
  ClearPastEnd(size, blocks, masks);
}

void MarkLineEndsPortable(const char* data, std::size_t size, uint64_t* masks) {
  const std::size_t blocks = (size + kLineEndBlock - 1) / kLineEndBlock;
  MarkWith<BlockMaskPortable>(data, blocks, masks);
  ClearPastEnd(size, blocks, masks);
}

}  // namespace tarvenix::input
