#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace merivane {

/// Names between their form inside, UTF-8, and the 16-bit units of a system that counts in those. File
/// systems let half of a surrogate pair pass: it is written as the three bytes of its number, so that every
/// name comes back as it was (the WTF-8 encoding, S. Sapin, 2018). `Unit` is char16_t, or wchar_t where that
/// has 16 bits.
template <typename Unit>
std::string utf8FromUtf16(std::basic_string_view<Unit> units);

/// The way back. Each byte that belongs to no character becomes U+FFFD, or the byte's own unit of the 256 in
/// `otherwise`.
template <typename Unit>
std::basic_string<Unit> utf16FromUtf8(std::string_view bytes, const Unit* otherwise = nullptr);

/// One code point in either form.
std::string utf8OfCodePoint(char32_t codePoint);
void appendUtf16(std::u16string& units, char32_t codePoint);

/// How many bytes at the end are the start of a character whose rest is still to come.
size_t unfinishedCharacter(std::string_view bytes);

}  // namespace merivane
