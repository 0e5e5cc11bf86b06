#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "display/characters.h"
#include "display/row_look.h"
#include "display/writing_direction.h"
#include "mergeview/font_metrics.h"

namespace merivane {

/// A place between two characters of a line, or at its start or end.
struct LinePlace {
  uint32_t position = 0;  // in the line's bytes
  uint32_t column = 0;    // display columns of what is written before it
  int64_t x = 0;          // pixels from the line's left to where it shows
};

/// A run of a line's characters and where it shows.
struct ShownRun {
  DirectionRun run;
  LinePlace begin;   // its x counts the pixels of what is written before it
  int64_t left = 0;  // pixels
  int64_t width = 0;

  /// Where a caret shows after so many pixels of the line.
  int64_t shownX(int64_t x) const {
    return run.rightToLeft ? left + width - (x - begin.x) : left + (x - begin.x);
  }

  /// The way back.
  int64_t writtenX(int64_t shown) const {
    return run.rightToLeft ? begin.x + (left + width - shown) : begin.x + (shown - left);
  }
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
/// What is written from right to left shows so; a caret stands where the character after it begins, at the
/// line's end where the last one ends.
///
/// Finding a place takes one fast pass over the line up to it, at memory speed with a fixed pitch font; over
/// all of a line with a part that goes from right to left.
class LineRuler {
 public:
  LineRuler() : LineRuler(FontMetrics(), kDefaultTabStop, false) {}

  /// White space, when shown, has its own glyphs, whose widths differ in a proportional font.
  LineRuler(const FontMetrics& font, uint32_t tabStop, bool showWhiteSpace);

  const FontMetrics& font() const { return font_; }

  /// The pixels that no byte of a line takes more of.
  int32_t widestByte() const { return widestByte_; }

  /// The runs of a line from left to right; empty for one that goes from left to right as a whole.
  std::vector<ShownRun> shownRuns(const RowCharacters& line) const;

  /// The pixels that a line takes.
  int64_t widthOf(const RowCharacters& line) const;

  /// Moves a place over the character after it, its x by the pixels that this takes.
  void step(LinePlace& place, const Character& character) const;

  /// Appends what the character after a place of a line shows as: all that step() moves over.
  void appendGlyphs(Glyphs& glyphs, const RowCharacters& line, const LinePlace& place,
                    const Character& character) const;

  /// The place at the boundary at or before a position.
  LinePlace placeAtPosition(const RowCharacters& line, uint32_t position) const;

  /// The place before the character that shows at `x`, and the line's start or end where none does.
  LinePlace placeBeforeX(const RowCharacters& line, int64_t x) const;

  /// The last place up to which no more than `x` pixels are written.
  LinePlace writtenBeforeX(const RowCharacters& line, int64_t x) const;

  /// The place nearest to `x`.
  LinePlace placeNearestX(const RowCharacters& line, int64_t x) const;

 private:
  LinePlace writtenNearestX(const RowCharacters& line, int64_t x) const;
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
