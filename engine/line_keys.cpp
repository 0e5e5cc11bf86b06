#include "engine/line_keys.h"

#include <algorithm>
#include <array>
#include <cstring>

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

/// The polynomial of plain bytes. What lies between `end` and `readable` does not count, but may be read.
uint32_t plainKey(const char* from, const char* end, const char* readable) {
  uint32_t key = 0;
  for (; end - from >= 8; from += 8) key = key * kBase8 + keyOfEight(eightBytes(from));
  if (from < end && readable - from >= 8) {
    // The bytes left go to the place of the last of eight; zeros before them add nothing.
    const auto left = static_cast<size_t>(end - from);
    return key * kPowers[left] + keyOfEight(eightBytes(from) << (64 - 8 * left));
  }
  for (; from < end; ++from) key = key * kBase + value(*from);
  return key;
}

/// Counts in runs so short that a byte holds the count, which lets many bytes be compared at once.
size_t countLineFeeds(std::string_view text, const AbortFlag* abort) {
  constexpr size_t run = 240;
  size_t count = 0;
  for (; !isRaised(abort) && !text.empty(); text.remove_prefix(std::min(run, text.size()))) {
    uint8_t inRun = 0;
    for (const char c : text.substr(0, run)) inRun = static_cast<uint8_t>(inRun + (c == '\n'));
    count += inRun;
  }
  return count;
}

uint32_t normalisedKey(std::string_view line, const CompareOptions& options) {
  const bool terminated = !line.empty() && line.back() == '\n';
  if (terminated) line.remove_suffix(1);
  const uint32_t blanks = options.ignoreBlanks;
  uint32_t key = 0;
  uint32_t keyBeforeRun = 0;
  bool inBlankRun = false;
  bool atLineStart = true;
  for (char c : line) {
    if (isBlank(c)) {
      if (blanks & kIgnoreAllBlanks) continue;
      if ((blanks & kIgnoreBlanksAtStart) && atLineStart) continue;
      if (!inBlankRun) {
        inBlankRun = true;
        keyBeforeRun = key;
        if (blanks & kIgnoreMultipleBlanks) c = ' ';
      } else if (blanks & kIgnoreMultipleBlanks) {
        continue;
      }
    } else {
      inBlankRun = false;
      atLineStart = false;
    }
    key = key * kBase + value(options.ignoreCase ? foldCase(c) : c);
  }
  if ((blanks & kIgnoreBlanksAtEnd) && inBlankRun) key = keyBeforeRun;
  return terminated ? key * kBase + '\n' : key;
}

}  // namespace

uint32_t lineKey(std::string_view line, const CompareOptions& options) {
  if (options.comparesBytes()) {
    const char* const end = line.data() + line.size();
    return plainKey(line.data(), end, end);
  }
  return normalisedKey(line, options);
}

LineTable tableLines(std::string_view text, const CompareOptions& options, const AbortFlag* abort) {
  LineTable table;
  if (text.empty()) {
    table.starts.push_back(0);
    return table;
  }
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  size_t lines = countLineFeeds(text, abort);
  if (end[-1] != '\n') ++lines;
  table.keys.reserve(lines);
  table.starts.reserve(lines + 1);
  const bool bytes = options.comparesBytes();
  for (const char* line = begin; line < end && !isRaised(abort);) {
    const void* lineFeed = std::memchr(line, '\n', static_cast<size_t>(end - line));
    const char* const next = lineFeed ? static_cast<const char*>(lineFeed) + 1 : end;
    table.starts.push_back(static_cast<uint32_t>(line - begin));
    table.keys.push_back(bytes ? plainKey(line, next, end)
                               : normalisedKey({line, static_cast<size_t>(next - line)}, options));
    line = next;
  }
  table.starts.push_back(static_cast<uint32_t>(text.size()));
  return table;
}

}  // namespace merivane
