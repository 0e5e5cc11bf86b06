#include "shell/menu_state.h"

#include <algorithm>

#include "mergeview/merge_commands.h"
#include "shell/command_table.h"

namespace merivane {

bool WindowFacts::mayCopyTo(int side) const { return canCopyTo(side, readOnly[side], caretRow); }

bool WindowFacts::mayDelete() const { return canDeleteOn(activeSide, readOnly[activeSide], caretRow); }

bool WindowFacts::offers(Command command) const {
  return std::ranges::find(offered, command) != offered.end();
}

CommandState commandState(Command id, const WindowFacts& window, const Settings& settings) {
  const CommandRow* row = findCommand(id);
  if (row == nullptr) return {false, false, false};
  CommandState state = row->state(window, settings);
  if (window.busy) state.enabled = id == Command::close || id == Command::exit;
  return state;
}

bool editsText(Command id) {
  switch (id) {
    case Command::undo:
    case Command::redo:
    case Command::cut:
    case Command::copy:
    case Command::paste:
    case Command::deleteText:
    case Command::selectAll:
      return true;
    default:
      return false;
  }
}

bool leavesKeysToNameBox(Command id) {
  switch (id) {
    case Command::copyDiffLeft:
    case Command::copyDiffRight:
    case Command::deleteDiff:
    case Command::copyToOld:
    case Command::copyToNew:
    case Command::deleteEntries:
    case Command::copyPaths:
      return true;
    default:
      return editsText(id);
  }
}

PaneMenu paneMenu(RowStatus row, int side) {
  if (row == RowStatus::same) return PaneMenu::deleteOnly;
  if (fillerSide(row) == side) return PaneMenu::plain;
  return side == 0 ? PaneMenu::copyRight : PaneMenu::copyLeft;
}

}  // namespace merivane
