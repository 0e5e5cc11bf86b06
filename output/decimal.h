#pragma once

#include <charconv>
#include <cstdint>
#include <string>

namespace merivane {

/// Appends a number's decimal digits. Rows are written by the million: no locale, no format to parse.
inline void appendDecimal(std::string& text, uint32_t number) {
  char digits[10];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// How many decimal digits a number has.
inline uint32_t decimalDigits(uint32_t number) {
  uint32_t digits = 1;
  for (; number >= 10; number /= 10) ++digits;
  return digits;
}

}  // namespace merivane
