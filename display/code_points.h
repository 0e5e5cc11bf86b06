#pragma once

#include <cstdint>

namespace merivane {

/// How a code point takes part in a line of both writing directions; those without a say of their own, such
/// as blanks and most signs, are neutral (Unicode Standard Annex 9).
enum class BidiClass : uint8_t {
  neutral,
  left,
  right,
  arabicLetter,
  europeanNumber,
  arabicNumber,
  europeanSeparator,
  europeanTerminator,
  commonSeparator,
  mark,
};

/// What the Unicode character database says of a code point.
class CodePointProperties {
 public:
  explicit constexpr CodePointProperties(uint8_t bits) : bits_(bits) {}

  /// The columns that it takes on a grid of fixed pitch: 2 for what is wide in East Asia, 0 for what is
  /// written into the character before it, such as combining marks and format characters; else 1.
  constexpr uint32_t columns() const { return bits_ & 3u; }

  /// Whether it makes words: letters of all scripts, their marks, digits and "_".
  constexpr bool isWord() const { return (bits_ & 4u) != 0; }
  constexpr bool isBlank() const { return (bits_ & 8u) != 0; }
  constexpr BidiClass bidiClass() const { return static_cast<BidiClass>(bits_ >> 4); }

 private:
  uint8_t bits_;
};

/// Of any number; one that is no code point has the properties of the last one.
CodePointProperties propertiesOf(char32_t codePoint);

/// Simple case folding: what differs in case alone folds to the same.
char32_t foldedCase(char32_t codePoint);

}  // namespace merivane
