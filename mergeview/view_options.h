#pragma once

#include <cstdint>

#include "display/line_numbers.h"
#include "display/row_colours.h"

namespace merivane {

/// The settings that decide how the panes look and how one moves in them.
struct ViewOptions {
  uint32_t tabStop = 4;  // columns, 1 to 16
  bool showWhiteSpace = false;
  LineNumbers lineNumbers = LineNumbers::none;
  bool highlightChanges = true;  // marks the differing characters of changed rows
  bool wrapAround = true;        // previous and next difference go on at the other end
  bool syncScroll = true;        // both panes scroll sideways together
  RowColours colours;
  Colour textColour = 0x000000;
  Colour readOnlyColour = 0x606060;  // of the text of a side that may not be edited
};

}  // namespace merivane
