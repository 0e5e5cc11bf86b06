#include "base/utf16.h"

#include <cstddef>
#include <cstdint>
#include <cwchar>

namespace merivane {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool isHigh(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool isLow(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void append(std::string& bytes, char32_t code) {
  const auto tail = [code](int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) {
    bytes += static_cast<char>(code);
  } else if (code < 0x800) {
    bytes += {static_cast<char>(0xC0 | code >> 6), tail(0)};
  } else if (code < 0x10000) {
    bytes += {static_cast<char>(0xE0 | code >> 12), tail(6), tail(0)};
  } else {
    bytes += {static_cast<char>(0xF0 | code >> 18), tail(12), tail(6), tail(0)};
  }
}

/// Takes the next character off the front, or one byte that belongs to none.
char32_t takeCharacter(std::string_view& bytes) {
  const auto at = [&bytes](size_t i) { return static_cast<uint8_t>(bytes[i]); };
  const char32_t first = at(0);
  size_t length = 1;
  char32_t least = 0;
  char32_t code = first;
  if (first >= 0xC0 && first < 0xE0) {
    length = 2, least = 0x80, code = first & 0x1F;
  } else if (first >= 0xE0 && first < 0xF0) {
    length = 3, least = 0x800, code = first & 0x0F;
  } else if (first >= 0xF0 && first < 0xF8) {
    length = 4, least = 0x10000, code = first & 0x07;
  } else if (first >= 0x80) {
    code = kReplacement;
  }
  bool wellFormed = length <= bytes.size();
  for (size_t i = 1; wellFormed && i < length; ++i) {
    wellFormed = (at(i) & 0xC0) == 0x80;
    code = code << 6 | (at(i) & 0x3F);
  }
  if (!wellFormed || code < least || code > 0x10FFFF) {
    length = 1;
    code = kReplacement;
  }
  bytes.remove_prefix(length);
  return code;
}

}  // namespace

template <typename Unit>
std::string utf8FromUtf16(std::basic_string_view<Unit> units) {
  std::string bytes;
  bytes.reserve(units.size());
  for (size_t i = 0; i < units.size(); ++i) {
    char32_t code = static_cast<char16_t>(units[i]);
    if (isHigh(code) && i + 1 < units.size()) {
      const char32_t low = static_cast<char16_t>(units[i + 1]);
      if (isLow(low)) {
        code = 0x10000 + ((code - 0xD800) << 10 | (low - 0xDC00));
        ++i;
      }
    }
    append(bytes, code);
  }
  return bytes;
}

template <typename Unit>
std::basic_string<Unit> utf16FromUtf8(std::string_view bytes) {
  std::basic_string<Unit> units;
  units.reserve(bytes.size());
  while (!bytes.empty()) {
    const char32_t code = takeCharacter(bytes);
    if (code < 0x10000) {
      units += static_cast<Unit>(code);
    } else {
      units += static_cast<Unit>(0xD800 + ((code - 0x10000) >> 10));
      units += static_cast<Unit>(0xDC00 + ((code - 0x10000) & 0x3FF));
    }
  }
  return units;
}

template std::string utf8FromUtf16(std::u16string_view);
template std::u16string utf16FromUtf8(std::string_view);
#if WCHAR_MAX <= 0xFFFF
template std::string utf8FromUtf16(std::wstring_view);
template std::wstring utf16FromUtf8(std::string_view);
#endif

}  // namespace merivane
