#include "mergeview/win/pane_painter.h"

#include <algorithm>

namespace merivane {

void PanePainter::paintRows(const RowSource& source, RowRange rows, const RowWindow& window,
                            const PaneEdges& pane, int y) {
  for (uint32_t row = rows.begin; row < rows.end; ++row) {
    layOutRow(source, row, window, layout_);
    paintRow(pane, y);
    y += fonts_.metrics.lineHeight;
  }
}

void PanePainter::paintRow(const PaneEdges& pane, int y) {
  const LONG bottom = y + fonts_.metrics.lineHeight;
  fill({pane.paneLeft, y, pane.textLeft, bottom}, layout_.background);
  if (!layout_.number.empty() || !layout_.mark.empty()) paintGutter(pane, y);
  paintText(pane, y);
  fill({pane.textLeft + std::max(layout_.textEnd, 0), y, pane.paneRight, bottom}, layout_.background);
  if (layout_.cut) paintCut(pane, y);
  for (const SelectedPart& part : layout_.selected) {
    const RECT selected = {pane.textLeft + part.left, y, pane.textLeft + part.right, bottom};
    InvertRect(dc_, &selected);
  }
}

void PanePainter::fill(const RECT& area, Colour colour) {
  if (area.left >= area.right || area.top >= area.bottom) return;
  SetBkColor(dc_, colour);
  ExtTextOutA(dc_, 0, 0, ETO_OPAQUE, &area, "", 0, nullptr);
}

void PanePainter::paintGutter(const PaneEdges& pane, int y) {
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

void PanePainter::paintText(const PaneEdges& pane, int y) {
  const SelectedObject font(dc_, fonts_.text.get());
  // The layout decides where each character stands, not the device's rounding or another font with the glyph.
  const Glyphs& glyphs = layout_.glyphs;
  const auto* const units = reinterpret_cast<const wchar_t*>(glyphs.units.data());
  for (const TextRun& run : layout_.runs) {
    const RECT area = {std::max(pane.textLeft + run.left, pane.textLeft), y,
                       std::min(pane.textLeft + run.right, pane.paneRight), y + fonts_.metrics.lineHeight};
    SetTextColor(dc_, run.foreground);
    SetBkColor(dc_, run.background);
    const UINT direction = run.rightToLeft ? ETO_RTLREADING : 0;
    ExtTextOutW(dc_, pane.textLeft + run.left, y, ETO_OPAQUE | ETO_CLIPPED | direction, &area,
                units + run.begin, run.end - run.begin, glyphs.advances.data() + run.begin);
  }
}

/// A triangle at the pane's edge, on a margin of its own: what it takes the place of is cut off anyway.
void PanePainter::paintCut(const PaneEdges& pane, int y) {
  const LONG height = fonts_.metrics.lineHeight;
  const LONG left = std::max<LONG>(pane.paneRight - height / 2, pane.textLeft);
  fill({left, y, pane.paneRight, y + height}, layout_.background);
  const LONG indent = (pane.paneRight - left) / 4;
  polygon({{left + indent, y + height / 4},
           {pane.paneRight - 1, y + height / 2},
           {left + indent, y + height - height / 4}},
          layout_.foreground);
}

void PanePainter::paintArrows(const DiffModel& model, const RowColours& colours, const GapWindow& gap) {
  std::vector<POINT> corners;
  for (const DiffArrow& arrow : diffArrows(model, colours, gap)) {
    corners.clear();
    for (const GapPoint& corner : arrow.corners) corners.push_back({corner.x, corner.y});
    polygon(corners, arrow.colour);
  }
}

/// Without a pen, which would stand out; a polygon then lacks its last column and line.
void PanePainter::polygon(const std::vector<POINT>& corners, Colour colour) {
  const Brush brush(CreateSolidBrush(colour));
  const SelectedObject pen(dc_, GetStockObject(NULL_PEN));
  const SelectedObject selected(dc_, brush.get());
  Polygon(dc_, corners.data(), static_cast<int>(corners.size()));
}

}  // namespace merivane
