#include "display/characters.h"

#include <algorithm>
#include <array>

#include "base/code_page.h"
#include "base/utf8.h"
#include "display/code_points.h"

namespace merivane {
namespace {

constexpr uint32_t kLongestSequence = 4;

constexpr bool isTail(char c) { return (static_cast<uint8_t>(c) & 0xC0) == 0x80; }

/// Whether marks after a code point are written into it.
constexpr bool takesMarks(char32_t codePoint) { return codePoint != kNoCodePoint && !isControl(codePoint); }

CodePoint decode(std::string_view bytes) {
  const auto first = static_cast<uint8_t>(bytes[0]);
  const uint32_t length = utf8Length(bytes);
  if (length == 1) return {first < 0x80 ? first : kNoCodePoint, 1};
  char32_t value = first & (0x7Fu >> length);
  for (uint32_t i = 1; i < length; ++i) value = value << 6 | (static_cast<uint8_t>(bytes[i]) & 0x3Fu);
  return {value, length};
}

}  // namespace

CodePoint codePointAt(const SplitText& text, uint32_t at) {
  const size_t headSize = text.head.size();
  if (at >= headSize) return decode(text.tail.substr(at - headSize, kLongestSequence));
  if (at + kLongestSequence <= headSize || text.tail.empty()) {
    return decode(text.head.substr(at, kLongestSequence));
  }
  std::array<char, kLongestSequence> bytes;
  const uint32_t count = std::min(text.size() - at, kLongestSequence);
  for (uint32_t i = 0; i < count; ++i) bytes[i] = text[at + i];
  return decode({bytes.data(), count});
}

bool RowCharacters::isBoundary(uint32_t at) const {
  if (!utf8_ || at == 0 || at >= size() || isAscii(at)) return true;
  if (codePointBegin(at) != at) return false;
  return propertiesOf(codePointAt(row_, at).value).columns() > 0 || !takesMarks(at);
}

uint32_t RowCharacters::begin(uint32_t at) const {
  while (!isBoundary(at)) at = codePointBegin(at - 1);
  return at;
}

uint32_t RowCharacters::end(uint32_t at) const {
  while (!isBoundary(at)) ++at;
  return at;
}

Character RowCharacters::at(uint32_t boundary) const {
  if (!utf8_) return {systemCodePage()[static_cast<uint8_t>(row_[boundary])], 1, 1, false};
  const CodePoint first = codePointAt(row_, boundary);
  Character character = {first.value, first.length, 1, false};
  if (!merivane::takesMarks(first.value)) return character;
  if (first.value >= 0x80) {
    const uint32_t columns = propertiesOf(first.value).columns();
    character.baseless = columns == 0;
    character.columns = std::max(columns, 1u);
  }
  for (uint32_t end = boundary + first.length; end < size() && !isAscii(end);) {
    const CodePoint mark = codePointAt(row_, end);
    if (propertiesOf(mark.value).columns() > 0) break;
    end += mark.length;
    character.length = end - boundary;
  }
  return character;
}

/// Where the code point starts that the byte at a position belongs to. What leads a sequence is never within
/// another one, so that the few bytes before tell.
uint32_t RowCharacters::codePointBegin(uint32_t at) const {
  if (!isTail(row_[at])) return at;
  for (uint32_t back = 1; back < kLongestSequence && back <= at; ++back) {
    if (isTail(row_[at - back])) continue;
    return codePointAt(row_, at - back).length > back ? at - back : at;
  }
  return at;
}

/// Whether marks from a position above 0 on, where a code point ends, are written into what is before it.
bool RowCharacters::takesMarks(uint32_t end) const {
  return merivane::takesMarks(codePointAt(row_, codePointBegin(end - 1)).value);
}

}  // namespace merivane
