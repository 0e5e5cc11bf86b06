#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "display/row_look.h"
#include "mergeview/font_metrics.h"
#include "mergeview/text_buffer.h"

namespace merivane {

/// A place between two characters of a line, or at its start or end.
struct LinePlace {
  uint32_t position = 0;  // in the side's text
  uint32_t column = 0;    // display columns before it
  int64_t x = 0;          // pixels before it
};

/// How the characters of a line show and how much room they take. A tab reaches to the next multiple of the
/// tab stop, any other control character but "\n" shows as "^" and a letter, and everything else, "\n"
/// included, takes one column.
///
/// Finding a place takes one fast pass over the line up to it, at memory speed with a fixed pitch font.
class LineRuler {
 public:
  LineRuler() : LineRuler(FontMetrics(), kDefaultTabStop, false) {}

  /// White space, when shown, has its own glyphs, whose widths differ in a proportional font.
  LineRuler(const FontMetrics& font, uint32_t tabStop, bool showWhiteSpace);

  const FontMetrics& font() const { return font_; }

  /// The pixels that no character takes more of.
  int32_t widestCharacter() const { return widestCharacter_; }

  /// Moves a place over the character after it.
  void step(LinePlace& place, char c) const;

  /// Appends what a character at a column shows as: as many characters as it takes columns.
  void appendGlyphs(std::string& text, char c, uint32_t column) const;

  LinePlace placeAtPosition(const TextBuffer& text, uint32_t lineStart, uint32_t position) const;

  /// The last place of [lineStart, lineEnd] that is not right of `x`; the line's start if all are.
  LinePlace placeBeforeX(const TextBuffer& text, uint32_t lineStart, uint32_t lineEnd, int64_t x) const;

  /// The place nearest to `x`.
  LinePlace placeNearestX(const TextBuffer& text, uint32_t lineStart, uint32_t lineEnd, int64_t x) const;

 private:
  void skip(LinePlace& place, std::string_view characters) const;
  uint32_t tabColumns(uint32_t column) const { return merivane::tabColumns(column, tabStop_); }

  FontMetrics font_;
  uint32_t tabStop_;
  char spaceGlyph_;
  char lineEndGlyph_;
  char tabGlyph_;
  std::array<uint16_t, 256> widths_;  // of each character as it shows; a tab's is that of its first column
  int32_t widestCharacter_ = 0;
};

}  // namespace merivane
