// The library that is hooked into the program: it reads menus from within, and counts what is shown anew.

#include <windows.h>

#include <commctrl.h>

#include <cstring>

#include "tests/win/support/program.h"

namespace {

using merivane::ShownAnew;

ShownAnew shown;  // in the program's copy of this library

void report(HWND window, HMENU menu, UINT place, char* items) {
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
    if (info.fState & MFS_CHECKED) std::strcat(items, info.fType & MFT_RADIOCHECK ? "o" : "*");
    if (info.fState & MFS_GRAYED) std::strcat(items, "-");
    std::strcat(std::strcat(items, text), "\n");
    if (info.hSubMenu != nullptr) report(window, info.hSubMenu, static_cast<UINT>(i), items);
  }
}

bool isOfClass(HWND window, const char* name) {
  char own[64] = "";
  GetClassNameA(window, own, sizeof own);
  return lstrcmpiA(own, name) == 0;
}

void countPaint(HWND window) {
  if (!isOfClass(window, "TextView")) return;
  RECT client = {};
  RECT changed = {};
  GetClientRect(window, &client);
  if (GetUpdateRect(window, &changed, FALSE) && EqualRect(&client, &changed)) ++shown.panes;
}

void count(const CWPSTRUCT& sent) {
  switch (sent.message) {
    case TB_ENABLEBUTTON:
      if (isOfClass(sent.hwnd, TOOLBARCLASSNAMEA)) ++shown.buttons;
      break;
    case WM_SETTEXT:
      if (isOfClass(sent.hwnd, "CompareWindow")) ++shown.titles;
      break;
    case WM_WINDOWPOSCHANGING: {
      const UINT kept = reinterpret_cast<const WINDOWPOS*>(sent.lParam)->flags & (SWP_NOMOVE | SWP_NOSIZE);
      if (kept != (SWP_NOMOVE | SWP_NOSIZE)) ++shown.places;
      break;
    }
    case WM_PAINT:
      countPaint(sent.hwnd);
      break;
  }
}

}  // namespace

extern "C" __declspec(dllexport) LRESULT CALLBACK sentHook(int code, WPARAM wParam, LPARAM lParam) {
  static const UINT readMenu = RegisterWindowMessageA(merivane::kReadMenu);
  static const UINT readCounts = RegisterWindowMessageA(merivane::kReadCounts);
  const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
  if (code == HC_ACTION && sent.message == readMenu) {
    const HMENU menu = GetSubMenu(GetMenu(sent.hwnd), static_cast<int>(sent.wParam));
    report(sent.hwnd, menu, static_cast<UINT>(sent.wParam), reinterpret_cast<char*>(sent.lParam));
  } else if (code == HC_ACTION && sent.message == readCounts) {
    std::memcpy(reinterpret_cast<void*>(sent.lParam), &shown, sizeof shown);
    shown = {};
  } else if (code == HC_ACTION) {
    count(sent);
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

extern "C" __declspec(dllexport) LRESULT CALLBACK fetchedHook(int code, WPARAM wParam, LPARAM lParam) {
  const auto& message = *reinterpret_cast<const MSG*>(lParam);
  if (code == HC_ACTION && wParam == PM_REMOVE && message.message == WM_PAINT) countPaint(message.hwnd);
  return CallNextHookEx(nullptr, code, wParam, lParam);
}
