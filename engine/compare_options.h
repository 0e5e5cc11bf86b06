#pragma once

#include <cstdint>

namespace merivane {

/// Which blanks a comparison passes over; a bit set.
enum IgnoreBlanks : uint32_t {
  kIgnoreAllBlanks = 1,
  kIgnoreMultipleBlanks = 2,
  kIgnoreBlanksAtStart = 4,
  kIgnoreBlanksAtEnd = 8,
};

/// What counts as equal. Decides line keys and the characters that an in-line comparison sees.
struct CompareOptions {
  bool ignoreCase = false;
  uint32_t ignoreBlanks = 0;   // IgnoreBlanks bits
  bool compareChanges = true;  // whether unequal lines may pair up as changed

  bool comparesBytes() const { return !ignoreCase && ignoreBlanks == 0; }
};

/// The six blanks; bytes from 0x80 on never are.
constexpr bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr char foldCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace merivane
