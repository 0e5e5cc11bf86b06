#include "mergeview/edit_record.h"

#include <memory>
#include <new>
#include <utility>

#include "mergeview/local_comparison.h"

namespace merivane {
namespace {

/// Every action puts some bytes in the place of others, so that all kinds are undone and redone alike.
class EditRecord final : public UndoRecord {
 public:
  EditRecord(ViewState& view, Edit&& edit)
      : UndoRecord(view.activeSide(), edit.side),
        kind_(edit.kind),
        view_(view),
        start_(edit.start),
        inserted_(std::move(edit.inserted)),
        caretBefore_(view.caretPos(view.activeSide())),
        anchorBefore_(view.anchor()),
        rowBefore_(view.caretRow()),
        caretAfter_(edit.caretAfter) {}

  /// Keeps what is to go. False without memory.
  bool keep(uint32_t removed) { return view_.text(side).extract(start_, start_ + removed, removed_); }

  bool perform(RowRange from) {
    const uint32_t anchorAfter = side == activeSide ? caretAfter_ : anchorBefore_;
    return replace(removed_, inserted_, from, {caretAfter_, anchorAfter});
  }

  bool redo() override { return perform({}); }
  bool undo() override { return replace(inserted_, removed_, {}, {caretBefore_, anchorBefore_, rowBefore_}); }

 private:
  struct Caret {
    uint32_t position;
    uint32_t anchor;
    uint32_t filler = kNoLine;
  };

  bool replace(const ByteArray& old, const ByteArray& fresh, RowRange from, const Caret& caret) {
    const TextChange change{side, start_, old.size(), fresh.view(), from};
    const auto changed = changeText(view_.pair(), change, view_.compareOptions());
    if (!changed) {
      view_.host().reportOutOfMemory();
      return false;
    }
    view_.placeCaret(activeSide, caret.position, caret.anchor, caret.filler);
    view_.rowsChanged(changed->compared);
    view_.showCaret();
    const bool allChanged = changed->answer == RowsAnswer::rows || kind_ == EditKind::merge;
    if (allChanged) {
      view_.host().refreshAll();
    } else {
      view_.host().invalidateRows(
          changed->touched, changed->answer == RowsAnswer::text ? static_cast<Panes>(side) : Panes::both);
    }
    return true;
  }

  const EditKind kind_;
  ViewState& view_;
  const uint32_t start_;
  const ByteArray inserted_;
  ByteArray removed_;
  const uint32_t caretBefore_;
  const uint32_t anchorBefore_;
  const uint32_t rowBefore_;
  const uint32_t caretAfter_;
};

/// Null without memory.
std::unique_ptr<EditRecord> makeRecord(ViewState& view, Edit&& edit) {
  const uint32_t removed = edit.removed;
  try {
    auto record = std::make_unique<EditRecord>(view, std::move(edit));
    if (record->keep(removed)) return record;
  } catch (const std::bad_alloc&) {
  }
  view.host().reportOutOfMemory();
  return nullptr;
}

}  // namespace

bool performEdit(ViewState& view, UndoHistory& history, Edit&& edit) {
  const RowRange from = edit.from;
  std::unique_ptr<EditRecord> record = makeRecord(view, std::move(edit));
  if (record == nullptr || !record->perform(from)) return false;
  history.push(std::move(record));
  return true;
}

}  // namespace merivane
