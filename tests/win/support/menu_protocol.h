#pragma once

#include <cstdint>

namespace merivane {

/// A menu answers only within its own process. The hook library, loaded into the program under test, looks
/// at a menu when a window gets this registered message, with the menu's place in the menu bar and the
/// address, in that process, of a MenuReport to fill.
inline constexpr char kMenuMessage[] = "merivane-tests-read-menu";
inline constexpr char kMenuHookName[] = "menuHook";

struct MenuReport {
  static constexpr uint32_t kMostItems = 64;

  struct Item {
    uint32_t id;     // 0xFFFFFFFF for a submenu; its items follow it
    uint32_t state;  // MFS_ flags
    uint32_t type;   // MFT_ flags
    char text[256];
  };

  uint32_t count;
  Item items[kMostItems];
};

}  // namespace merivane
