#include "mergeview/win/summary.h"

#include <algorithm>
#include <span>
#include <vector>

#include "base/win/back_buffer.h"
#include "base/win/dpi.h"
#include "mergeview/navigation.h"

namespace merivane {
namespace {

void fill(HDC dc, int left, int top, int right, int bottom, COLORREF colour) {
  const RECT area = {left, top, right, bottom};
  SetBkColor(dc, colour);
  ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &area, "", 0, nullptr);
}

}  // namespace

Summary::~Summary() { destroy(); }

bool Summary::create(HWND parent) {
  WindowPlace place;
  place.parent = parent;
  return Window::create({"Summary"}, place);
}

LRESULT Summary::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT: onPaint(); return 0;
    case WM_ERASEBKGND: return TRUE;
    case WM_SIZE: redraw(); return 0;
    case WM_LBUTTONDOWN: onLeftButtonDown(static_cast<short>(HIWORD(lParam))); return 0;
    case WM_MOUSEMOVE: onMouseMove(static_cast<short>(HIWORD(lParam))); return 0;
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED: onLeftButtonUp(); return 0;
    case WM_RBUTTONDOWN: onRightButtonDown(static_cast<short>(HIWORD(lParam))); return 0;
    default: return defaultProcedure(message, wParam, lParam);
  }
}

SummaryMap::Geometry Summary::geometry() const {
  RECT client = {};
  GetClientRect(handle(), &client);
  const FontMetrics& font = state().font();
  return {client.bottom, systemMetric(SM_CYVSCROLL, font.resolutionY), font.lineHeight,
          state().visibleRows()};
}

void Summary::setBlank(bool blank) {
  if (blank == blank_) return;
  blank_ = blank;
  redraw();
}

void Summary::redraw() {
  map_.rowsChanged();
  InvalidateRect(handle(), nullptr, FALSE);
}

void Summary::moveCaretMarker() {
  if (isPlain()) return;
  map_.update(state().model(), geometry());
  const RECT next = markerArea();
  if (EqualRect(&next, &marker_)) return;
  InvalidateRect(handle(), &marker_, FALSE);
  InvalidateRect(handle(), &next, FALSE);
}

RECT Summary::markerArea() const {
  RECT client = {};
  GetClientRect(handle(), &client);
  const PixelRange lines = map_.caretMarker(state().caretRow());
  return {SummaryMap::kMargin, map_.mapTop() + lines.begin, client.right - SummaryMap::kMargin,
          map_.mapTop() + lines.end};
}

void Summary::onPaint() {
  const BufferedPaint paint(handle());
  map_.update(state().model(), geometry());
  const RECT& area = paint.area();
  fill(paint.dc(), area.left, area.top, area.right, area.bottom, GetSysColor(COLOR_BTNFACE));
  if (isPlain()) return;
  const auto lines = summaryLines(map_.pixels(), state().options().colours, GetSysColor(COLOR_BTNFACE));
  paintBands(paint.dc(), area, lines);
  marker_ = markerArea();
  paintMarker(paint.dc(), lines);
}

void Summary::paintBands(HDC dc, const RECT& area, std::span<const SummaryLine> lines) const {
  RECT client = {};
  GetClientRect(handle(), &client);
  const int left = SummaryMap::kMargin;
  const int right = client.right - SummaryMap::kMargin;
  const int first = std::max<int>(area.top - map_.mapTop(), 0);
  const int end = std::min<int>(area.bottom - map_.mapTop(), static_cast<int>(lines.size()));
  for (int line = first; line < end; ++line) {
    const SummaryLine& colours = lines[static_cast<size_t>(line)];
    const int y = map_.mapTop() + line;
    fill(dc, left, y, right, y + 1, colours.edge);
    fill(dc, left + 1, y, right - 1, y + 1, colours.fill);
  }
}

void Summary::paintMarker(HDC dc, std::span<const SummaryLine> lines) const {
  const PixelRange framed = map_.caretMarker(state().caretRow());
  const Brush brush(CreateSolidBrush(markerColour(
      lines.subspan(static_cast<size_t>(framed.begin), static_cast<size_t>(framed.end - framed.begin)))));
  RECT frame = marker_;
  FrameRect(dc, &frame, brush.get());
  InflateRect(&frame, -1, -1);
  FrameRect(dc, &frame, brush.get());
}

void Summary::onLeftButtonDown(int y) {
  dragging_ = true;
  SetCapture(handle());
  onMouseMove(y);
}

void Summary::onMouseMove(int y) {
  if (!dragging_ || isPlain()) return;
  const uint32_t row = map_.rowAt(y);
  goToBlock({row, row + 1});
}

void Summary::onLeftButtonUp() {
  if (!dragging_) return;
  dragging_ = false;
  ReleaseCapture();
}

void Summary::onRightButtonDown(int y) {
  if (isPlain()) return;
  const uint32_t row = map_.rowAt(y);
  const auto difference = nearestDifference(state().model(), row);
  goToBlock(difference.value_or(RowRange{row, row + 1}));
}

void Summary::goToBlock(RowRange rows) {
  view_.state().goToBlock(rows);
  view_.applyChanges();
  SetFocus(view_.handle());
}

}  // namespace merivane
