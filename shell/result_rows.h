#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "display/row_colours.h"

namespace merivane {

/// What a row of a folder comparison's results shows.
struct ResultRow {
  std::string name;         // from the compared folder on
  std::string description;  // "(newer, larger)"; empty where there is nothing to say
  std::string operation;    // what was done with the entry, in words; empty for nothing
  std::string path;         // of the file or folder, for its icon
  uint8_t mark = 0;         // the code of what was done; 0 for nothing
  bool isFolder = false;
};

/// What a screen reader says of a row.
std::string spokenRow(const ResultRow& row);

/// How many kinds of marks there are, that for nothing included.
inline constexpr int kMarks = 7;

/// A mark's pair of colours.
struct MarkColours {
  Colour fill = 0xFFFFFF;
  Colour outline = 0;

  bool operator==(const MarkColours&) const = default;
};

/// The colours of the mark for an operation: one pair each for compared, copied to old and copied to new, and
/// one for all deletions.
MarkColours markColours(const RowColours& rows, Colour text, uint8_t operation);

/// A place in a mark, of which each side is ten units long.
struct MarkPoint {
  int x;
  int y;
};

/// The outline of the mark for an operation, so that they can be told apart without colours: a tick, an
/// arrow towards the side that was written, or a cross.
std::span<const MarkPoint> markOutline(uint8_t operation);

}  // namespace merivane
