#include "base/win/dialog.h"

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
  RECT own = {};
  RECT over = {};
  GetWindowRect(handle(), &own);
  GetWindowRect(GetWindow(handle(), GW_OWNER), &over);
  const int left = (over.left + over.right - (own.right - own.left)) / 2;
  const int top = (over.top + over.bottom - (own.bottom - own.top)) / 2;
  SetWindowPos(handle(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

INT_PTR CALLBACK Dialog::dialogProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) adopt(handle, reinterpret_cast<Window*>(lParam));
  return receive(handle, message, wParam, lParam,
                 [](HWND, UINT, WPARAM, LPARAM) CALLBACK -> LRESULT { return FALSE; });
}

}  // namespace merivane
