#include "printing/win/preview_pane.h"

#include "base/win/back_buffer.h"
#include "base/win/dpi.h"
#include "base/win/scrolling.h"

namespace merivane {
namespace {

/// Has a context draw in the printer's pixels: the sheet fills a rectangle of the window, and the origin is
/// where the printer's is.
void mapToSheet(HDC dc, const PageDevice& device, const PreviewView& view) {
  POINT origin = {};
  GetViewportOrgEx(dc, &origin);
  SetMapMode(dc, MM_ANISOTROPIC);
  SetWindowExtEx(dc, device.paperWidth, device.paperHeight, nullptr);
  SetViewportExtEx(dc, view.sheetWidth(), view.sheetHeight(), nullptr);
  SetViewportOrgEx(dc, origin.x + view.sheetLeft(), origin.y + view.sheetTop(), nullptr);
  SetWindowOrgEx(dc, -device.paperLeft, -device.paperTop, nullptr);
}

}  // namespace

bool PreviewPane::create(HWND parent) {
  WindowPlace place;
  place.style |= WS_TABSTOP | WS_VSCROLL | WS_HSCROLL;
  place.extendedStyle = WS_EX_CLIENTEDGE;
  place.parent = parent;
  return Window::create({"PreviewPane"}, place);
}

void PreviewPane::show(std::unique_ptr<Printout> printout) {
  printout_ = std::move(printout);
  if (printout_ != nullptr) view_.setPages(printout_->device(), printout_->pages());
  moved();
}

void PreviewPane::goTo(int64_t page) {
  view_.goTo(page);
  moved();
}

void PreviewPane::setZoom(const Zoom& zoom) {
  view_.setZoom(zoom);
  moved();
}

LRESULT PreviewPane::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT:
      onPaint();
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_SIZE:
      view_.resize(LOWORD(lParam), HIWORD(lParam), dpiOf(handle()));
      moved();
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_KEYDOWN:
      return onKeyDown(wParam) ? 0 : defaultProcedure(message, wParam, lParam);
    case WM_CHAR:
      onChar(wParam);
      return 0;
    case WM_VSCROLL:
      onScroll(SB_VERT, LOWORD(wParam));
      return 0;
    case WM_HSCROLL:
      onScroll(SB_HORZ, LOWORD(wParam));
      return 0;
    case WM_MOUSEWHEEL:
      onMouseWheel(static_cast<short>(HIWORD(wParam)), LOWORD(wParam));
      return 0;
    case WM_LBUTTONDOWN:
      SetFocus(handle());
      return 0;
    default:
      return defaultProcedure(message, wParam, lParam);
  }
}

void PreviewPane::onPaint() {
  const BufferedPaint paint(handle());
  const HDC dc = paint.dc();
  FillRect(dc, &paint.area(), GetSysColorBrush(COLOR_APPWORKSPACE));
  if (printout_ == nullptr || view_.sheetWidth() <= 0 || view_.sheetHeight() <= 0) return;
  const RECT sheet = {view_.sheetLeft(), view_.sheetTop(), view_.sheetLeft() + view_.sheetWidth(),
                      view_.sheetTop() + view_.sheetHeight()};
  const RECT edge = {sheet.left - 1, sheet.top - 1, sheet.right + 1, sheet.bottom + 1};
  FrameRect(dc, &edge, GetSysColorBrush(COLOR_WINDOWFRAME));
  FillRect(dc, &sheet, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  const int state = SaveDC(dc);
  mapToSheet(dc, printout_->device(), view_);
  IntersectClipRect(dc, 0, 0, printout_->device().width, printout_->device().height);
  printout_->paintPage(dc, view_.page());
  RestoreDC(dc, state);
}

bool PreviewPane::onKeyDown(WPARAM key) {
  switch (key) {
    case VK_NEXT:
      view_.pageDown();
      break;
    case VK_PRIOR:
      view_.pageUp();
      break;
    case VK_HOME:
      view_.goTo(1);
      break;
    case VK_END:
      view_.goTo(view_.pages());
      break;
    case VK_DOWN:
      view_.scrollBy(0, line());
      break;
    case VK_UP:
      view_.scrollBy(0, -line());
      break;
    case VK_RIGHT:
      view_.scrollBy(line(), 0);
      break;
    case VK_LEFT:
      view_.scrollBy(-line(), 0);
      break;
    default:
      return false;
  }
  moved();
  return true;
}

void PreviewPane::onChar(WPARAM character) {
  if (character == '+') view_.zoomIn();
  if (character == '-') view_.zoomOut();
  moved();
}

void PreviewPane::onScroll(int bar, int request) {
  const auto target = [&](const PreviewSpan& span) {
    return scrollTarget(handle(), bar, request, span.position, span.paneLength, span.max(), line());
  };
  if (bar == SB_VERT) {
    view_.scrollTo(view_.horizontal().position, target(view_.vertical()));
  } else {
    view_.scrollTo(target(view_.horizontal()), view_.vertical().position);
  }
  moved();
}

void PreviewPane::onMouseWheel(int delta, WORD keys) {
  const bool zooms = (keys & MK_CONTROL) != 0;
  const int steps = wheelSteps(delta, 1, wheelRest_);
  if (steps == 0) return;
  if (!zooms) {
    view_.wheel(-steps * 3 * line());
  } else if (steps > 0) {
    view_.zoomIn();
  } else {
    view_.zoomOut();
  }
  moved();
}

void PreviewPane::moved() {
  const auto show = [&](int bar, const PreviewSpan& span) {
    setScrollBar(handle(), bar, span.sheetLength - 1, static_cast<UINT>(span.paneLength), span.position);
  };
  show(SB_VERT, view_.vertical());
  show(SB_HORZ, view_.horizontal());
  InvalidateRect(handle(), nullptr, FALSE);
  whenMoved_();
}

/// How far an arrow key scrolls.
int PreviewPane::line() const { return scaled(40, dpiOf(handle())); }

}  // namespace merivane
