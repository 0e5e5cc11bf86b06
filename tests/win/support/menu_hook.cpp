// The library that reads the program's menus from within.

#include <windows.h>

#include <cstring>

#include "tests/win/support/program.h"

namespace {

void report(HWND window, HMENU menu, UINT place, char* answer) {
  SendMessageA(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), static_cast<LPARAM>(place));
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    char text[256] = "";
    MENUITEMINFOA info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STATE | MIIM_FTYPE | MIIM_STRING | MIIM_SUBMENU;
    info.dwTypeData = text;
    info.cch = sizeof text;
    GetMenuItemInfoA(menu, static_cast<UINT>(i), TRUE, &info);
    if (info.fType & MFT_SEPARATOR) continue;
    if (info.fState & MFS_CHECKED) std::strcat(answer, info.fType & MFT_RADIOCHECK ? "o" : "*");
    if (info.fState & MFS_GRAYED) std::strcat(answer, "-");
    std::strcat(std::strcat(answer, text), "\n");
    if (info.hSubMenu != nullptr) report(window, info.hSubMenu, static_cast<UINT>(i), answer);
  }
}

}  // namespace

extern "C" __declspec(dllexport) LRESULT CALLBACK menuHook(int code, WPARAM wParam, LPARAM lParam) {
  static const UINT message = RegisterWindowMessageA(merivane::kMenuMessage);
  const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
  if (code == HC_ACTION && sent.message == message) {
    const HMENU menu = GetSubMenu(GetMenu(sent.hwnd), static_cast<int>(sent.wParam));
    report(sent.hwnd, menu, static_cast<UINT>(sent.wParam), reinterpret_cast<char*>(sent.lParam));
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}
