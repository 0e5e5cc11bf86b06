#pragma once

#include <cstdint>

#include "base/byte_array.h"
#include "engine/row_store.h"
#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"

namespace merivane {

enum class EditKind : int32_t { insertion = 1, overwrite = 2, deletion = 3, merge = 4 };

/// What an action does to one side's text.
struct Edit {
  EditKind kind = EditKind::insertion;
  int side = 0;
  uint32_t start = 0;
  uint32_t removed = 0;  // how many bytes go
  ByteArray inserted;
  uint32_t caretAfter = 0;  // on the active side
  RowRange from;            // as TextChange has it
};

/// Makes an edit, shows it and records it. False when memory runs out, and the user has been told: texts,
/// rows, caret and history are then as they were.
bool performEdit(ViewState& view, UndoHistory& history, Edit&& edit);

}  // namespace merivane
