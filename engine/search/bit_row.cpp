#include "engine/search/bit_row.h"

#include <bit>

#if (defined(__x86_64__) || defined(__i386__)) && !defined(MERIVANE_PORTABLE)
#define MERIVANE_AVX2
#include <immintrin.h>
#endif

namespace merivane {
#ifdef MERIVANE_AVX2
namespace {

/// For every set of words of a block that get a carry, what to add to its four words.
struct Increments {
  alignas(32) BitBlock of[16] = {};

  constexpr Increments() {
    for (uint32_t set = 0; set < 16; ++set) {
      for (uint32_t word = 0; word < 4; ++word) of[set].words[word] = (set >> word) & 1;
    }
  }
};
constexpr Increments kIncrements;

/// Adds all four words at once. Which of them get a carry is an addition itself, of one bit per word: some
/// words make a carry, and those that are full pass one on.
[[gnu::target("avx2")]] bool advanceWide(BitBlock* row, const BitBlock* matches, size_t count) {
  const __m256i full = _mm256_set1_epi64x(-1);
  uint32_t carried = 0;
  for (size_t block = 0; block < count; ++block) {
    auto* const place = reinterpret_cast<__m256i*>(row + block);
    const __m256i bits = _mm256_loadu_si256(place);
    const __m256i common =
        _mm256_and_si256(bits, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(matches + block)));
    const __m256i sum = _mm256_add_epi64(bits, common);
    const __m256i overflow = _mm256_or_si256(common, _mm256_andnot_si256(sum, bits));
    const auto making = static_cast<uint32_t>(_mm256_movemask_pd(_mm256_castsi256_pd(overflow)));
    const auto passing =
        static_cast<uint32_t>(_mm256_movemask_pd(_mm256_castsi256_pd(_mm256_cmpeq_epi64(sum, full))));
    const uint32_t carries = (2 * making + carried) + passing;
    const auto* const increments =
        reinterpret_cast<const __m256i*>(kIncrements.of + ((carries ^ passing) & 15));
    carried = carries >> 4;
    const __m256i next = _mm256_add_epi64(sum, _mm256_load_si256(increments));
    _mm256_storeu_si256(place, _mm256_or_si256(next, _mm256_xor_si256(bits, common)));
  }
  return carried != 0;
}

}  // namespace

bool advanceBlocks(BitBlock* row, const BitBlock* matches, size_t count) {
  static const auto advance = __builtin_cpu_supports("avx2") ? advanceWide : advanceBlocksPortably;
  return advance(row, matches, count);
}
#else
bool advanceBlocks(BitBlock* row, const BitBlock* matches, size_t count) {
  return advanceBlocksPortably(row, matches, count);
}
#endif

bool advanceBlocksPortably(BitBlock* row, const BitBlock* matches, size_t count) {
  uint64_t carried = 0;
  for (size_t block = 0; block < count; ++block) {
    for (int32_t word = 0; word < BitBlock::kWords; ++word) {
      const uint64_t bits = row[block].words[word];
      const uint64_t common = bits & matches[block].words[word];
      const uint64_t sum = bits + common + carried;
      // A carry leaves the top if both have a bit there, or if one has and the sum has not.
      carried = (common | (bits & ~sum)) >> (BitBlock::kWordColumns - 1);
      row[block].words[word] = sum | (bits ^ common);
    }
  }
  return carried != 0;
}

bool advanceByMatches(BitBlock* row, std::span<const int32_t> columns, size_t count) {
  uint64_t* const words = row->words;
  const size_t end = count * BitBlock::kWords;
  bool grown = false;
  // The last comes first, so that the place that has moved to it can move on to the one before.
  for (size_t n = columns.size(); n-- > 0;) {
    const auto column = static_cast<uint32_t>(columns[n]);
    size_t at = column / BitBlock::kWordColumns;
    const uint64_t match = uint64_t{1} << (column % BitBlock::kWordColumns);
    if ((words[at] & match) == 0) continue;
    uint64_t before = words[at] | (match - 1);
    words[at] &= ~match;
    while (before == ~uint64_t{0} && ++at < end) before = words[at];
    if (at < end) {
      words[at] |= ~before & (before + 1);
    } else {
      grown = true;
    }
  }
  return grown;
}

int32_t growthsIn(const BitBlock& block) {
  int32_t growths = 0;
  for (const uint64_t word : block.words) growths += std::popcount(~word);
  return growths;
}

}  // namespace merivane
