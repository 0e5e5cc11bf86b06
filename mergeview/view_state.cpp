#include "mergeview/view_state.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace merivane {
namespace {

/// Pixel coordinates stay well within what drawing takes.
int32_t toPixels(int64_t x) {
  constexpr int64_t limit = 1 << 30;
  return static_cast<int32_t>(std::clamp<int64_t>(x, -limit, limit));
}

}  // namespace

ViewState::ViewState(ViewHost& host) : host_(host) {
  pair_.model.addRow(RowStatus::same, 0, 0);
  pair_.model.numberLines();
}

void ViewState::take(FileComparison&& comparison, std::array<std::string, 2>&& paths, AfterComparison after) {
  const uint32_t anchorRow = rowOf(activeSide_, anchor_);
  const int64_t anchorX = placeAt(activeSide_, anchorRow, anchor_).x;
  const int64_t caretX = caret_.x;
  for (const int side : {0, 1}) {
    TextDocument& document = comparison.documents[side];
    EditedFile& edited = file(side);
    edited.text.take(std::move(document.text));
    edited.lineEndKind = document.lineEndKind;
    edited.encoding = document.encoding;
    edited.mixedLineEnds = document.mixedLineEnds;
    edited.readOnly = document.readOnly;
    edited.stamp = document.stamp;
    edited.path = std::move(paths[static_cast<size_t>(side)]);
  }
  pair_.model = std::move(comparison.model);
  pair_.rowsOfOptions = true;
  const uint32_t lastRow = rowCount() - 1;
  if (after != AfterComparison::keepPlace) {
    restart(activeSide_);
    if (after == AfterComparison::top) return;
    uint32_t row = 0;
    while (row < lastRow && model().status(row) == RowStatus::same) ++row;
    if (model().status(row) != RowStatus::same) goToBlock(model().blockAround(row));
    return;
  }
  remeasure();
  otherCaretPos_ = 0;
  caretRow_ = std::min(caretRow_, lastRow);
  caret_ = placeInRow(activeSide_, caretRow_, caretX);
  anchor_ = placeInRow(activeSide_, std::min(anchorRow, lastRow), anchorX).position;
  desiredX_ = caret_.x;
  layOut();
  changes_.everything = true;
}

void ViewState::restart(int side) {
  activeSide_ = side;
  caretRow_ = topRow_ = hScroll_[0] = hScroll_[1] = 0;
  caret_ = {};
  otherCaretPos_ = anchor_ = 0;
  desiredX_ = 0;
  remeasure();
  layOut();
  changes_.everything = true;
}

void ViewState::swapSides(DiffModel&& model) {
  std::swap(pair_.files[0], pair_.files[1]);
  pair_.model = std::move(model);
  pair_.rowsOfOptions = true;
  std::swap(hScroll_[0], hScroll_[1]);
  std::swap(widest_[0], widest_[1]);
  activeSide_ = 1 - activeSide_;
  placeCaret(activeSide_, {caret_.position, anchor_});
  layOut();
  changes_.everything = true;
}

void ViewState::setOptions(const ViewOptions& options) {
  if (options == options_) return;
  const bool sameWidths =
      options.tabStop == options_.tabStop && options.showWhiteSpace == options_.showWhiteSpace;
  options_ = options;
  if (!sameWidths) setRuler(font());
  layOut();
  changes_.looks = true;
}

void ViewState::setFont(const FontMetrics& font) {
  if (font == this->font()) return;
  setRuler(font);
  layOut();
  changes_.looks = true;
}

void ViewState::setRuler(const FontMetrics& font) {
  ruler_ = LineRuler(font, options_.tabStop, options_.showWhiteSpace);
  caret_ = placeAt(activeSide_, caretRow_, caret_.position);
  desiredX_ = caret_.x;
  remeasure();
}

void ViewState::setCompareOptions(const CompareOptions& options) {
  if (options != compareOptions_) pair_.rowsOfOptions = false;
  compareOptions_ = options;
}

void ViewState::resize(int32_t width, int32_t height) {
  if (width == width_ && height == height_) return;
  width_ = width;
  height_ = height;
  split_.recompute(width);
  layOut();
  changes_.edges = true;
}

void ViewState::setSplitFromX(int32_t x) {
  split_.setFromX(x, width_);
  layOut();
}

void ViewState::centreSplit() {
  split_.centre(width_);
  layOut();
}

/// Finds the panes' edges, and what is left to scroll to, after anything that they depend on has changed.
void ViewState::layOut() {
  const int32_t gutter = gutterWidth(options_.lineNumbers, options_.rowMarks, rowCount(), font());
  for (const int side : {0, 1}) {
    const PaneEdges edges = paneEdges(side, splitX(), width_, gutter, font());
    changes_.edges |= edges != panes_[side];
    panes_[side] = edges;
  }
  visibleRows_ = static_cast<uint32_t>(std::max(height_ / font().lineHeight, 1));
  const ScrollRanges ranges = {
      rowCount(), visibleRows_, {maxHScroll(0), maxHScroll(1)}, {visibleColumns(0), visibleColumns(1)}};
  changes_.scrollRanges |= ranges != scrollRanges_;
  scrollRanges_ = ranges;
  scrollTo(topRow_);
  for (const int side : {activeSide_, 1 - activeSide_}) scrollColumnsTo(side, hScroll_[side]);
}

uint32_t ViewState::lineEnd(int side, uint32_t row) const {
  const uint32_t end = rowEnd(side, row);
  return end > rowStart(side, row) && text(side).charBefore(end) == '\n' ? end - 1 : end;
}

int32_t ViewState::caretX() const {
  return toPixels(caret_.x - int64_t{hScroll_[activeSide_]} * font().charWidth);
}

int32_t ViewState::caretY() const { return toPixels((int64_t{caretRow_} - topRow_) * font().lineHeight); }

void ViewState::moveCaret(uint32_t row, uint32_t position, bool extend) {
  row = std::min(row, rowCount() - 1);
  const uint32_t start = rowStart(activeSide_, row);
  const uint32_t end = rowEnd(activeSide_, row);
  const uint32_t limit = text(activeSide_).atEnd(end) ? end : lineEnd(activeSide_, row);
  setCaret(row, placeAt(activeSide_, row, std::clamp(position, start, limit)), extend);
  desiredX_ = caret_.x;
}

void ViewState::moveCaretVertically(uint32_t row, bool extend) {
  row = std::min(row, rowCount() - 1);
  setCaret(row, placeInRow(activeSide_, row, desiredX_), extend);
}

void ViewState::activate(int side) {
  if (side == activeSide_) return;
  if (hasSelection()) moveCaret(caretRow_, caret_.position, false);
  otherCaretPos_ = caret_.position;
  activeSide_ = side;
  caret_ = placeInRow(side, caretRow_, desiredX_);
  anchor_ = caret_.position;
  changes_.caret = true;
}

void ViewState::setCaret(uint32_t row, const LinePlace& place, bool extend) {
  const auto between = [](uint32_t a, uint32_t b) { return RowRange{std::min(a, b), std::max(a, b) + 1}; };
  if (extend) {
    if (place.position != caret_.position) changes_.addRows(activeSide_, between(caretRow_, row));
  } else if (hasSelection()) {
    changes_.addRows(activeSide_, between(rowOf(activeSide_, anchor_), caretRow_));
  }
  const uint32_t anchor = extend ? anchor_ : place.position;
  changes_.caret |= row != caretRow_ || place.position != caret_.position || anchor != anchor_;
  caretRow_ = row;
  caret_ = place;
  anchor_ = anchor;
}

RowCharacters ViewState::characters(int side, uint32_t begin, uint32_t end) const {
  return {text(side).stretch(begin, end), isUnicode(file(side).encoding)};
}

uint32_t ViewState::characterEnd(int side, uint32_t row, uint32_t position) const {
  const uint32_t start = rowStart(side, row);
  return start + characters(side, start, rowEnd(side, row)).end(position - start);
}

LinePlace ViewState::placeAt(int side, uint32_t row, uint32_t position) const {
  const uint32_t start = rowStart(side, row);
  const uint32_t end = std::max(lineEnd(side, row), position);  // a line's end goes from the left
  LinePlace place = ruler_.placeAtPosition(characters(side, start, end), position - start);
  place.position += start;
  return place;
}

LinePlace ViewState::placeInRow(int side, uint32_t row, int64_t x) const {
  const uint32_t start = rowStart(side, row);
  LinePlace place = ruler_.placeNearestX(characters(side, start, lineEnd(side, row)), x);
  place.position += start;
  return place;
}

uint32_t ViewState::visibleColumns(int side) const {
  return static_cast<uint32_t>(std::max(panes_[side].textWidth() / font().charWidth, 1));
}

uint32_t ViewState::maxHScroll(int side) const {
  const auto limit = [this](int of) {
    // One column more, for a caret after the last character.
    const int64_t columns = (widest_[of] + font().charWidth - 1) / font().charWidth + 1;
    return std::clamp<int64_t>(columns - visibleColumns(of), 0, std::numeric_limits<int32_t>::max());
  };
  return static_cast<uint32_t>(options_.syncScroll ? std::max(limit(0), limit(1)) : limit(side));
}

void ViewState::scrollTo(int64_t topRow) {
  const auto top = static_cast<uint32_t>(std::clamp<int64_t>(topRow, 0, maxTopRow()));
  if (top == topRow_) return;
  topRow_ = top;
  changes_.scrolled = true;
}

void ViewState::scrollColumnsTo(int side, int64_t column) {
  const auto to = static_cast<uint32_t>(std::clamp<int64_t>(column, 0, maxHScroll(side)));
  const bool both = options_.syncScroll;
  if (hScroll_[side] == to && (!both || hScroll_[1 - side] == to)) return;
  hScroll_[side] = to;
  if (both) hScroll_[1 - side] = to;
  changes_.scrolled = true;
}

void ViewState::showCaret() {
  if (caretRow_ < topRow_) scrollTo(caretRow_);
  if (caretRow_ >= topRow_ + visibleRows_) scrollTo(int64_t{caretRow_} - visibleRows_ + 1);

  showX(activeSide_, caret_.x);
}

void ViewState::showX(int side, int64_t x) {
  const int64_t column = x / font().charWidth;
  const int64_t visible = visibleColumns(side);
  const int64_t first = hScroll_[side];
  if (column < first) scrollColumnsTo(side, column - visible / 4);
  if (column >= first + visible) scrollColumnsTo(side, column - visible + 1 + visible / 4);
}

void ViewState::showPosition(int side, uint32_t row, uint32_t position) {
  showX(side, placeAt(side, row, position).x);
}

void ViewState::showRows(RowRange rows) {
  const int64_t first = rows.begin;
  if (first > topRow_ && rows.end <= topRow_ + visibleRows_) return;
  const int64_t visible = visibleRows_;
  scrollTo(rows.size() <= visible - 2 ? first - (visible - rows.size()) / 2 : first - 1);
}

void ViewState::goToBlock(RowRange block) {
  const uint32_t row = std::min(block.begin, rowCount() - 1);
  showRows({row, std::max(block.end, row + 1)});
  moveCaret(row, rowStart(activeSide_, row), false);
  showCaret();
}

void ViewState::rowsChanged(RowRange rows) {
  for (const int side : {0, 1}) measure(side, rows);
  layOut();
}

void ViewState::toggleOverwrite() {
  overwrite_ = !overwrite_;
  changes_.caret = true;
}

void ViewState::placeCaret(int side, const CaretPlace& place) {
  const CaretPlace before = {caret_.position, anchor_, caretRow_};
  const bool otherSide = side != activeSide_;
  if (otherSide) otherCaretPos_ = caret_.position;
  activeSide_ = side;
  otherCaretPos_ = std::min(otherCaretPos_, text(1 - side).size());
  const bool inFiller =
      place.row < rowCount() && isFiller(side, place.row) && rowStart(side, place.row) == place.position;
  caretRow_ = inFiller ? place.row : rowOf(side, place.position);
  caret_ = placeAt(side, caretRow_, characterEnd(side, caretRow_, place.position));
  anchor_ = place.anchor == place.position ? caret_.position
                                           : characterEnd(side, rowOf(side, place.anchor), place.anchor);
  desiredX_ = caret_.x;
  changes_.caret |= otherSide || before != CaretPlace{caret_.position, anchor_, caretRow_};
}

RowSource ViewState::source(int side, const LineRuler& ruler, const ViewOptions& options) const {
  return {model(), text(side), ruler, options, side, file(side).readOnly, isUnicode(file(side).encoding)};
}

RowWindow ViewState::window(int side) const {
  RowWindow window{int64_t{hScroll_[side]} * font().charWidth, panes_[side].textWidth(), 0, 0};
  if (side == activeSide_) {
    window.selectionBegin = selectionBegin();
    window.selectionEnd = selectionEnd();
  }
  return window;
}

/// Takes in the widths of rows that may turn out the widest so far.
void ViewState::measure(int side, RowRange rows) {
  const int64_t perByte = ruler_.widestByte();
  for (uint32_t row = rows.begin; row < rows.end; ++row) {
    const uint32_t start = rowStart(side, row);
    const uint32_t end = rowEnd(side, row);
    if ((end - start) * perByte <= widest_[side]) continue;
    widest_[side] = std::max(widest_[side], ruler_.widthOf(characters(side, start, end)));
  }
}

void ViewState::remeasure() {
  for (const int side : {0, 1}) {
    widest_[side] = 0;
    measure(side, {0, rowCount()});
  }
}

}  // namespace merivane
