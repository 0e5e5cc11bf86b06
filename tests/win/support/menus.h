#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace merivane {

struct MenuItem {
  uint32_t id = 0;  // 0xFFFFFFFF for a submenu; its items follow it
  std::string text;
  bool enabled = true;
  bool checked = false;
  bool radio = false;  // its mark is a bullet
  bool separator = false;
};

/// Reads the menu at a place of a window's menu bar as it shows when it opens, submenus and all.
std::vector<MenuItem> readMenu(HANDLE process, HWND window, int place);

}  // namespace merivane
