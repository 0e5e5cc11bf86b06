#include "mergeview/win/splitter_thumb.h"

#include "base/win/back_buffer.h"

namespace merivane {

SplitterThumb::~SplitterThumb() { destroy(); }

bool SplitterThumb::create(HWND parent) {
  WindowPlace place;
  place.parent = parent;
  return Window::create({"SplitterThumb", CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, IDC_SIZEWE}, place);
}

LRESULT SplitterThumb::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const int x = static_cast<short>(LOWORD(lParam));
  switch (message) {
    case WM_PAINT: onPaint(); return 0;
    case WM_ERASEBKGND: return TRUE;
    case WM_LBUTTONDOWN: onButtonDown(); return 0;
    case WM_MOUSEMOVE: onMouseMove(x); return 0;
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED: onButtonUp(); return 0;
    case WM_LBUTTONDBLCLK: centre(); return 0;
    default: return defaultProcedure(message, wParam, lParam);
  }
}

void SplitterThumb::onPaint() {
  const BufferedPaint paint(handle());
  RECT client = {};
  GetClientRect(handle(), &client);
  FillRect(paint.dc(), &client, GetSysColorBrush(COLOR_BTNFACE));
  DrawEdge(paint.dc(), &client, EDGE_RAISED, BF_RECT);
}

void SplitterThumb::onButtonDown() {
  dragging_ = true;
  SetCapture(handle());
}

void SplitterThumb::onMouseMove(int x) {
  if (!dragging_) return;
  POINT at = {x, 0};
  MapWindowPoints(handle(), GetParent(handle()), &at, 1);
  view_.state().setSplitFromX(at.x);
  view_.applyChanges();
}

void SplitterThumb::onButtonUp() {
  if (!dragging_) return;
  dragging_ = false;
  ReleaseCapture();
}

void SplitterThumb::centre() {
  view_.state().centreSplit();
  view_.applyChanges();
}

}  // namespace merivane
