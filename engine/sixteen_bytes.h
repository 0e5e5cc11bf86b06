#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) && !defined(MERIVANE_PORTABLE)
#define MERIVANE_SSE2
#include <immintrin.h>
#endif

namespace merivane {

/// Sixteen bytes that are worked on at once: what keys and line ends are found with. There is a version for
/// every processor and one for those with SSE2; both give the same results, and SixteenBytes is the one that
/// this build works with.
class PortableSixteenBytes {
 public:
  static constexpr ptrdiff_t kSize = 16;
  static constexpr uint32_t kBase = 127;

  /// Reads them from `from` on.
  explicit PortableSixteenBytes(const char* from) {
    for (int i = 0; i < kSize; ++i) {
      const uint64_t byte = static_cast<uint8_t>(from[i]);
      words_[i / 8] |= byte << (8 * (i % 8));
    }
  }

  /// The same with all but the last `count` bytes zero; `count` is 1 to 15.
  PortableSixteenBytes last(ptrdiff_t count) const {
    PortableSixteenBytes kept = *this;
    const int64_t dropped = 8 * (kSize - count);  // bits
    if (dropped >= 64) kept.words_[0] = 0;
    kept.words_[dropped / 64] &= ~uint64_t{0} << (dropped % 64);
    return kept;
  }

  /// A bit for each byte that is `c`, the first byte's the lowest.
  uint32_t equalTo(char c) const {
    uint32_t bits = 0;
    for (int i = 0; i < 2; ++i) {
      constexpr uint64_t low = 0x7F7F7F7F7F7F7F7F;
      const uint64_t word = words_[i] ^ (static_cast<uint8_t>(c) * uint64_t{0x0101010101010101});
      // The top bit of every byte that is zero, without a carry from one byte into another; then all top bits
      // side by side.
      const uint64_t zero = ~(((word & low) + low) | word | low);
      bits |= static_cast<uint32_t>(((zero >> 7) * 0x0102040810204080) >> 56) << (8 * i);
    }
    return bits;
  }

  /// The polynomial to kBase over the bytes as signed values, modulo 2^32; the last byte counts once.
  uint32_t polynomial() const {
    uint32_t fours[4] = {};
    for (int i = 0; i < kSize; ++i) {
      const auto value = static_cast<int8_t>(words_[i / 8] >> (8 * (i % 8)));
      fours[i / 4] = fours[i / 4] * kBase + static_cast<uint32_t>(int32_t{value});
    }
    constexpr uint32_t base4 = kBase * kBase * kBase * kBase;
    return ((fours[0] * base4 + fours[1]) * base4 + fours[2]) * base4 + fours[3];
  }

 private:
  uint64_t words_[2] = {};  // the first byte is the lowest
};

#ifdef MERIVANE_SSE2

class Sse2SixteenBytes {
 public:
  static constexpr ptrdiff_t kSize = PortableSixteenBytes::kSize;
  static constexpr uint32_t kBase = PortableSixteenBytes::kBase;

  explicit Sse2SixteenBytes(const char* from) : bytes_(load(from)) {}

  Sse2SixteenBytes last(ptrdiff_t count) const {
    alignas(__m128i) static constexpr int8_t mask[2 * kSize] = {
        0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  //
        -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1,
    };
    return Sse2SixteenBytes(_mm_and_si128(bytes_, load(mask + count)));
  }

  uint32_t equalTo(char c) const {
    return static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(c))));
  }

  /// First of pairs of bytes, then of pairs of these, side by side; no sum leaves its lane.
  uint32_t polynomial() const {
    const __m128i zero = _mm_setzero_si128();
    const __m128i ofPairs = _mm_set1_epi32(1 << 16 | kBase);
    const __m128i ofFours = _mm_set1_epi32(1 << 16 | kBase * kBase);
    const __m128i low = _mm_srai_epi16(_mm_unpacklo_epi8(zero, bytes_), 8);
    const __m128i high = _mm_srai_epi16(_mm_unpackhi_epi8(zero, bytes_), 8);
    const __m128i pairs = _mm_packs_epi32(_mm_madd_epi16(low, ofPairs), _mm_madd_epi16(high, ofPairs));
    alignas(__m128i) uint32_t fours[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(fours), _mm_madd_epi16(pairs, ofFours));
    constexpr uint32_t base4 = kBase * kBase * kBase * kBase;
    return fours[0] * (base4 * base4 * base4) + fours[1] * (base4 * base4) + fours[2] * base4 + fours[3];
  }

 private:
  explicit Sse2SixteenBytes(__m128i bytes) : bytes_(bytes) {}
  static __m128i load(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }

  __m128i bytes_;
};

using SixteenBytes = Sse2SixteenBytes;
#else
using SixteenBytes = PortableSixteenBytes;
#endif

}  // namespace merivane
