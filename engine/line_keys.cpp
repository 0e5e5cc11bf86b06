#include "engine/line_keys.h"

#include <algorithm>
#include <cstring>

namespace merivane {
namespace {

constexpr uint32_t kBase = 127;
constexpr uint32_t kBase2 = kBase * kBase;
constexpr uint32_t kBase3 = kBase2 * kBase;
constexpr uint32_t kBase4 = kBase3 * kBase;

uint32_t value(char c) { return static_cast<uint32_t>(static_cast<int32_t>(static_cast<signed char>(c))); }

/// The polynomial of plain bytes. Four at a time, because a multiplication has to wait for the one before.
uint32_t plainKey(const char* from, const char* end) {
  uint32_t key = 0;
  for (; end - from >= 4; from += 4) {
    key = key * kBase4 + (value(from[0]) * kBase3 + value(from[1]) * kBase2) +
          (value(from[2]) * kBase + value(from[3]));
  }
  for (; from < end; ++from) key = key * kBase + value(*from);
  return key;
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
  if (options.comparesBytes()) return plainKey(line.data(), line.data() + line.size());
  return normalisedKey(line, options);
}

LineTable tableLines(std::string_view text, const CompareOptions& options) {
  LineTable table;
  if (text.empty()) {
    table.starts.push_back(0);
    return table;
  }
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  size_t lines = static_cast<size_t>(std::count(begin, end, '\n'));
  if (end[-1] != '\n') ++lines;
  table.keys.reserve(lines);
  table.starts.reserve(lines + 1);
  const bool bytes = options.comparesBytes();
  for (const char* line = begin; line < end;) {
    const void* lineFeed = std::memchr(line, '\n', static_cast<size_t>(end - line));
    const char* const next = lineFeed ? static_cast<const char*>(lineFeed) + 1 : end;
    table.starts.push_back(static_cast<uint32_t>(line - begin));
    table.keys.push_back(bytes ? plainKey(line, next)
                               : normalisedKey({line, static_cast<size_t>(next - line)}, options));
    line = next;
  }
  table.starts.push_back(static_cast<uint32_t>(text.size()));
  return table;
}

}  // namespace merivane
