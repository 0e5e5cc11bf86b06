#pragma once

#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"

namespace merivane {

/// The part of replacing a whole side that belongs to the comparison's window.
class ReplaceOwner {
 public:
  virtual ~ReplaceOwner() = default;

  /// Asks whether the file may really be replaced for good.
  virtual bool mayReplace() = 0;

  /// Writes a text to a side's file. False when that fails, of which the owner tells the user.
  virtual bool saveText(int side, const TextBuffer& text, LineEndKind kind) = 0;

  /// What the file holds is now the side's text: it is no longer modified, and its stamp is another.
  virtual void onSideSaved(int side) = 0;
};

/// Whether a whole side may be replaced by the other.
bool canReplaceSide(const ViewState& view, int side);

/// Makes a side a copy of the other, with its line ends, and writes the side's file at once, which is why it
/// cannot be undone and the history is forgotten. When the file cannot be written the copy is an edit like
/// any other, to be undone or saved elsewhere. When memory runs out, before anything is written, the user is
/// told and nothing has changed.
void replaceSide(ViewState& view, UndoHistory& history, int side, ReplaceOwner& owner);

/// Exchanges the two sides: texts, what belongs to them, the caret's side, what can be undone and the
/// modified marks. They are compared anew, so that the rows are those of a comparison made that way round.
/// False when memory runs out, and the user has been told: nothing has changed then.
bool switchSides(ViewState& view, UndoHistory& history);

}  // namespace merivane
