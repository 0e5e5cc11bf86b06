// The library that reads the program's menus from within.

#include <windows.h>

#include "tests/win/support/menu_protocol.h"

namespace merivane {
namespace {

void report(HWND window, HMENU menu, UINT place, MenuReport& answer) {
  SendMessageA(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), static_cast<LPARAM>(place));
  const int count = GetMenuItemCount(menu);
  for (int i = 0; i < count && answer.count < MenuReport::kMostItems; ++i) {
    MenuReport::Item& item = answer.items[answer.count++];
    MENUITEMINFOA info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_STRING | MIIM_SUBMENU;
    info.dwTypeData = item.text;
    info.cch = sizeof item.text;
    GetMenuItemInfoA(menu, static_cast<UINT>(i), TRUE, &info);
    item.id = info.hSubMenu != nullptr ? UINT32_MAX : info.wID;
    item.state = info.fState;
    item.type = info.fType;
    if (info.hSubMenu != nullptr) report(window, info.hSubMenu, static_cast<UINT>(i), answer);
  }
}

}  // namespace
}  // namespace merivane

extern "C" __declspec(dllexport) LRESULT CALLBACK menuHook(int code, WPARAM wParam, LPARAM lParam) {
  static const UINT message = RegisterWindowMessageA(merivane::kMenuMessage);
  const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
  if (code == HC_ACTION && sent.message == message) {
    const HMENU menu = GetSubMenu(GetMenu(sent.hwnd), static_cast<int>(sent.wParam));
    auto& answer = *reinterpret_cast<merivane::MenuReport*>(sent.lParam);
    answer.count = 0;
    merivane::report(sent.hwnd, menu, static_cast<UINT>(sent.wParam), answer);
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}
