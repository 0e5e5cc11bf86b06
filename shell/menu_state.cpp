#include "shell/menu_state.h"

#include "mergeview/merge_rules.h"
#include "shell/command_table.h"

namespace merivane {
namespace {

bool isEnabled(Command id, const WindowFacts& w, const Settings& settings) {
  const bool activeReadOnly = w.readOnly[w.activeSide];
  switch (id) {
    case Command::newTextWindow:
      return mayOpenNewWindow(settings.reUseFileWindow, w.textWindows);
    case Command::newFolderWindow:
      return mayOpenNewWindow(settings.reUseFolderWindow, w.folderWindows);
    case Command::saveAll:
      return w.modified[0] || w.modified[1];
    case Command::undo:
      return w.canUndo;
    case Command::redo:
      return w.canRedo;
    case Command::cut:
      return !activeReadOnly && w.hasSelection;
    case Command::copy:
      return w.hasSelection;
    case Command::paste:
      return !activeReadOnly && w.clipboardHasText;
    case Command::deleteText:
      return !activeReadOnly;  // without a selection it deletes the character at the caret
    case Command::findNext:
    case Command::findPrev:
      return !settings.findText.empty();
    case Command::replaceLeft:
      return !w.readOnly[0];
    case Command::replaceRight:
      return !w.readOnly[1];
    case Command::prevDiff:
    case Command::nextDiff:
      return w.hasDifferences;
    case Command::copyLineLeft:
    case Command::copyDiffLeft:
      return canCopyTo(0, w.readOnly[0], w.caretRow);
    case Command::copyLineRight:
    case Command::copyDiffRight:
      return canCopyTo(1, w.readOnly[1], w.caretRow);
    case Command::deleteLine:
    case Command::deleteDiff:
      return canDeleteOn(w.activeSide, activeReadOnly, w.caretRow);
    default:
      return true;
  }
}

CommandState mark(const Settings& settings, Command id) {
  const auto tick = [](bool on) { return CommandState{true, on, false}; };
  const auto bullet = [&](LineNumbers kind) {
    return CommandState{true, settings.lineNumbers() == kind, true};
  };
  switch (id) {
    case Command::viewToolBar:
      return tick(settings.viewToolBar);
    case Command::viewStatusBar:
      return tick(settings.viewStatusBar);
    case Command::viewSummary:
      return tick(settings.viewSummary);
    case Command::showWhiteSpace:
      return tick(settings.showWhiteSpace);
    case Command::syncScrolling:
      return tick(settings.syncScroll);
    case Command::lineNumbersVirtual:
      return bullet(LineNumbers::rows);
    case Command::lineNumbersReal:
      return bullet(LineNumbers::lines);
    case Command::lineNumbersNone:
      return bullet(LineNumbers::none);
    default:
      return {};
  }
}

}  // namespace

CommandState commandState(Command id, const WindowFacts& window, const Settings& settings) {
  const CommandRow* row = findCommand(id);
  CommandState state = mark(settings, id);
  state.enabled = row != nullptr && row->implemented && isEnabled(id, window, settings);
  return state;
}

PaneMenu paneMenu(RowStatus row, int side) {
  if (row == RowStatus::same) return PaneMenu::deleteOnly;
  if (fillerSide(row) == side) return PaneMenu::plain;
  return side == 0 ? PaneMenu::copyRight : PaneMenu::copyLeft;
}

}  // namespace merivane
