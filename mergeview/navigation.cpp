#include "mergeview/navigation.h"

#include <algorithm>
#include <optional>
#include <span>

#include "mergeview/words.h"

namespace merivane {
namespace {

uint32_t lastRow(const ViewState& view) { return view.rowCount() - 1; }

uint32_t rowBy(const ViewState& view, int64_t distance) {
  const int64_t row = view.caretRow() + distance;
  return row < 0 ? 0 : row > lastRow(view) ? lastRow(view) : static_cast<uint32_t>(row);
}

void moveLeft(ViewState& view, bool word, bool extend) {
  const int side = view.activeSide();
  const uint32_t row = view.caretRow();
  const uint32_t start = view.rowStart(side, row);
  const uint32_t at = view.caretPos(side) - start;
  if (at > 0) {
    const bool inLine = at <= view.lineEnd(side, row) - start;
    const RowCharacters line = view.characters(side, start, view.rowEnd(side, row));
    view.moveCaret(row, start + (word && inLine ? previousWordStart(line, at) : line.previous(at)), extend);
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
    const uint32_t at = position - start;
    const RowCharacters line = view.characters(side, start, view.lineEnd(side, row));
    view.moveCaret(row, start + (word ? nextWordStart(line, at) : line.next(at)), extend);
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

bool differs(const DiffModel& model, uint32_t row) { return model.status(row) != RowStatus::same; }

/// The first row of a range that differs, or its end.
uint32_t firstDiffering(const DiffModel& model, RowRange range) {
  uint32_t row = range.begin;
  while (row < range.end && !differs(model, row)) ++row;
  return row;
}

/// The row after the last one of a range that differs, or its begin.
uint32_t lastDifferingEnd(const DiffModel& model, RowRange range) {
  uint32_t end = range.end;
  while (end > range.begin && !differs(model, end - 1)) --end;
  return end;
}

uint32_t blockBegin(const DiffModel& model, uint32_t row) {
  uint32_t begin = row;
  while (begin > 0 && model.status(begin - 1) == model.status(row)) --begin;
  return begin;
}

uint32_t blockEnd(const DiffModel& model, uint32_t row) {
  uint32_t end = row + 1;
  while (end < model.rowCount() && model.status(end) == model.status(row)) ++end;
  return end;
}

std::optional<RowRange> own(const DiffModel& model, uint32_t row) {
  if (!differs(model, row)) return std::nullopt;
  return model.blockAround(row);
}

bool isMarked(std::span<const uint8_t> marks, size_t at) { return (marks[at] & kDiffersMark) != 0; }

bool startsRun(std::span<const uint8_t> marks, size_t at) {
  return isMarked(marks, at) && (at == 0 || !isMarked(marks, at - 1));
}

/// Where the first run of marks from an index on begins, or the last one before it.
std::optional<uint32_t> runFrom(std::span<const uint8_t> marks, size_t at) {
  while (at < marks.size() && !startsRun(marks, at)) ++at;
  return at < marks.size() ? std::optional(static_cast<uint32_t>(at)) : std::nullopt;
}
std::optional<uint32_t> runBefore(std::span<const uint8_t> marks, size_t at) {
  at = std::min(at, marks.size());
  while (at > 0 && !startsRun(marks, at - 1)) --at;
  return at > 0 ? std::optional(static_cast<uint32_t>(at - 1)) : std::nullopt;
}

/// Brings the first mark of a row into view on both sides, on the active one where they scroll together.
void showFirstMark(ViewState& view, uint32_t row) {
  const int active = view.activeSide();
  for (const int side : {1 - active, active}) {
    if (const auto run = runFrom(view.model().marks(row).side(side), 0)) {
      view.showPosition(side, row, view.rowStart(side, row) + *run);
    }
  }
}

bool goTo(ViewState& view, const std::optional<RowRange>& difference) {
  if (!difference) return false;
  view.goToBlock(*difference);
  showFirstMark(view, difference->begin);
  return true;
}

bool goToMark(ViewState& view, uint32_t row, const std::optional<uint32_t>& at) {
  if (!at) return false;
  view.showRows({row, row + 1});
  view.moveCaret(row, view.rowStart(view.activeSide(), row) + *at, false);
  view.showCaret();
  return true;
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

// Each looks at its own block on the one side it searches, so that stepping through all differences looks at
// every row once.

std::optional<RowRange> previousDifference(const DiffModel& model, uint32_t row, bool wrap) {
  if (const uint32_t end = lastDifferingEnd(model, {0, blockBegin(model, row)}); end > 0) {
    return model.blockAround(end - 1);
  }
  if (wrap) {
    const uint32_t last = blockEnd(model, row) - 1;
    const uint32_t end = lastDifferingEnd(model, {last, model.rowCount()});
    if (end > last) return model.blockAround(end - 1);
  }
  return own(model, row);
}

std::optional<RowRange> nextDifference(const DiffModel& model, uint32_t row, bool wrap) {
  const uint32_t rows = model.rowCount();
  if (const uint32_t next = firstDiffering(model, {blockEnd(model, row), rows}); next < rows) {
    return model.blockAround(next);
  }
  if (wrap) {
    const uint32_t begin = blockBegin(model, row);
    const uint32_t next = firstDiffering(model, {0, begin});
    if (next < begin) return model.blockAround(next);
  }
  return own(model, row);
}

std::optional<RowRange> nearestDifference(const DiffModel& model, uint32_t row) {
  if (differs(model, row)) return model.blockAround(row);
  const uint32_t previousEnd = lastDifferingEnd(model, {0, row});
  const uint32_t next = firstDiffering(model, {row, model.rowCount()});
  const bool hasPrevious = previousEnd > 0;
  const bool hasNext = next < model.rowCount();
  if (!hasPrevious && !hasNext) return std::nullopt;
  if (hasPrevious && (!hasNext || row - (previousEnd - 1) <= next - row))
    return model.blockAround(previousEnd - 1);
  return model.blockAround(next);
}

bool goToPreviousDifference(ViewState& view) {
  return goTo(view, previousDifference(view.model(), view.caretRow(), view.options().wrapAround));
}

bool goToNextDifference(ViewState& view) {
  return goTo(view, nextDifference(view.model(), view.caretRow(), view.options().wrapAround));
}

bool goToNextMark(ViewState& view) {
  const int side = view.activeSide();
  const uint32_t rows = view.rowCount(), from = view.caretRow();
  const auto marks = [&](uint32_t row) { return view.model().marks(row).side(side); };
  const uint32_t caret = view.caretPos(side) - view.rowStart(side, from);
  if (goToMark(view, from, runFrom(marks(from), caret + 1))) return true;
  for (uint32_t row = from + 1; row < rows; ++row) {
    if (goToMark(view, row, runFrom(marks(row), 0))) return true;
  }
  for (uint32_t row = 0; view.options().wrapAround && row <= from; ++row) {
    if (goToMark(view, row, runFrom(marks(row), 0))) return true;
  }
  return false;
}

bool goToPreviousMark(ViewState& view) {
  const int side = view.activeSide();
  const uint32_t from = view.caretRow();
  const auto marks = [&](uint32_t row) { return view.model().marks(row).side(side); };
  const uint32_t caret = view.caretPos(side) - view.rowStart(side, from);
  if (goToMark(view, from, runBefore(marks(from), caret))) return true;
  for (uint32_t row = from; row-- > 0;) {
    if (goToMark(view, row, runBefore(marks(row), marks(row).size()))) return true;
  }
  for (uint32_t row = view.rowCount(); view.options().wrapAround && row-- > from;) {
    if (goToMark(view, row, runBefore(marks(row), marks(row).size()))) return true;
  }
  return false;
}

}  // namespace merivane
