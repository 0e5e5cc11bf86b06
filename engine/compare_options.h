#pragma once

#include <cstdint>

namespace merivane {

/// Which blanks a comparison ignores, as a bit set. The values are stored in the settings.
enum IgnoreBlanks : uint32_t {
  kIgnoreAllBlanks = 1,
  kIgnoreMultipleBlanks = 2,
  kIgnoreBlanksAtStart = 4,
  kIgnoreBlanksAtEnd = 8,
};

/// What counts as equal: decides the keys of lines and the characters that a comparison within lines sees.
struct CompareOptions {
  bool ignoreCase = false;
  uint32_t ignoreBlanks = 0;   // IgnoreBlanks bits
  bool compareChanges = true;  // whether unequal lines may pair up as changed

  bool comparesBytes() const { return !ignoreCase && ignoreBlanks == 0; }

  bool operator==(const CompareOptions&) const = default;
};

/// Returns whether a character is one of the six blanks; bytes from 0x80 on never are.
constexpr bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr char foldCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace merivane
