#pragma once

#include <cstdint>
#include <string_view>

namespace merivane {

/// The length of the well-formed UTF-8 sequence that a text starts with; 1 where a byte from 0x80 on starts
/// none, and for every other byte. The text is not empty.
inline uint32_t utf8Length(std::string_view text) {
  const auto byteAt = [text](uint32_t i) { return static_cast<uint8_t>(text[i]); };
  const uint8_t lead = byteAt(0);
  const uint32_t length = lead < 0xC2 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 1;
  if (length == 1 || text.size() < length) return 1;
  for (uint32_t i = 1; i < length; ++i) {
    if ((byteAt(i) & 0xC0) != 0x80) return 1;
  }
  // Neither longer than need be, nor a surrogate, nor beyond the last code point.
  const uint8_t second = byteAt(1);
  const bool malformed = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0) ||
                         (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90);
  return malformed ? 1 : length;
}

/// The code point of a well-formed sequence, all of the text.
inline char32_t utf8CodePoint(std::string_view sequence) {
  const auto lead = static_cast<uint8_t>(sequence[0]);
  char32_t code = sequence.size() == 1 ? lead : lead & (0x7Fu >> sequence.size());
  for (const char c : sequence.substr(1)) code = code << 6 | (static_cast<uint8_t>(c) & 0x3F);
  return code;
}

/// Whether all of a text is well-formed UTF-8.
inline bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const uint32_t length = utf8Length(text);
    if (length == 1 && static_cast<uint8_t>(text[0]) >= 0x80) return false;
    text.remove_prefix(length);
  }
  return true;
}

/// Whether a well-formed sequence is one of the control characters U+0080 to U+009F, which a terminal obeys
/// as it obeys ESC and a letter.
inline bool isUtf8Control(std::string_view sequence) {
  return sequence.size() == 2 && sequence[0] == '\xC2' && static_cast<uint8_t>(sequence[1]) < 0xA0;
}

}  // namespace merivane
