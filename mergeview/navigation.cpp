#include "mergeview/navigation.h"

#include <optional>

#include "mergeview/differences.h"
#include "mergeview/words.h"

namespace merivane {
namespace {

uint32_t lastRow(const ViewState& view) { return view.rowCount() - 1; }

uint32_t rowBy(const ViewState& view, int64_t distance) {
  const int64_t row = view.caretRow() + distance;
  return row < 0 ? 0 : row > lastRow(view) ? lastRow(view) : static_cast<uint32_t>(row);
}

/// The active side's text in the caret's row, without its line end.
std::string_view caretLine(ViewState& view) {
  const int side = view.activeSide();
  return view.file(side).text.view(view.rowStart(side, view.caretRow()), view.lineEnd(side, view.caretRow()));
}

void moveLeft(ViewState& view, bool word, bool extend) {
  const int side = view.activeSide();
  const uint32_t row = view.caretRow();
  const uint32_t start = view.rowStart(side, row);
  const uint32_t at = view.caretPos(side) - start;
  if (at > 0) {
    const bool inLine = at <= view.lineEnd(side, row) - start;
    view.moveCaret(row, start + (word && inLine ? previousWordStart(caretLine(view), at) : at - 1), extend);
  } else if (row > 0) {
    view.moveCaret(row - 1, view.lineEnd(side, row - 1), extend);
  } else {
    view.moveCaret(row, start, extend);
  }
}

void moveRight(ViewState& view, bool word, bool extend) {
  const int side = view.activeSide();
  const uint32_t row = view.caretRow();
  const uint32_t start = view.rowStart(side, row);
  const uint32_t position = view.caretPos(side);
  if (position < view.lineEnd(side, row)) {
    view.moveCaret(row, word ? start + nextWordStart(caretLine(view), position - start) : position + 1,
                   extend);
  } else if (row < lastRow(view)) {
    view.moveCaret(row + 1, view.rowStart(side, row + 1), extend);
  } else {
    view.moveCaret(row, position, extend);
  }
}

void moveToRowStart(ViewState& view, uint32_t row, bool extend) {
  view.moveCaret(row, view.rowStart(view.activeSide(), row), extend);
}

void moveToRowEnd(ViewState& view, uint32_t row, bool extend) {
  view.moveCaret(row, view.lineEnd(view.activeSide(), row), extend);
}

bool goTo(ViewState& view, const std::optional<RowRange>& difference) {
  if (difference) view.goToBlock(*difference);
  return difference.has_value();
}

}  // namespace

void pressKey(ViewState& view, Key key, bool ctrl, bool shift) {
  const int64_t page = view.visibleRows();
  const int64_t top = view.topRow();
  switch (key) {
    case Key::left:
      moveLeft(view, ctrl, shift);
      break;
    case Key::right:
      moveRight(view, ctrl, shift);
      break;
    case Key::up:
      if (ctrl && !shift) return view.scrollTo(top - 1);
      view.moveCaretVertically(rowBy(view, -1), shift);
      break;
    case Key::down:
      if (ctrl && !shift) return view.scrollTo(top + 1);
      view.moveCaretVertically(rowBy(view, 1), shift);
      break;
    case Key::home:
      if (ctrl) view.scrollTo(0);
      moveToRowStart(view, ctrl ? 0 : view.caretRow(), shift);
      break;
    case Key::end:
      if (ctrl) view.scrollTo(view.maxTopRow());
      moveToRowEnd(view, ctrl ? lastRow(view) : view.caretRow(), shift);
      break;
    case Key::pageUp:
      view.scrollTo(top - page);
      if (ctrl) return;
      view.moveCaretVertically(rowBy(view, -page), shift);
      break;
    case Key::pageDown:
      view.scrollTo(top + page);
      if (ctrl) return;
      view.moveCaretVertically(rowBy(view, page), shift);
      break;
  }
  view.showCaret();
}

void selectAll(ViewState& view) {
  moveToRowStart(view, 0, false);
  view.scrollTo(view.maxTopRow());
  moveToRowEnd(view, lastRow(view), true);
  view.showCaret();
}

void switchPane(ViewState& view) {
  view.activate(1 - view.activeSide());
  view.showCaret();
}

bool goToPreviousDifference(ViewState& view) {
  return goTo(view, previousDifference(view.model(), view.caretRow(), view.options().wrapAround));
}

bool goToNextDifference(ViewState& view) {
  return goTo(view, nextDifference(view.model(), view.caretRow(), view.options().wrapAround));
}

CaretNumbers caretNumbers(const ViewState& view) {
  // A filler's line number wraps around to 0.
  const uint32_t line = view.model().lineNumber(view.activeSide(), view.caretRow()) + 1;
  return {view.caretRow() + 1, line, view.caretColumn() + 1};
}

}  // namespace merivane
