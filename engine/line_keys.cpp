#include "engine/line_keys.h"

#ifdef __SSE2__
#include <immintrin.h>
#endif

#include <array>
#include <bit>

namespace merivane {
namespace {

constexpr uint32_t kBase = 127;
constexpr uint32_t kBase2 = kBase * kBase;
constexpr uint32_t kBase4 = kBase2 * kBase2;
constexpr uint32_t kBase8 = kBase4 * kBase4;

uint32_t value(char c) { return static_cast<uint32_t>(static_cast<int32_t>(static_cast<signed char>(c))); }

/// The polynomial of eight bytes, the first in the low byte: of pairs of them, then of pairs of these, side
/// by side in one word. The bytes are made unsigned first, which adds 128 to each and so a constant in all;
/// no sum then leaves its lane.
uint32_t keyOfEight(uint64_t bytes) {
  constexpr uint32_t excess = 128 * (kBase + 1) * (kBase2 + 1) * (kBase4 + 1);
  bytes ^= 0x8080808080808080;
  const uint64_t pairs = (bytes & 0x00FF00FF00FF00FF) * kBase + ((bytes >> 8) & 0x00FF00FF00FF00FF);
  const uint64_t fours = (pairs & 0x0000FFFF0000FFFF) * kBase2 + ((pairs >> 16) & 0x0000FFFF0000FFFF);
  return static_cast<uint32_t>(fours) * kBase4 + static_cast<uint32_t>(fours >> 32) - excess;
}

uint64_t eightBytes(const char* from) {
  uint64_t bytes = 0;
  for (int i = 0; i < 8; ++i) bytes |= uint64_t{static_cast<uint8_t>(from[i])} << (8 * i);
  return bytes;
}

/// kBase to the power of 0 to 7.
constexpr auto kPowers = [] {
  std::array<uint32_t, 8> powers = {1};
  for (size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * kBase;
  return powers;
}();

/// The polynomial of plain bytes behind those of `key`. What lies between `end` and `readable` does not
/// count, but may be read.
uint32_t plainKey(uint32_t key, const char* from, const char* end, const char* readable) {
  for (; end - from >= 8; from += 8) key = key * kBase8 + keyOfEight(eightBytes(from));
  if (from < end && readable - from >= 8) {
    // The bytes left go to the place of the last of eight; zeros before them add nothing.
    const auto left = static_cast<size_t>(end - from);
    return key * kPowers[left] + keyOfEight(eightBytes(from) << (64 - 8 * left));
  }
  for (; from < end; ++from) key = key * kBase + value(*from);
  return key;
}

constexpr size_t kAtOnce = 64;

/// A bit for each of so many bytes that is an LF.
uint64_t lineFeedsAt(const char* from) {
  uint64_t bits = 0;
#ifdef __SSE2__
  const __m128i lineFeed = _mm_set1_epi8('\n');
  for (size_t i = 0; i < kAtOnce; i += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
    const int found = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, lineFeed));
    bits |= uint64_t{static_cast<uint32_t>(found)} << i;
  }
#else
  for (size_t i = 0; i < kAtOnce; ++i) bits |= uint64_t{from[i] == '\n'} << i;
#endif
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

uint32_t keyOf(const char* line, const char* end, const char* readable, const CompareOptions& options,
               const AbortFlag* abort) {
  if (options.comparesBytes()) {
    uint32_t key = 0;
    for (; end - line > kPiece && !isRaised(abort); line += kPiece)
      key = plainKey(key, line, line + kPiece, readable);
    return end - line > kPiece ? key : plainKey(key, line, end, readable);
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
  return keyOf(line.data(), end, end, options, nullptr);
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
    table.keys.push_back(keyOf(line, next, end, options, abort));
    table.starts.push_back(static_cast<uint32_t>(next - begin));
    line = next;
  };
  if (forEachLineEnd(text, abort, addLine) && line < end) addLine(end);
  return table;
}

}  // namespace merivane
