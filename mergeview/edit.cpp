#include "mergeview/edit.h"

#include <utility>

#include "mergeview/local_comparison.h"

namespace merivane {
namespace {

/// Replaces bytes of a record's side and shows what the comparison says looks different. Every action puts
/// some bytes in the place of others, so that all are done, undone and redone alike.
bool replace(ViewState& view, const UndoRecord& record, const ByteArray& old, const ByteArray& fresh,
             RowRange from, const CaretPlace& caret) {
  const int side = record.side;
  const auto changed =
      changeText(view.pair(), {side, record.start, old.size(), fresh.view(), from}, view.compareOptions());
  if (!changed) {
    view.host().reportOutOfMemory();
    return false;
  }
  view.placeCaret(record.activeSide, caret);
  view.rowsChanged(changed->compared);
  view.showCaret();
  ViewChanges& changes = view.changes();
  if (changed->extent == ChangeExtent::rows) {
    changes.everything = true;
    return true;
  }
  changes.addRows(side, changed->touched);
  if (changed->extent == ChangeExtent::marks) changes.addRows(1 - side, changed->touched);
  return true;
}

/// Changes the history and notes that.
void step(ViewState& view, UndoHistory& history, int side, auto&& change) {
  const bool wasModified = history.isModified(side);
  change();
  view.changes().history = true;
  view.changes().modified |= history.isModified(side) != wasModified;
}

}  // namespace

bool performEdit(ViewState& view, UndoHistory& history, Edit&& edit) {
  UndoRecord record;
  record.activeSide = view.activeSide();
  record.side = edit.side;
  record.start = edit.start;
  record.inserted = std::move(edit.inserted);
  record.before = {view.caretPos(record.activeSide), view.anchor(), view.caretRow()};
  record.after = {edit.caretAfter, edit.side == record.activeSide ? edit.caretAfter : view.anchor()};
  if (!view.text(edit.side).extract(edit.start, edit.start + edit.removed, record.removed)) {
    view.host().reportOutOfMemory();
    return false;
  }
  if (!replace(view, record, record.removed, record.inserted, edit.from, record.after)) return false;
  step(view, history, edit.side, [&] { history.push(std::move(record)); });
  return true;
}

bool undo(ViewState& view, UndoHistory& history) {
  if (!history.canUndo()) return false;
  const UndoRecord& record = history.toUndo();
  if (!replace(view, record, record.inserted, record.removed, {}, record.before)) return false;
  step(view, history, record.side, [&] { history.stepBack(); });
  view.changes().everything = true;
  return true;
}

bool redo(ViewState& view, UndoHistory& history) {
  if (!history.canRedo()) return false;
  const UndoRecord& record = history.toRedo();
  if (!replace(view, record, record.removed, record.inserted, {}, record.after)) return false;
  step(view, history, record.side, [&] { history.stepForward(); });
  view.changes().everything = true;
  return true;
}

}  // namespace merivane
