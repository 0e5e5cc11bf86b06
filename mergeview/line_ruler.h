#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "display/characters.h"
#include "display/row_look.h"
#include "mergeview/font_metrics.h"

namespace merivane {

/// A place between two characters of a line, or at its start or end.
struct LinePlace {
  uint32_t position = 0;  // in the line's bytes
  uint32_t column = 0;    // display columns before it
  int64_t x = 0;          // pixels before it
};

/// What is drawn, as UTF-16, and the pixels that each unit takes; none for what is written into the unit
/// before it.
struct Glyphs {
  std::u16string units;
  std::vector<int32_t> advances;

  void clear() { units.clear(), advances.clear(); }
  void add(char32_t codePoint, int32_t advance);
};

/// How the characters of a line show and how much room they take. A tab reaches to the next multiple of the
/// tab stop, any other control character below 32 but "\n" shows as "^" and a letter, and everything else,
/// "\n" included, takes the columns of its character. In a font of fixed pitch a column is as wide as a
/// character of it, whatever font has the glyph; in another, characters beyond the code page take that too.
///
/// Finding a place takes one fast pass over the line up to it, at memory speed with a fixed pitch font.
class LineRuler {
 public:
  LineRuler() : LineRuler(FontMetrics(), kDefaultTabStop, false) {}

  /// White space, when shown, has its own glyphs, whose widths differ in a proportional font.
  LineRuler(const FontMetrics& font, uint32_t tabStop, bool showWhiteSpace);

  const FontMetrics& font() const { return font_; }

  /// The pixels that no byte of a line takes more of.
  int32_t widestByte() const { return widestByte_; }

  /// Moves a place over the character after it.
  void step(LinePlace& place, const Character& character) const;

  /// Appends what the character after a place of a line shows as: all that step() moves over.
  void appendGlyphs(Glyphs& glyphs, const RowCharacters& line, const LinePlace& place,
                    const Character& character) const;

  /// The place at the boundary at or before a position.
  LinePlace placeAtPosition(const RowCharacters& line, uint32_t position) const;

  /// The last place that is not right of `x`; the line's start if all are.
  LinePlace placeBeforeX(const RowCharacters& line, int64_t x) const;

  /// The place nearest to `x`.
  LinePlace placeNearestX(const RowCharacters& line, int64_t x) const;

 private:
  void skip(LinePlace& place, const RowCharacters& line, uint32_t to) const;
  void skipSingles(LinePlace& place, std::string_view characters) const;
  int32_t widthOf(char32_t codePoint, uint32_t columns) const;
  uint32_t tabColumns(uint32_t column) const { return merivane::tabColumns(column, tabStop_); }

  FontMetrics font_;
  uint32_t tabStop_;
  char spaceGlyph_;
  char lineEndGlyph_;
  char tabGlyph_;
  std::array<int32_t, 128> widths_;  // of ASCII as it shows; a tab's is that of its first column
  std::vector<std::pair<char32_t, int32_t>>
      widthsBeyond_;  // of the code page's others, where they differ; sorted
  int32_t widestByte_ = 0;
};

}  // namespace merivane
