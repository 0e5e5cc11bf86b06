#pragma once

#include <cstdint>

namespace merivane {

/// Every command of resources/commands.inc, by the number that menus, accelerators and the tool bar send.
enum class Command : uint16_t {
#define COMMAND(name, number, ...) name = number,
#include "resources/commands.inc"

  // Entry i of the Window menu's two lists.
  firstFolderWindow = 59000,
  firstTextWindow = 59500,
};

/// How many windows each list of the Window menu has numbers for.
inline constexpr int kListedWindows = 500;

}  // namespace merivane
