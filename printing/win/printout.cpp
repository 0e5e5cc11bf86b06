#include "printing/win/printout.h"

#include <utility>

#include "base/message_format.h"
#include "base/win/wide.h"
#include "mergeview/win/pane_painter.h"

namespace merivane {
namespace {

/// Gives a device context back as it was.
class SavedDc {
 public:
  explicit SavedDc(HDC dc) : dc_(dc), state_(SaveDC(dc)) {}
  ~SavedDc() { RestoreDC(dc_, state_); }
  SavedDc(const SavedDc&) = delete;
  SavedDc& operator=(const SavedDc&) = delete;

 private:
  HDC dc_;
  int state_;
};

/// The fonts that a page is drawn in, its lines as high as their characters.
ViewFonts printedFonts(const PrinterDc& dc, const PageDevice& device, const PrintStyle& style) {
  ViewFonts fonts = makeViewFonts(dc.get(), {device.dpiX, device.dpiY}, style.fontFace,
                                  printedFontHeight(style.points, device.dpiY, style.scale));
  fonts.metrics.lineHeight = fonts.characterHeight;
  return fonts;
}

/// Writes within an area, cut off at its edges.
void write(HDC dc, const RECT& area, UINT align, const std::string& text) {
  const std::wstring characters = wide(text);
  SetTextAlign(dc, align | TA_TOP);
  ExtTextOutW(dc, align == TA_RIGHT ? area.right : area.left, area.top, ETO_CLIPPED, &area,
              characters.c_str(), static_cast<UINT>(characters.size()), nullptr);
  SetTextAlign(dc, TA_LEFT | TA_TOP);
}

}  // namespace

Printout::Printout(const PrinterDc& device, const ViewState& view, PrintStyle style)
    : view_(view),
      style_(std::move(style)),
      device_(device.page()),
      fonts_(printedFonts(device, device_, style_)),
      geometry_(pageGeometry(device_, fonts_.metrics.lineHeight)),
      ruler_(fonts_.metrics, style_.options.tabStop, style_.options.showWhiteSpace),
      lines_(view.model(), style_.scope) {
  for (const int side : {0, 1}) {
    panes_[side] = printedPane(side, geometry_.width, view.splitFraction(), style_.options, view.rowCount(),
                               fonts_.metrics);
  }
}

std::string Printout::title() const {
  return formatMessage(TextId::printHeader, {style_.names[0], style_.names[1]});
}

void Printout::paintPage(HDC dc, uint32_t page) const {
  const SavedDc saved(dc);
  OffsetWindowOrgEx(dc, -geometry_.marginLeft, -geometry_.marginTop, nullptr);
  paintFrame(dc, page);
  OffsetWindowOrgEx(dc, 0, -geometry_.linesTop, nullptr);
  IntersectClipRect(dc, 0, 0, geometry_.width, geometry_.linesHeight());
  paintLines(dc, page);
}

/// The header and the footer with their rules.
void Printout::paintFrame(HDC dc, uint32_t page) const {
  const SelectedObject font(dc, fonts_.numbers.get());
  const Pen pen(CreatePen(PS_SOLID, geometry_.penWidth, style_.options.textColour));
  const SelectedObject selected(dc, pen.get());
  SetTextColor(dc, style_.options.textColour);
  SetBkMode(dc, TRANSPARENT);
  const auto rule = [&](int y) {
    MoveToEx(dc, 0, y, nullptr);
    LineTo(dc, geometry_.width, y);
  };
  const auto line = [&](int y) { return RECT{0, y, geometry_.width, y + geometry_.lineHeight}; };
  write(dc, line(0), TA_LEFT, title());
  rule(geometry_.headerRule);
  rule(geometry_.footerRule);
  write(dc, line(geometry_.footerTop), TA_LEFT, style_.time);
  write(dc, line(geometry_.footerTop), TA_RIGHT,
        formatMessage(TextId::pageOf, {int64_t{page}, int64_t{pages()}}));
}

void Printout::paintLines(HDC dc, uint32_t page) const {
  const auto perPage = static_cast<uint32_t>(geometry_.linesPerPage);
  const uint32_t begin = (page - 1) * perPage;
  PanePainter painter(dc, fonts_);
  for (const auto& stretch : lines_.stretches(begin, begin + perPage)) {
    const int y = static_cast<int>(stretch.line - begin) * geometry_.lineHeight;
    if (stretch.title) {
      paintTitle(dc, stretch.rows.begin, y);
      continue;
    }
    for (const int side : {0, 1}) {
      painter.paintRows(view_.source(side, ruler_, style_.options), stretch.rows,
                        {0, panes_[side].textWidth(), 0, 0, true}, panes_[side], y);
    }
    const auto height = static_cast<int32_t>(stretch.rows.size()) * geometry_.lineHeight;
    const GapWindow gap = {panes_[0].paneRight,  panes_[1].paneLeft, height,
                           geometry_.lineHeight, stretch.rows.begin, y};
    const SavedDc saved(dc);
    IntersectClipRect(dc, gap.left, y, gap.right, y + height);
    painter.paintArrows(view_.model(), style_.options.colours, gap);
  }
}

/// What a section begins with: its first line's number on the sides that have that line.
void Printout::paintTitle(HDC dc, uint32_t row, int y) const {
  const SelectedObject font(dc, fonts_.numbers.get());
  PanePainter painter(dc, fonts_);
  for (const int side : {0, 1}) {
    const RECT area = {panes_[side].paneLeft, y, panes_[side].paneRight, y + geometry_.lineHeight};
    painter.fill(area, style_.options.colours.empty);
    if (view_.isFiller(side, row)) continue;
    SetTextColor(dc, style_.options.textColour);
    write(dc, area, TA_LEFT,
          formatMessage(TextId::printedSection, {int64_t{view_.model().lineNumber(side, row)} + 1}));
  }
}

}  // namespace merivane
