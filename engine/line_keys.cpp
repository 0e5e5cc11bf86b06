#include "engine/line_keys.h"

#include <array>
#include <bit>

#include "engine/sixteen_bytes.h"

namespace merivane {
namespace {

constexpr uint32_t kBase = SixteenBytes::kBase;

/// kBase to the power of 0 to 16.
constexpr auto kPowers = [] {
  std::array<uint32_t, SixteenBytes::kSize + 1> powers = {1};
  for (size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * kBase;
  return powers;
}();

uint32_t value(char c) { return static_cast<uint32_t>(static_cast<int32_t>(static_cast<signed char>(c))); }

/// Continues `key` with the bytes from `from` to `end` as they are. The bytes from `readable` to `from` are
/// not part of the key, but may be read.
uint32_t plainKey(uint32_t key, const char* readable, const char* from, const char* end) {
  for (; end - from >= SixteenBytes::kSize; from += SixteenBytes::kSize)
    key = key * kPowers[SixteenBytes::kSize] + SixteenBytes(from).polynomial();
  if (from < end && end - readable >= SixteenBytes::kSize) {
    // The bytes before them become zeros, which add nothing.
    const ptrdiff_t left = end - from;
    const SixteenBytes bytes = SixteenBytes(end - SixteenBytes::kSize).last(left);
    return key * kPowers[static_cast<size_t>(left)] + bytes.polynomial();
  }
  for (; from < end; ++from) key = key * kBase + value(*from);
  return key;
}

constexpr size_t kAtOnce = 64;

/// A bit for each of the kAtOnce bytes from `from` on that is an LF.
uint64_t lineFeedsAt(const char* from) {
  uint64_t bits = 0;
  for (size_t i = 0; i < kAtOnce; i += SixteenBytes::kSize)
    bits |= uint64_t{SixteenBytes(from + i).equalTo('\n')} << i;
  return bits;
}

/// Calls `visit` with the place after every LF. Returns false when aborted.
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

/// Computes the key of a line without its LF under the options, from one piece of it after another.
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

/// Long lines are read in pieces of so many bytes, with a look at the flag after each.
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
