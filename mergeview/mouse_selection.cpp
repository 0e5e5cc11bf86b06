#include "mergeview/mouse_selection.h"

#include <algorithm>

#include "mergeview/words.h"

namespace merivane {

int sideAt(const ViewState& view, int32_t x) { return x < view.splitX() ? 0 : 1; }

namespace {

/// A point as a row of a side and an x in its text.
struct RowPoint {
  uint32_t row;
  int64_t x;
};

RowPoint rowPoint(const ViewState& view, int side, int32_t x, int32_t y) {
  const FontMetrics& font = view.font();
  const int32_t down = y >= 0 ? y / font.lineHeight : -((font.lineHeight - 1 - y) / font.lineHeight);
  const int64_t row = std::clamp<int64_t>(int64_t{view.topRow()} + down, 0, int64_t{view.rowCount()} - 1);
  return {static_cast<uint32_t>(row),
          x - view.pane(side).textLeft + int64_t{view.hScroll(side)} * font.charWidth};
}

}  // namespace

TextPlace placeAt(const ViewState& view, int side, int32_t x, int32_t y) {
  const auto [row, textX] = rowPoint(view, side, x, y);
  const uint32_t start = view.rowStart(side, row);
  const RowCharacters line = view.characters(side, start, view.lineEnd(side, row));
  return {row, start + view.ruler().placeNearestX(line, textX).position};
}

TextPlace characterAt(const ViewState& view, int side, int32_t x, int32_t y) {
  const auto [row, textX] = rowPoint(view, side, x, y);
  const uint32_t start = view.rowStart(side, row);
  const RowCharacters line = view.characters(side, start, view.lineEnd(side, row));
  return {row, start + view.ruler().placeBeforeX(line, textX).position};
}

void MouseSelection::press(int32_t x, int32_t y, int clicks, bool shift) {
  const int side = sideAt(view_, x);
  const bool extend = shift && side == view_.activeSide();
  const TextPlace anchor{view_.rowOf(view_.activeSide(), view_.anchor()), view_.anchor()};
  view_.activate(side);
  clicks_ = clicks;
  const Unit unit = unitAt(x, y);
  origin_ = extend ? Unit{anchor, anchor} : unit;
  select(unit);
}

void MouseSelection::drag(int32_t x, int32_t y) { select(unitAt(x, y)); }

MouseSelection::Unit MouseSelection::unitAt(int32_t x, int32_t y) const {
  const int side = view_.activeSide();
  const TextPlace place = clicks_ == 1 ? placeAt(view_, side, x, y) : characterAt(view_, side, x, y);
  const uint32_t start = view_.rowStart(side, place.row);
  if (clicks_ == 2) {
    const RowCharacters line = view_.characters(side, start, view_.lineEnd(side, place.row));
    const CharacterRun word = wordAround(line, place.position - start);
    return {{place.row, start + word.begin}, {place.row, start + word.end}};
  }
  if (clicks_ >= 3) {
    // Up to the next row, so that the line end belongs to it.
    const uint32_t next = place.row + 1;
    const TextPlace end = next < view_.rowCount() ? TextPlace{next, view_.rowStart(side, next)}
                                                  : TextPlace{place.row, view_.rowEnd(side, place.row)};
    return {{place.row, start}, end};
  }
  return {place, place};
}

/// Selects from what was clicked to `target`, both included, with the caret at the target's far end.
void MouseSelection::select(const Unit& target) {
  const bool back = target.begin.position < origin_.begin.position;
  const TextPlace& anchor = back ? origin_.end : origin_.begin;
  const TextPlace& farEnd = target.end.position < origin_.end.position ? origin_.end : target.end;
  const TextPlace& caret = back ? target.begin : farEnd;
  if (anchor.position != view_.anchor()) view_.moveCaret(anchor.row, anchor.position, false);
  const bool empty = caret.position == anchor.position;
  view_.moveCaret(caret.row, caret.position, !empty);
  view_.showCaret();
}

}  // namespace merivane
