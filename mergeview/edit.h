#pragma once

#include <cstdint>

#include "base/byte_array.h"
#include "engine/row_store.h"
#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"

namespace merivane {

/// What an action does to one side's text.
struct Edit {
  int side = 0;
  uint32_t start = 0;
  uint32_t removed = 0;  // how many bytes go
  ByteArray inserted;
  uint32_t caretAfter = 0;  // on the active side
  RowRange from;            // as TextChange has it
};

// Each of these changes texts, rows, caret and history, and only then tells the view's changes. False when
// memory runs out: the user has been told, and all is as it was.

/// Makes an edit and records it.
bool performEdit(ViewState& view, UndoHistory& history, Edit&& edit);

/// Takes the last action back, or does again what was taken back last. False also where there is none.
bool undo(ViewState& view, UndoHistory& history);
bool redo(ViewState& view, UndoHistory& history);

}  // namespace merivane
