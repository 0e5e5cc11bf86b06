#include "engine/text_encoding.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "base/code_page.h"
#include "base/utf16.h"
#include "base/utf8.h"

namespace merivane {
namespace {

/// What is worked on between two looks at the flag.
constexpr size_t kAtOnce = 1 << 20;

bool isAsciiByte(char c) { return static_cast<signed char>(c) >= 0; }

constexpr uint32_t kWord = sizeof(uint64_t);

/// Whether any of a word's bytes is not ASCII.
bool isBeyondAscii(uint64_t word) { return (word & 0x8080808080808080) != 0; }

uint64_t wordAt(const char* from) {
  uint64_t word;
  std::memcpy(&word, from, kWord);
  return word;
}

/// The place of the first byte from `at` on that is not ASCII; `end` for none.
size_t endOfAscii(std::string_view text, size_t at, size_t end) {
  // A sum of so many bytes that the compiler makes vectors of it.
  constexpr uint32_t block = 256;
  for (; end - at >= block; at += block) {
    uint8_t all = 0;
    for (uint32_t i = 0; i < block; ++i) all |= static_cast<uint8_t>(text[at + i]);
    if (all >= 0x80) break;
  }
  while (end - at >= kWord && !isBeyondAscii(wordAt(text.data() + at))) at += kWord;
  while (at < end && isAsciiByte(text[at])) ++at;
  return at;
}

char16_t unitAt(std::string_view bytes, size_t at, bool bigEndian) {
  const auto first = static_cast<uint8_t>(bytes[at]), second = static_cast<uint8_t>(bytes[at + 1]);
  return static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
}

void putUnit(char*& to, char32_t unit, bool bigEndian) {
  to[bigEndian ? 1 : 0] = static_cast<char>(unit & 0xFF);
  to[bigEndian ? 0 : 1] = static_cast<char>(unit >> 8);
  to += 2;
}

bool isHigh(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

const char* encodingName(TextEncoding encoding) {
  constexpr const char* names[] = {"ASCII", "single-byte", "UTF-8", "UTF-8 BOM", "UTF-16 LE", "UTF-16 BE"};
  return names[static_cast<size_t>(encoding)];
}

std::string withEncoding(std::string lineEnds, TextEncoding encoding) {
  if (isUnicode(encoding)) (lineEnds += ' ') += encodingName(encoding);
  return lineEnds;
}

bool isAscii(std::string_view text) { return endOfAscii(text, 0, text.size()) == text.size(); }

std::string_view byteOrderMark(TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::utf8Marked:
      return "\xEF\xBB\xBF";
    case TextEncoding::utf16Le:
      return "\xFF\xFE";
    case TextEncoding::utf16Be:
      return "\xFE\xFF";
    default:
      return {};
  }
}

TextEncoding encodingByMark(std::string_view bytes) {
  for (const auto encoding : {TextEncoding::utf8Marked, TextEncoding::utf16Le, TextEncoding::utf16Be}) {
    if (bytes.starts_with(byteOrderMark(encoding))) return encoding;
  }
  return TextEncoding::ascii;
}

TextEncoding detectEncoding(std::string_view text, const AbortFlag* abort) {
  auto encoding = TextEncoding::ascii;
  for (size_t at = 0; at < text.size() && !isRaised(abort);) {
    const size_t end = at + std::min(text.size() - at, kAtOnce);
    for (at = endOfAscii(text, at, end); at < end; at = endOfAscii(text, at, end)) {
      encoding = TextEncoding::utf8;
      do {
        const uint32_t length = utf8Length(text.substr(at));
        if (length == 1) return TextEncoding::singleByte;
        at += length;
      } while (at < end && !isAsciiByte(text[at]));
      if (at >= end) break;
    }
  }
  return encoding;
}

Decoded decodeUtf16(std::string_view units, TextEncoding encoding, ByteArray& text, const AbortFlag* abort) {
  const bool bigEndian = encoding == TextEncoding::utf16Be;
  if (units.size() % 2 != 0) return Decoded::malformed;
  uint64_t size = 0;
  bool afterHigh = false;
  for (size_t at = 0; at < units.size(); at += 2) {
    if (at % kAtOnce == 0 && isRaised(abort)) return Decoded::whole;
    const char16_t unit = unitAt(units, at, bigEndian);
    if (isLow(unit) != afterHigh) return Decoded::malformed;
    afterHigh = isHigh(unit);
    size += unit < 0x80 ? 1 : unit < 0x800 || afterHigh || isLow(unit) ? 2 : 3;
  }
  if (afterHigh) return Decoded::malformed;
  ByteArray decoded;
  if (!decoded.allocate(size)) return Decoded::outOfMemory;
  std::u16string block;
  char* to = decoded.data();
  for (size_t at = 0; at < units.size() && !isRaised(abort);) {
    block.clear();
    // Half a pair at the end waits for the other.
    const size_t end = at + std::min(units.size() - at, kAtOnce);
    for (; at < end; at += 2) block += unitAt(units, at, bigEndian);
    if (isHigh(block.back())) {
      block += unitAt(units, at, bigEndian);
      at += 2;
    }
    const std::string bytes = utf8FromUtf16<char16_t>(block);
    to = std::copy(bytes.begin(), bytes.end(), to);
  }
  text = std::move(decoded);
  return Decoded::whole;
}

bool encodeUtf16(std::string_view text, TextEncoding encoding, ByteArray& units) {
  const bool bigEndian = encoding == TextEncoding::utf16Be;
  uint64_t size = 0;
  for (size_t at = 0; at < text.size();) {
    const uint32_t length = utf8Length(text.substr(at));
    size += length == 4 ? 4 : 2;
    at += length;
  }
  ByteArray encoded;
  if (!encoded.allocate(size)) return false;
  const CodePage& codePage = systemCodePage();
  char* to = encoded.data();
  for (size_t at = 0; at < text.size();) {
    const uint32_t length = utf8Length(text.substr(at));
    const char32_t code =
        length == 1 ? codePage[static_cast<uint8_t>(text[at])] : utf8CodePoint(text.substr(at, length));
    if (code < 0x10000) {
      putUnit(to, code, bigEndian);
    } else {
      putUnit(to, 0xD800 + ((code - 0x10000) >> 10), bigEndian);
      putUnit(to, 0xDC00 + ((code - 0x10000) & 0x3FF), bigEndian);
    }
    at += length;
  }
  units = std::move(encoded);
  return true;
}

}  // namespace merivane
