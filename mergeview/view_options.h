#pragma once

#include <optional>

#include "display/row_look.h"

namespace merivane {

/// The system's colours in its high contrast, in pairs of a background and what is written on it.
struct HighContrast {
  Colour window;
  Colour windowText;
  Colour highlight;
  Colour highlightText;

  bool operator==(const HighContrast&) const = default;
};

/// The settings that decide how the panes look and how one moves in them.
struct ViewOptions : RowLook {
  bool highlightChanges = true;  // marks the differing characters of changed rows
  bool wrapAround = true;        // previous and next difference go on at the other end
  bool syncScroll = true;        // both panes scroll sideways together
  Colour textColour = 0x000000;
  Colour readOnlyColour = 0x606060;            // of the text of a side that may not be edited
  bool rowMarks = false;                       // before the rows, to tell their kinds where colours do not
  std::optional<HighContrast> highContrast{};  // while it is on

  bool operator==(const ViewOptions&) const = default;
};

}  // namespace merivane
