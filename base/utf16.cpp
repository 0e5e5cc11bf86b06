#include "base/utf16.h"

#include <cstddef>
#include <cstdint>
#include <cwchar>

namespace merivane {
namespace {

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

/// How many bytes a character has that starts with this one; 1 as well for a byte that starts none.
constexpr size_t lengthFrom(uint8_t first) {
  if (first < 0xC0 || first >= 0xF8) return 1;
  return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

constexpr bool isTail(char byte) { return (static_cast<uint8_t>(byte) & 0xC0) == 0x80; }

template <typename Unit>
void appendUnits(std::basic_string<Unit>& units, char32_t code) {
  if (code < 0x10000) {
    units += static_cast<Unit>(code);
  } else {
    units += static_cast<Unit>(0xD7C0 + (code >> 10));
    units += static_cast<Unit>(0xDC00 + (code & 0x3FF));
  }
}

constexpr char32_t kNone = 0xFFFFFFFF;

/// Takes the next character off the front, or one byte that belongs to none and kNone.
char32_t takeCharacter(std::string_view& bytes) {
  constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const auto first = static_cast<uint8_t>(bytes[0]);
  const size_t length = lengthFrom(first);
  char32_t code = length == 1 ? first : first & (0x7F >> length);
  bool wellFormed = length <= bytes.size() && (length > 1 || first < 0x80);
  for (size_t i = 1; wellFormed && i < length; ++i) {
    wellFormed = isTail(bytes[i]);
    code = code << 6 | (static_cast<uint8_t>(bytes[i]) & 0x3F);
  }
  wellFormed = wellFormed && code >= smallest[length] && code <= 0x10FFFF;
  bytes.remove_prefix(wellFormed ? length : 1);
  return wellFormed ? code : kNone;
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
std::basic_string<Unit> utf16FromUtf8(std::string_view bytes, const Unit* otherwise) {
  std::basic_string<Unit> units;
  units.reserve(bytes.size());
  while (!bytes.empty()) {
    const auto first = static_cast<uint8_t>(bytes[0]);
    const char32_t code = takeCharacter(bytes);
    if (code == kNone) {
      units += otherwise == nullptr ? static_cast<Unit>(0xFFFD) : otherwise[first];
    } else {
      appendUnits(units, code);
    }
  }
  return units;
}

std::string utf8OfCodePoint(char32_t codePoint) {
  std::string bytes;
  append(bytes, codePoint);
  return bytes;
}

void appendUtf16(std::u16string& units, char32_t codePoint) { appendUnits(units, codePoint); }

size_t unfinishedCharacter(std::string_view bytes) {
  for (size_t length = 1; length <= 3 && length <= bytes.size(); ++length) {
    const char byte = bytes[bytes.size() - length];
    if (!isTail(byte)) return lengthFrom(static_cast<uint8_t>(byte)) > length ? length : 0;
  }
  return 0;
}

template std::string utf8FromUtf16(std::u16string_view);
template std::u16string utf16FromUtf8(std::string_view, const char16_t*);
#if WCHAR_MAX <= 0xFFFF
template std::string utf8FromUtf16(std::wstring_view);
template std::wstring utf16FromUtf8(std::string_view, const wchar_t*);
#endif

}  // namespace merivane
