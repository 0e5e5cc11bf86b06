#include "shell/win/controls.h"

#include "base/win/wide.h"
#include "base/win/window.h"

namespace merivane {

HWND createControl(HWND parent, const char* controlClass, DWORD style, int id) {
  return CreateWindowExW(0, wide(controlClass).c_str(), L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | style,
                         0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                         programInstance(), nullptr);
}

void nameNextControl(HWND parent, const std::string& name) {
  const HWND label = createControl(parent, "STATIC", SS_NOPREFIX, 0);
  SetWindowTextW(label, wide(name).c_str());
  showControl(label, false);
}

void moveControl(HWND control, const Area& to) {
  SetWindowPos(control, nullptr, to.left, to.top, to.width, to.height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void showControl(HWND control, bool visible) { ShowWindow(control, visible ? SW_SHOWNA : SW_HIDE); }

int heightOf(HWND control) {
  RECT area = {};
  GetWindowRect(control, &area);
  return area.bottom - area.top;
}

}  // namespace merivane
