#pragma once

#include <cstdint>

#include "mergeview/view_state.h"

namespace merivane {

/// The keys that move the caret or scroll.
enum class Key { left, right, up, down, home, end, pageUp, pageDown };

/// Does what a key does with Ctrl and Shift held or not. Shift extends the selection wherever the caret
/// moves.
void pressKey(ViewState& view, Key key, bool ctrl, bool shift);

/// Selects the active side's text, up to a last "\n".
void selectAll(ViewState& view);

/// Makes the other pane the active one.
void switchPane(ViewState& view);

/// Goes to the start of the difference before or behind the caret's, which comes into view. False when
/// there is none, and nothing changes.
bool goToPreviousDifference(ViewState& view);
bool goToNextDifference(ViewState& view);

/// What the status bar says of the caret. All are one-based; a filler row's line is 0.
struct CaretNumbers {
  uint32_t row;
  uint32_t line;
  uint32_t column;
  bool operator==(const CaretNumbers&) const = default;
};
CaretNumbers caretNumbers(const ViewState& view);

}  // namespace merivane
