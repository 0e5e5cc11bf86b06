#include "mergeview/edit.h"

#include <utility>

#include "mergeview/local_comparison.h"

namespace merivane {
namespace {

void placeCaret(ViewState& view, const UndoRecord& record, const CaretPlace& caret) {
  view.placeCaret(record.activeSide, caret);
  view.rowsChanged(record.rows);
  view.showCaret();
}

/// Makes the replacement of a record, which takes note of the rows that it cost.
bool replace(ViewState& view, UndoRecord& record, const ByteArray& old, const ByteArray& fresh, RowRange from,
             const CaretPlace& caret) {
  const int side = record.side;
  auto changed =
      changeText(view.pair(), {side, record.start, old.size(), fresh.view(), from}, view.compareOptions());
  if (!changed) return false;
  record.rows = changed->replacing;
  record.replaced = std::move(changed->replaced);
  placeCaret(view, record, caret);
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

bool reportFailure(ViewState& view) {
  view.host().reportOutOfMemory();
  return false;
}

/// Makes the replacement of a record the other way round, with the rows as they were. Where they are not
/// known any more they are found by comparing.
bool goBack(ViewState& view, UndoRecord& record, const ByteArray& old, const ByteArray& fresh,
            const CaretPlace& caret) {
  if (record.replaced.rowCount() == 0) return replace(view, record, old, fresh, {}, caret);
  const TextChange change = {record.side, record.start, old.size(), fresh.view(), {}};
  if (!changeText(view.pair(), change, view.compareOptions(), record.rows, record.replaced)) return false;
  placeCaret(view, record, caret);
  return true;
}

/// Takes a record's action back or does it again, and steps over it.
bool travel(ViewState& view, UndoHistory& history, UndoRecord& record, const ByteArray& old,
            const ByteArray& fresh, const CaretPlace& caret, void (UndoHistory::*over)()) {
  if (!goBack(view, record, old, fresh, caret)) return reportFailure(view);
  step(view, history, record.side, [&] { (history.*over)(); });
  view.changes().everything = true;
  return true;
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
  // Known before the caret is placed between the text's characters.
  TextEncoding& encoding = view.file(edit.side).encoding;
  const TextEncoding before = encoding;
  if (!isAscii(record.inserted.view())) {
    encoding = encodingBeyondAscii(before, view.file(1 - edit.side).encoding);
  }
  if (!view.text(edit.side).extract(edit.start, edit.start + edit.removed, record.removed) ||
      !replace(view, record, record.removed, record.inserted, edit.from, record.after)) {
    encoding = before;
    return reportFailure(view);
  }
  step(view, history, edit.side, [&] { history.push(std::move(record)); });
  return true;
}

bool undo(ViewState& view, UndoHistory& history) {
  if (!history.canUndo()) return false;
  UndoRecord& record = history.toUndo();
  return travel(view, history, record, record.inserted, record.removed, record.before,
                &UndoHistory::stepBack);
}

bool redo(ViewState& view, UndoHistory& history) {
  if (!history.canRedo()) return false;
  UndoRecord& record = history.toRedo();
  return travel(view, history, record, record.removed, record.inserted, record.after,
                &UndoHistory::stepForward);
}

}  // namespace merivane
