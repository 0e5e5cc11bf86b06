#include "tests/support/edit_run.h"

#include <utility>

#include "mergeview/merge_commands.h"
#include "mergeview/merge_rules.h"
#include "mergeview/navigation.h"
#include "mergeview/side_commands.h"
#include "tests/support/comparison_oracle.h"

namespace merivane {

bool QuietHost::setClipboardText(std::string_view text) {
  if (clipboard.assign(text)) return true;
  reportOutOfMemory();
  return false;
}

bool QuietHost::clipboardText(ByteArray& text) {
  if (text.assign(clipboard.view())) return true;
  reportOutOfMemory();
  return false;
}

EditRun::EditRun(std::string_view left, std::string_view right, const CompareOptions& options)
    : view_(std::make_unique<ViewState>(host_)), first_{std::string(left), std::string(right)} {
  view_->setCompareOptions(options);
  view_->resize(800, 160);
  FileComparison comparison;
  if (comparison.documents[0].text.assign(left) && comparison.documents[1].text.assign(right) &&
      compareTexts(left, right, options, nullptr, comparison.model) == Result::success) {
    view_->take(std::move(comparison), AfterComparison::top);
  }
}

void EditRun::step(const Choice& below) {
  ViewState& view = *view_;
  switch (below(8)) {
    case 0: {
      const uint32_t row = below(view.rowCount());
      view.moveCaret(row, view.rowStart(view.activeSide(), row) + below(9), below(4) == 0);
      break;
    }
    case 1:
      pressKey(view, static_cast<Key>(below(8)), below(4) == 0, below(2) == 0);
      break;
    case 2:
      if (below(2) == 0) switchPane(view);
      if (below(2) == 0) goToNextDifference(view);
      break;
    case 3:
      if (below(2) == 0) history_.undo();
      if (below(3) == 0) history_.redo();
      if (below(40) == 0) {
        switchSides(view, history_);
        std::swap(first_[0], first_[1]);
      }
      break;
    case 4:
      merge(below);
      break;
    default:
      edit(below);
  }
}

void EditRun::edit(const Choice& below) {
  constexpr std::string_view typed = "aab \t\r\r\b";
  Editor editor(*view_, history_);
  switch (below(12)) {
    case 0:
      editor.backspace();
      break;
    case 1:
      editor.deleteForward();
      break;
    case 2:
      editor.deleteRow();
      break;
    case 3:
      editor.deleteToLineEnd();
      break;
    case 4:
      editor.cut();
      break;
    case 5:
      editor.copy();
      break;
    case 6:
      editor.paste();
      break;
    case 7:
      view_->toggleOverwrite();
      break;
    default:
      editor.characterInput(typed[below(typed.size())], static_cast<int>(1 + below(2)), false);
  }
}

void EditRun::merge(const Choice& below) {
  const BlockKind kind = below(2) == 0 ? BlockKind::line : BlockKind::difference;
  switch (below(4)) {
    case 0:
      deleteBlock(*view_, history_, kind);
      break;
    case 1:
      blockToClipboard(*view_, kind);
      break;
    default:
      copyBlock(*view_, history_, kind, static_cast<int>(below(2)));
  }
}

bool EditRun::mergeAll(int to, const Choice& below) {
  const DiffModel& model = view_->model();
  const uint32_t anyOrder = model.rowCount(), limit = 10 * (model.rowCount() + 10);
  for (uint32_t done = 0; model.differingRows() > 0; ++done) {
    if (done == limit) return false;
    if (below(2) == 0) view_->activate(1 - view_->activeSide());
    const auto next = [&model](uint32_t row, auto isSought) {
      for (uint32_t i = 0; i < model.rowCount() && !isSought(model.status(row)); ++i) {
        row = (row + 1) % model.rowCount();
      }
      return row;
    };
    uint32_t row = next(below(model.rowCount()), [](RowStatus status) { return status != RowStatus::same; });
    // A last line without a line end gets one where it is copied before others, and is then a difference
    // again. That can go round and round unless those others go first.
    if (done >= anyOrder) row = next(row, [to](RowStatus status) { return fillerSide(status) == 1 - to; });
    const bool copies = canCopyTo(to, false, model.status(row));
    if (!copies) view_->activate(to);
    view_->goToRow(row);
    const BlockKind kind = below(2) == 0 ? BlockKind::line : BlockKind::difference;
    if (copies) {
      copyBlock(*view_, history_, kind, to);
    } else {
      deleteBlock(*view_, history_, kind);
    }
    if (!fault().empty()) return false;
  }
  return true;
}

std::string EditRun::fault() const {
  const ViewState& view = *view_;
  const std::string rows = comparisonFault(view.model(), text(0), text(1), view.compareOptions());
  if (!rows.empty()) return rows;
  const int side = view.activeSide();
  const uint32_t row = view.caretRow();
  if (row >= view.rowCount()) return "the caret beyond the rows";
  const uint32_t caret = view.caretPos(side);
  if (caret < view.rowStart(side, row) || caret > view.rowEnd(side, row)) return "the caret outside its row";
  const uint32_t column =
      view.ruler().placeAtPosition(view.text(side), view.rowStart(side, row), caret).column;
  if (column != view.caretColumn()) return "the caret in another column";
  if (view.anchor() > view.text(side).size()) return "the anchor outside the text";
  if (view.caretPos(1 - side) > view.text(1 - side).size()) return "the other caret outside its text";
  if (view.topRow() > view.maxTopRow()) return "scrolled beyond the rows";
  return {};
}

std::string EditRun::state() const {
  const ViewState& view = *view_;
  std::string state = text(0) + '#' + text(1) + '#';
  for (uint32_t row = 0; row < view.rowCount(); ++row) {
    state += static_cast<char>('0' + static_cast<int>(view.model().status(row)));
    for (const int side : {0, 1}) state += ' ' + std::to_string(view.model().position(side, row));
  }
  for (const uint32_t number : {view.caretRow(), view.caretPos(0), view.caretPos(1), view.anchor()}) {
    state += '#' + std::to_string(number);
  }
  for (const bool flag : {view.activeSide() == 1, history_.canUndo(), history_.canRedo(),
                          history_.isModified(0), history_.isModified(1)}) {
    state += flag ? '+' : '-';
  }
  return state;
}

std::string EditRun::undoAndRedoAll() {
  while (history_.redo()) {
    if (std::string wrong = fault(); !wrong.empty()) return "first redo: " + wrong;
  }
  const std::string last[2] = {text(0), text(1)};
  const bool modified[2] = {history_.isModified(0), history_.isModified(1)};
  while (history_.undo()) {
    if (std::string wrong = fault(); !wrong.empty()) return "undo: " + wrong;
  }
  for (const int side : {0, 1}) {
    if (text(side) != first_[side]) return "undoing does not lead back";
    if (history_.isModified(side)) return "modified at the start";
  }
  while (history_.redo()) {
    if (std::string wrong = fault(); !wrong.empty()) return "redo: " + wrong;
  }
  for (const int side : {0, 1}) {
    if (text(side) != last[side]) return "redoing does not lead to the end";
    if (history_.isModified(side) != modified[side]) return "another modified mark at the end";
  }
  return {};
}

}  // namespace merivane
