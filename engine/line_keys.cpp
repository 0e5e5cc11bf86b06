#include "engine/line_keys.h"

#include <algorithm>
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

/// Calls `visit` with the place after every LF.
template <typename Visit>
void forEachLineEnd(std::string_view text, Visit visit) {
  const char* from = text.data();
  const char* const end = from + text.size();
  for (; end - from >= static_cast<ptrdiff_t>(kAtOnce); from += kAtOnce) {
    for (uint64_t found = lineFeedsAt(from); found != 0; found &= found - 1)
      visit(from + std::countr_zero(found) + 1);
  }
  for (; from < end; ++from) {
    if (*from == '\n') visit(from + 1);
  }
}

/// Calls `visit` with one piece of a text after the other, with a look at the flag before each. Returns false
/// when aborted.
template <typename Visit>
bool forEachPiece(std::string_view text, const AbortFlag* abort, Visit visit) {
  constexpr size_t size = 1 << 20;
  for (; !text.empty(); text.remove_prefix(std::min(size, text.size()))) {
    if (isRaised(abort)) return false;
    visit(text.substr(0, size));
  }
  return true;
}

}  // namespace

/// Calls `visit` with the place after every LF of the piece and the key of the line that it ends.
template <typename Visit>
void LineKeys::forEachLine(std::string_view piece, Visit visit) {
  const char* const begin = piece.data();
  const char* line = begin;
  forEachLineEnd(piece, [&](const char* next) {
    addToLine(begin, line, next - 1);
    visit(next, lineKey() * kBase + '\n');
    beginLine();
    line = next;
  });
  addToLine(begin, line, begin + piece.size());
}

void LineKeys::add(std::string_view piece, std::vector<uint32_t>& keys) {
  forEachLine(piece, [&keys](const char*, uint32_t key) { keys.push_back(key); });
}

void LineKeys::end(std::vector<uint32_t>& keys) {
  if (isEmpty_) return;
  keys.push_back(lineKey());
  beginLine();
}

void LineKeys::beginLine() {
  key_ = 0;
  inBlankRun_ = false;
  onlyBlanks_ = isEmpty_ = true;
}

/// The key of what there is of the line, without an LF.
uint32_t LineKeys::lineKey() const {
  return (options_.ignoreBlanks & kIgnoreBlanksAtEnd) && inBlankRun_ ? keyBeforeRun_ : key_;
}

/// The bytes from `readable` to `from` are not part of what is added, but may be read.
void LineKeys::addToLine(const char* readable, const char* from, const char* end) {
  if (from == end) return;
  isEmpty_ = false;
  if (options_.comparesBytes()) {
    key_ = plainKey(key_, readable, from, end);
  } else {
    addNormalised(from, end);
  }
}

void LineKeys::addNormalised(const char* from, const char* end) {
  const uint32_t blanks = options_.ignoreBlanks;
  for (; from < end; ++from) {
    char c = *from;
    if (isBlank(c)) {
      if (blanks & kIgnoreAllBlanks) continue;
      if ((blanks & kIgnoreBlanksAtStart) && onlyBlanks_) continue;
      if (!inBlankRun_) {
        inBlankRun_ = true;
        keyBeforeRun_ = key_;
        if (blanks & kIgnoreMultipleBlanks) c = ' ';
      } else if (blanks & kIgnoreMultipleBlanks) {
        continue;
      }
    } else {
      inBlankRun_ = false;
      onlyBlanks_ = false;
    }
    key_ = key_ * kBase + value(options_.ignoreCase ? foldCase(c) : c);
  }
}

LineTable tableLines(std::string_view text, const CompareOptions& options, const AbortFlag* abort) {
  LineTable table;
  size_t lines = !text.empty() && text.back() != '\n';
  const auto count = [&lines](std::string_view piece) {
    forEachLineEnd(piece, [&lines](const char*) { ++lines; });
  };
  if (!forEachPiece(text, abort, count)) return table;
  table.keys.reserve(lines);
  table.starts.reserve(lines + 1);
  table.starts.push_back(0);
  const char* const begin = text.data();
  LineKeys keys(options);
  const auto addLine = [&](const char* next, uint32_t key) {
    table.keys.push_back(key);
    table.starts.push_back(static_cast<uint32_t>(next - begin));
  };
  const auto addPiece = [&](std::string_view piece) { keys.forEachLine(piece, addLine); };
  if (!forEachPiece(text, abort, addPiece)) return table;
  keys.end(table.keys);
  if (table.starts.back() < text.size()) table.starts.push_back(static_cast<uint32_t>(text.size()));
  return table;
}

}  // namespace merivane
