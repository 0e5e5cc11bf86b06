#include "base/win/dialog.h"

#include <algorithm>

namespace merivane {

bool Dialog::open(int resource, HWND owner) {
  return CreateDialogParamW(programInstance(), MAKEINTRESOURCEW(resource), owner, dialogProcedure,
                            reinterpret_cast<LPARAM>(static_cast<Window*>(this))) != nullptr;
}

INT_PTR Dialog::run(int resource, HWND owner) {
  const INT_PTR result =
      DialogBoxParamW(programInstance(), MAKEINTRESOURCEW(resource), owner, dialogProcedure,
                      reinterpret_cast<LPARAM>(static_cast<Window*>(this)));
  return result == -1 ? 0 : result;
}

void Dialog::centre() {
  const HWND owner = GetWindow(handle(), GW_OWNER);
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner != nullptr ? owner : handle(), MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT& work = monitor.rcWork;
  RECT over = work;
  if (owner != nullptr && !IsIconic(owner)) GetWindowRect(owner, &over);
  RECT own = {};
  GetWindowRect(handle(), &own);
  // The title at least is within reach.
  const auto middle = [](LONG from, LONG to, LONG size, LONG min, LONG max) {
    return static_cast<int>(std::max(std::min((from + to - size) / 2, max - size), min));
  };
  const int left = middle(over.left, over.right, own.right - own.left, work.left, work.right);
  const int top = middle(over.top, over.bottom, own.bottom - own.top, work.top, work.bottom);
  SetWindowPos(handle(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

Font Dialog::largerFont(int percent) const {
  LOGFONTW font = {};
  GetObjectW(reinterpret_cast<HFONT>(SendMessageW(handle(), WM_GETFONT, 0, 0)), sizeof font, &font);
  font.lfHeight = MulDiv(font.lfHeight, percent, 100);
  return Font(CreateFontIndirectW(&font));
}

RECT Dialog::inPixels(RECT units) const {
  MapDialogRect(handle(), &units);
  return units;
}

BOOL Dialog::returns(LRESULT result) const {
  SetWindowLongPtrW(handle(), DWLP_MSGRESULT, result);
  return TRUE;
}

INT_PTR CALLBACK Dialog::dialogProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) adopt(handle, reinterpret_cast<Window*>(lParam));
  return receive(handle, message, wParam, lParam,
                 [](HWND, UINT, WPARAM, LPARAM) CALLBACK -> LRESULT { return FALSE; });
}

}  // namespace merivane
