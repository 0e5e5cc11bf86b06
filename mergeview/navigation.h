#pragma once

#include <cstdint>
#include <optional>

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

/// The difference before, or after, the block around a row; with `wrap` from the other end when there is
/// none. If the row's own block is all that is left, that; else none.
std::optional<RowRange> previousDifference(const DiffModel& model, uint32_t row, bool wrap);
std::optional<RowRange> nextDifference(const DiffModel& model, uint32_t row, bool wrap);

/// The difference that a row is in, else the nearer of those around it; of two as near the one before.
std::optional<RowRange> nearestDifference(const DiffModel& model, uint32_t row);

/// Goes to the start of the difference before or after the caret's, which comes into view with the first of
/// its marks. False when there is none, and nothing changes.
bool goToPreviousDifference(ViewState& view);
bool goToNextDifference(ViewState& view);

/// Goes to where the next, or previous, run of differing characters begins in the changed rows of the active
/// side; past the last or first one as the differences do. False when there is none, and nothing changes.
bool goToPreviousMark(ViewState& view);
bool goToNextMark(ViewState& view);

}  // namespace merivane
