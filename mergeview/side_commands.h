#pragma once

#include "mergeview/edited_file.h"
#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"

namespace merivane {

/// A side as a copy of the other: its text with that one's line ends, and the rows of two equal sides. It has
/// no path yet.
struct SideCopy {
  EditedFile file;
  DiffModel model;
};

/// Prepares the copy of the other side that a side may become. False when memory runs out.
bool copyOtherSide(ViewState& view, int side, SideCopy& copy);

/// Puts a copy in a side's place, after its file was written: the history goes, as nothing leads back.
void takeCopy(ViewState& view, UndoHistory& history, int side, SideCopy&& copy);

/// Makes a side's text a copy of the other as an edit like any other, to be undone or saved. When memory runs
/// out the user is told and nothing has changed.
void copyAsEdit(ViewState& view, UndoHistory& history, int side);

/// Exchanges the two sides: texts, what belongs to them, the caret's side, what can be undone and the
/// modified marks. They are compared anew, so that the rows are those of a comparison made that way round.
/// False when memory runs out; nothing has changed then.
bool switchSides(ViewState& view, UndoHistory& history);

}  // namespace merivane
