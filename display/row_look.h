#pragma once

#include <cstdint>

#include "display/row_colours.h"
#include "engine/diff_model.h"

namespace merivane {

/// Which number stands before a row: its own, its line's in the file, or none. The setting's values.
enum class LineNumbers : int32_t { rows = 0, lines = 1, none = 2 };

/// The number before a row on a side, from 1; 0 for none.
inline uint32_t shownNumber(LineNumbers kind, const DiffModel& model, int side, uint32_t row) {
  if (kind == LineNumbers::none) return 0;
  if (kind == LineNumbers::rows) return row + 1;
  return model.lineNumber(side, row) + 1;
}
static_assert(kNoLine + 1 == 0, "a filler has no number");

/// The distance of tab stops, in columns.
constexpr uint32_t kMinTabStop = 1;
constexpr uint32_t kMaxTabStop = 16;
constexpr uint32_t kDefaultTabStop = 4;

/// The columns that a tab at `column` takes.
constexpr uint32_t tabColumns(uint32_t column, uint32_t tabStop) { return tabStop - column % tabStop; }

/// What stands for white space that is to be seen: Windows-1252 bytes, and Unicode code points of the same
/// number.
constexpr char kSpaceMark = '\xB7';
constexpr char kTabMark = '\xBB';  // in the first of the tab's columns
constexpr char kLineEndMark = '\xB6';

/// A control character shows as "^" and this letter.
constexpr char controlLetter(char control) { return static_cast<char>(control ^ 0x40); }

/// How the rows of a comparison look, in the panes and in every output.
struct RowLook {
  uint32_t tabStop = kDefaultTabStop;  // kMinTabStop to kMaxTabStop
  bool showWhiteSpace = false;
  LineNumbers lineNumbers = LineNumbers::none;
  RowColours colours;

  bool operator==(const RowLook&) const = default;
};

}  // namespace merivane
