#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "shell/commands.h"
#include "shell/icon_drawing.h"
#include "shell/menu_state.h"
#include "shell/window_kind.h"

namespace merivane {

/// The button of a command. The tens of its place on the tool bar tell its group; without a place it stands
/// beside a name box.
struct CommandButton {
  IconId icon;
  int place = 0;
};

/// What is known of a command: a row of resources/commands.inc.
struct CommandRow {
  Command id;
  unsigned windows;  // a bit for each WindowKind
  std::optional<CommandButton> button;
  CommandState (*state)(const WindowFacts& window, const Settings& settings);
  const char* help;

  bool livesIn(WindowKind kind) const { return (windows >> static_cast<unsigned>(kind) & 1) != 0; }
};

/// By number.
std::span<const CommandRow> commandRows();

/// None for a number that is no command; the Window menu's numbers are none.
const CommandRow* findCommand(Command id);

/// The rows with a place on the tool bar of such a window, in the order of the places.
std::vector<const CommandRow*> toolBarRows(WindowKind kind);

/// Its first key as menus show it ("Ctrl+S"); empty when it has none.
std::string commandKey(Command id);

/// What the status bar says of it; empty for a number that is no command.
const char* commandHelp(Command id);

/// The tip of its button: the help and the key, as in "Save the file (Ctrl+S)".
std::string commandTip(Command id);

}  // namespace merivane
