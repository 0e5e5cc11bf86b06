#pragma once

#include <cstdint>

#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"

namespace merivane {

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
