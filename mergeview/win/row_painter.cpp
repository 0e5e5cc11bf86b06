#include "mergeview/win/row_painter.h"

#include <algorithm>

namespace merivane {

void RowPainter::paint(const RowSource& source, uint32_t row, const RowWindow& window, const PaneEdges& pane,
                       int y) {
  layOutRow(source, row, window, layout_);
  fill(pane.paneLeft, pane.textLeft, y, layout_.background);
  if (!layout_.number.empty() || !layout_.mark.empty()) paintGutter(pane, y);
  paintText(pane, y);
  fill(pane.textLeft + std::max(layout_.textEnd, 0), pane.paneRight, y, layout_.background);
  if (layout_.selectionLeft < layout_.selectionRight) {
    const RECT selected = {pane.textLeft + layout_.selectionLeft, y, pane.textLeft + layout_.selectionRight,
                           y + fonts_.metrics.lineHeight};
    InvertRect(dc_, &selected);
  }
}

void RowPainter::fill(int left, int right, int y, Colour colour) {
  const RECT area = {left, y, right, y + fonts_.metrics.lineHeight};
  if (left >= right) return;
  SetBkColor(dc_, colour);
  ExtTextOutA(dc_, 0, 0, ETO_OPAQUE, &area, "", 0, nullptr);
}

void RowPainter::paintGutter(const PaneEdges& pane, int y) {
  const SelectedObject font(dc_, fonts_.numbers.get());
  const RECT gutter = {pane.paneLeft, y, pane.textLeft, y + fonts_.metrics.lineHeight};
  SetTextColor(dc_, layout_.foreground);
  const int mode = SetBkMode(dc_, TRANSPARENT);
  const auto write = [&](const std::string& text, const auto& leftOf) {
    const auto length = static_cast<int>(text.size());
    SIZE size = {};
    GetTextExtentPoint32A(dc_, text.c_str(), length, &size);
    ExtTextOutA(dc_, leftOf(size.cx), y + 1 + (fonts_.metrics.lineHeight - size.cy) / 2, ETO_CLIPPED, &gutter,
                text.c_str(), static_cast<UINT>(length), nullptr);
  };
  write(layout_.mark, [&](LONG) { return pane.paneLeft + markIndent(fonts_.metrics); });
  write(layout_.number, [&](LONG width) { return pane.textLeft - gutterPadding(fonts_.metrics) - width; });
  SetBkMode(dc_, mode);
}

void RowPainter::paintText(const PaneEdges& pane, int y) {
  const SelectedObject font(dc_, fonts_.text.get());
  // The layout decides where each character stands, not the device's rounding.
  advances_.clear();
  for (const char c : layout_.text) advances_.push_back(fonts_.metrics.widthOf(c));
  for (const TextRun& run : layout_.runs) {
    const RECT area = {std::max(pane.textLeft + run.left, pane.textLeft), y,
                       std::min(pane.textLeft + run.right, pane.paneRight), y + fonts_.metrics.lineHeight};
    SetTextColor(dc_, run.foreground);
    SetBkColor(dc_, run.background);
    ExtTextOutA(dc_, pane.textLeft + run.left, y, ETO_OPAQUE | ETO_CLIPPED, &area,
                layout_.text.data() + run.begin, run.end - run.begin, advances_.data() + run.begin);
  }
}

}  // namespace merivane
