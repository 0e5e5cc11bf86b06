#pragma once

#include <span>
#include <string>

#include "shell/commands.h"

namespace merivane {

/// What is known of a command whatever the window; its state in a window is told by shell/menu_state.h.
struct CommandRow {
  Command id;
  const char* keys = "";    // its first key as menus show it; empty when it has none
  bool implemented = true;  // false: its menu item stands there greyed
};

std::span<const CommandRow> commandRows();

/// None for a number that is no command; the Window menu's numbers are none.
const CommandRow* findCommand(Command id);

/// What the status bar says of it; empty for a number that is no command.
const char* commandHelp(Command id);

/// The tip of its button: the help and the key, as in "Save the file (Ctrl+S)".
std::string commandTip(Command id);

}  // namespace merivane
