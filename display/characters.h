#pragma once

#include <cstdint>
#include <string_view>

namespace merivane {

/// Bytes of a text that lie in two pieces, as a gap in a buffer leaves them.
struct SplitText {
  std::string_view head;
  std::string_view tail;

  constexpr SplitText() = default;
  constexpr SplitText(std::string_view whole) : head(whole) {}
  constexpr SplitText(std::string_view front, std::string_view back) : head(front), tail(back) {}

  constexpr uint32_t size() const { return static_cast<uint32_t>(head.size() + tail.size()); }
  constexpr char operator[](uint32_t i) const { return i < head.size() ? head[i] : tail[i - head.size()]; }

  /// The bytes of [a, b).
  constexpr SplitText slice(uint32_t a, uint32_t b) const {
    const auto cut = static_cast<uint32_t>(head.size());
    if (b <= cut) return {head.substr(a, b - a)};
    if (a >= cut) return {tail.substr(a - cut, b - a)};
    return {head.substr(a), tail.substr(0, b - cut)};
  }
};

/// What a byte stands for that is part of no well-formed sequence.
constexpr char32_t kNoCodePoint = 0xFFFFFFFF;

/// A code point of a UTF-8 text, or one byte that belongs to none.
struct CodePoint {
  char32_t value;
  uint32_t length;  // in bytes
};
CodePoint codePointAt(const SplitText& text, uint32_t at);

/// Whether a code point is a control character, which has no look of its own.
constexpr bool isControl(char32_t codePoint) {
  return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
}

/// What a user takes for one: a code point with those written into it, such as combining marks.
struct Character {
  char32_t base;  // its first code point; the byte of a single-byte text; kNoCodePoint for an ill-formed one
  uint32_t length;   // in bytes, at least 1
  uint32_t columns;  // 1 or 2, as in a terminal; a control character or an ill-formed byte counts as 1
  bool baseless;     // starts with a mark that has nothing to be written into: it needs a base to be seen
};

/// The characters of a row. In UTF-8 every ill-formed byte is a character of its own, so that nothing is lost
/// whatever the bytes are; nothing is written into it or into a control character. Otherwise each byte is a
/// character of the system's code page, and takes one column.
///
/// Positions are indexes of bytes from the row's start; a boundary is one where a caret may stand. Whether a
/// position is one depends on no more than the code points next to it. The row's bytes have to stay where
/// they are.
class RowCharacters {
 public:
  RowCharacters(const SplitText& row, bool utf8) : row_(row), utf8_(utf8) {}

  uint32_t size() const { return row_.size(); }
  const SplitText& bytes() const { return row_; }
  bool isUtf8() const { return utf8_; }

  /// Whether a character starts or ends at a position up to size().
  bool isBoundary(uint32_t at) const;

  /// The next boundary at or before a position, and at or after it: what is marked widens to whole
  /// characters.
  uint32_t begin(uint32_t at) const;
  uint32_t end(uint32_t at) const;

  /// The next boundary after a position below size(), and before one above 0.
  uint32_t next(uint32_t at) const { return end(at + 1); }
  uint32_t previous(uint32_t at) const { return begin(at - 1); }

  /// The character that starts at a boundary below size().
  Character at(uint32_t boundary) const;

 private:
  bool isAscii(uint32_t at) const { return static_cast<uint8_t>(row_[at]) < 0x80; }
  uint32_t codePointBegin(uint32_t at) const;
  bool takesMarks(uint32_t end) const;

  SplitText row_;
  bool utf8_;
};

}  // namespace merivane
