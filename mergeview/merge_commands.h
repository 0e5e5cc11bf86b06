#pragma once

#include <cstdint>
#include <optional>

#include "engine/diff_model.h"
#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"

namespace merivane {

/// Whether the caret row, or the difference it stands in, can be copied to a side: that side is writable and
/// the other one has lines that it lacks. No row, for a caret outside the rows, has none.
constexpr bool canCopyTo(int side, bool readOnly, std::optional<RowStatus> row) {
  return !readOnly && row && *row != RowStatus::same && fillerSide(*row) != 1 - side;
}

/// Whether the caret row, or its block, can be deleted on a side: that side is writable and has the lines.
constexpr bool canDeleteOn(int side, bool readOnly, std::optional<RowStatus> row) {
  return !readOnly && !(row && fillerSide(*row) == side);
}

/// What a merge command acts on: the caret's row, or the run of rows of one status around it.
enum class BlockKind { line, difference };

/// Rows of one status, and the text that they hold on each side.
struct Block {
  RowStatus status = RowStatus::same;
  RowRange rows;
  uint32_t start[2] = {0, 0};
  uint32_t end[2] = {0, 0};
};

Block caretBlock(const ViewState& view, BlockKind kind);

/// Copies the block over its counterpart on side `to`. Does nothing where canCopyTo() forbids it.
void copyBlock(ViewState& view, UndoHistory& history, BlockKind kind, int to);

/// Deletes the block on the active side. Does nothing where canDeleteOn() forbids it.
void deleteBlock(ViewState& view, UndoHistory& history, BlockKind kind);

/// Puts the block's text of the active side on the clipboard; that of a filler is empty.
void blockToClipboard(ViewState& view, BlockKind kind);

}  // namespace merivane
