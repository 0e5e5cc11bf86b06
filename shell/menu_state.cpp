#include "shell/menu_state.h"

#include "mergeview/merge_commands.h"
#include "shell/command_table.h"

namespace merivane {

bool WindowFacts::mayCopyTo(int side) const { return canCopyTo(side, readOnly[side], caretRow); }

bool WindowFacts::mayDelete() const { return canDeleteOn(activeSide, readOnly[activeSide], caretRow); }

CommandState commandState(Command id, const WindowFacts& window, const Settings& settings) {
  const CommandRow* row = findCommand(id);
  if (row == nullptr) return {false, false, false};
  CommandState state = row->state(window, settings);
  if (window.comparing) state.enabled = id == Command::close || id == Command::exit;
  return state;
}

PaneMenu paneMenu(RowStatus row, int side) {
  if (row == RowStatus::same) return PaneMenu::deleteOnly;
  if (fillerSide(row) == side) return PaneMenu::plain;
  return side == 0 ? PaneMenu::copyRight : PaneMenu::copyLeft;
}

}  // namespace merivane
