#include "engine/line_keys.h"

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <bit>

namespace merivane {
namespace {

constexpr uint32_t kBase = 127;
constexpr ptrdiff_t kBytes = sizeof(__m128i);

/// kBase to the power of 0 to kBytes.
constexpr auto kPowers = [] {
  std::array<uint32_t, kBytes + 1> powers = {1};
  for (size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * kBase;
  return powers;
}();

/// From place n on a mask of the last n of kBytes bytes.
constexpr auto kLast = [] {
  std::array<int8_t, 2 * kBytes> mask = {};
  std::fill(mask.begin() + kBytes, mask.end(), int8_t{-1});
  return mask;
}();

uint32_t value(char c) { return static_cast<uint32_t>(static_cast<int32_t>(static_cast<signed char>(c))); }

__m128i bytesAt(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }

/// The polynomial of sixteen bytes: of pairs of them, then of pairs of these, side by side; no sum leaves its
/// lane.
uint32_t keyOfSixteen(__m128i bytes) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i ofPairs = _mm_set1_epi32(1 << 16 | kBase), ofFours = _mm_set1_epi32(1 << 16 | kBase * kBase);
  const __m128i low = _mm_srai_epi16(_mm_unpacklo_epi8(zero, bytes), 8);
  const __m128i high = _mm_srai_epi16(_mm_unpackhi_epi8(zero, bytes), 8);
  const __m128i pairs = _mm_packs_epi32(_mm_madd_epi16(low, ofPairs), _mm_madd_epi16(high, ofPairs));
  alignas(__m128i) std::array<uint32_t, 4> fours;
  _mm_store_si128(reinterpret_cast<__m128i*>(fours.data()), _mm_madd_epi16(pairs, ofFours));
  return fours[0] * kPowers[12] + fours[1] * kPowers[8] + fours[2] * kPowers[4] + fours[3];
}

/// The polynomial of plain bytes behind those of `key`. What lies between `readable` and `from` does not
/// count, but may be read.
uint32_t plainKey(uint32_t key, const char* readable, const char* from, const char* end) {
  for (; end - from >= kBytes; from += kBytes) key = key * kPowers[kBytes] + keyOfSixteen(bytesAt(from));
  if (from < end && end - readable >= kBytes) {
    // With the bytes before them made zeros, which add nothing.
    const ptrdiff_t left = end - from;
    const __m128i bytes = _mm_and_si128(bytesAt(end - kBytes), bytesAt(kLast.data() + left));
    return key * kPowers[static_cast<size_t>(left)] + keyOfSixteen(bytes);
  }
  for (; from < end; ++from) key = key * kBase + value(*from);
  return key;
}

constexpr size_t kAtOnce = 64;

/// A bit for each of so many bytes that is an LF.
uint64_t lineFeedsAt(const char* from) {
  uint64_t bits = 0;
  const __m128i lineFeed = _mm_set1_epi8('\n');
  for (size_t i = 0; i < kAtOnce; i += kBytes) {
    const int found = _mm_movemask_epi8(_mm_cmpeq_epi8(bytesAt(from + i), lineFeed));
    bits |= uint64_t{static_cast<uint32_t>(found)} << i;
  }
  return bits;
}

/// Calls `visit` with the place behind every LF. False when aborted.
template <typename Visit>
bool forEachLineEnd(std::string_view text, const AbortFlag* abort, Visit visit) {
  const char* from = text.data();
  const char* const end = from + text.size();
  for (uint32_t turn = 0; from + kAtOnce <= end; from += kAtOnce) {
    if (turn++ % 64 == 0 && isRaised(abort)) return false;
    for (uint64_t found = lineFeedsAt(from); found != 0; found &= found - 1)
      visit(from + std::countr_zero(found) + 1);
  }
  for (; from < end; ++from) {
    if (*from == '\n') visit(from + 1);
  }
  return true;
}

/// The key of a line without its LF as the options have it, made from piece after piece of it.
class NormalisedKey {
 public:
  explicit NormalisedKey(const CompareOptions& options) : options_(options) {}

  void add(const char* from, const char* end) {
    const uint32_t blanks = options_.ignoreBlanks;
    for (; from < end; ++from) {
      char c = *from;
      if (isBlank(c)) {
        if (blanks & kIgnoreAllBlanks) continue;
        if ((blanks & kIgnoreBlanksAtStart) && atLineStart_) continue;
        if (!inBlankRun_) {
          inBlankRun_ = true;
          keyBeforeRun_ = key_;
          if (blanks & kIgnoreMultipleBlanks) c = ' ';
        } else if (blanks & kIgnoreMultipleBlanks) {
          continue;
        }
      } else {
        inBlankRun_ = false;
        atLineStart_ = false;
      }
      key_ = key_ * kBase + value(options_.ignoreCase ? foldCase(c) : c);
    }
  }

  uint32_t key() const {
    return (options_.ignoreBlanks & kIgnoreBlanksAtEnd) && inBlankRun_ ? keyBeforeRun_ : key_;
  }

 private:
  const CompareOptions options_;
  uint32_t key_ = 0;
  uint32_t keyBeforeRun_ = 0;
  bool inBlankRun_ = false;
  bool atLineStart_ = true;
};

/// Long lines are gone through in pieces of so many bytes, with a look at the flag after each.
constexpr ptrdiff_t kPiece = 1 << 20;

uint32_t keyOf(const char* readable, const char* line, const char* end, const CompareOptions& options,
               const AbortFlag* abort) {
  if (options.comparesBytes()) {
    uint32_t key = 0;
    for (; end - line > kPiece && !isRaised(abort); line += kPiece)
      key = plainKey(key, readable, line, line + kPiece);
    return end - line > kPiece ? key : plainKey(key, readable, line, end);
  }
  const bool terminated = line < end && end[-1] == '\n';
  if (terminated) --end;
  NormalisedKey key(options);
  for (; end - line > kPiece && !isRaised(abort); line += kPiece) key.add(line, line + kPiece);
  if (end - line <= kPiece) key.add(line, end);
  return terminated ? key.key() * kBase + '\n' : key.key();
}

}  // namespace

uint32_t lineKey(std::string_view line, const CompareOptions& options) {
  const char* const end = line.data() + line.size();
  return keyOf(line.data(), line.data(), end, options, nullptr);
}

LineTable tableLines(std::string_view text, const CompareOptions& options, const AbortFlag* abort) {
  LineTable table;
  size_t lines = !text.empty() && text.back() != '\n';
  if (!forEachLineEnd(text, abort, [&lines](const char*) { ++lines; })) return table;
  table.keys.reserve(lines);
  table.starts.reserve(lines + 1);
  table.starts.push_back(0);
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const char* line = begin;
  const auto addLine = [&](const char* next) {
    table.keys.push_back(keyOf(begin, line, next, options, abort));
    table.starts.push_back(static_cast<uint32_t>(next - begin));
    line = next;
  };
  if (forEachLineEnd(text, abort, addLine) && line < end) addLine(end);
  return table;
}

}  // namespace merivane
