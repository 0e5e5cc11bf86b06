// What the commands of a folder window do.

#include <algorithm>

#include "base/win/messages.h"
#include "base/win/wide.h"
#include "mergeview/win/clipboard.h"
#include "shell/command_table.h"
#include "shell/name_box.h"
#include "shell/win/application.h"
#include "shell/win/folder_window.h"
#include "shell/win/shell_utilities.h"

namespace merivane {

std::span<const FolderWindow::Handler> FolderWindow::handlers() {
  using W = FolderWindow;
  static constexpr Handler rows[] = {
      {Command::undo, [](W& w) { w.runOnRows(Command::undo); }},
      {Command::selectAll, [](W& w) { w.lists_.selectAll(); }},

      {Command::prevDiff, [](W& w) { w.goToOpenRow(-1); }},
      {Command::nextDiff, [](W& w) { w.goToOpenRow(1); }},
      {Command::showChanged, [](W& w) { w.lists_.showTab(0); }},
      {Command::showOld, [](W& w) { w.lists_.showTab(1); }},
      {Command::showNew, [](W& w) { w.lists_.showTab(2); }},
      {Command::showSame, [](W& w) { w.lists_.showTab(3); }},
      {Command::switchToNames, [](W& w) { w.switchToNames(); }},

      {Command::openInApp, [](W& w) { OpenWithShell(w.handle(), w.selectedPath(), showSystemError); }},
      {Command::exploreFolder,
       [](W& w) { ExploreFolder(w.handle(), upOneFolder(w.selectedPath()).value_or(""), showSystemError); }},
      {Command::showProperties, [](W& w) { ShowProperties(w.handle(), w.selectedPath(), showSystemError); }},

      {Command::compareEntries, [](W& w) { w.runOnRows(Command::compareEntries); }},
      {Command::copyToOld, [](W& w) { w.runOnRows(Command::copyToOld); }},
      {Command::copyToNew, [](W& w) { w.runOnRows(Command::copyToNew); }},
      {Command::deleteOld, [](W& w) { w.runOnRows(Command::deleteOld); }},
      {Command::deleteNew, [](W& w) { w.runOnRows(Command::deleteNew); }},
      {Command::deleteBoth, [](W& w) { w.runOnRows(Command::deleteBoth); }},
      {Command::deleteEntries, [](W& w) { w.deleteRows(); }},
      {Command::copyPaths, [](W& w) { w.copyPaths(); }},
  };
  return rows;
}

std::function<void()> FolderWindow::handlerOf(Command command) {
  for (const Handler& handler : handlers()) {
    if (handler.command == command) return [this, run = handler.run] { run(*this); };
  }
  return TopLevelWindow::handlerOf(command);
}

void FolderWindow::addFacts(WindowFacts& facts) const {
  if (!offered_) {
    offered_.emplace();
    for (const RowMenuItem& item : session_->menu(category(), selection())) {
      if (item.command) offered_->push_back(*item.command);
    }
  }
  facts.tab = lists_.tab();
  facts.offered = *offered_;
  facts.canUndo = facts.offers(Command::undo);
  facts.showsComparison = session_->showsComparison();
  facts.hasFile = !selection().rows().empty();
  facts.hasDifferences = rowCount(facts.tab) > 0;
}

/// The path of the row with the caret, or else of the first one selected.
std::string FolderWindow::selectedPath() const {
  const RowSelection& selected = selection();
  const std::vector<uint32_t> rows = selected.rows();
  if (rows.empty()) return {};
  const bool caretToo = selected.caret && std::ranges::binary_search(rows, *selected.caret);
  return session_->path(category(), caretToo ? *selected.caret : rows.front());
}

void FolderWindow::onRowChosen() {
  if (const auto command = session_->defaultCommand(category(), selection())) run(*command);
}

void FolderWindow::onRowMenu(POINT screen) { showMenu(session_->menu(category(), selection()), screen); }

void FolderWindow::showMenu(const std::vector<RowMenuItem>& items, POINT screen) {
  if (items.empty()) return;
  const HMENU menu = CreatePopupMenu();
  for (const RowMenuItem& item : items) {
    if (!item.command) {
      AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
      continue;
    }
    const auto number = static_cast<UINT_PTR>(*item.command);
    const std::string key = commandKey(*item.command);
    AppendMenuW(menu, MF_STRING, number, wide(key.empty() ? item.label : item.label + '\t' + key).c_str());
    if (item.isDefault) SetMenuDefaultItem(menu, static_cast<UINT>(number), FALSE);
  }
  TrackPopupMenu(menu, TPM_RIGHTBUTTON, screen.x, screen.y, 0, handle(), nullptr);
  DestroyMenu(menu);
}

/// Where both sides have what is selected, the user says which one to delete.
void FolderWindow::deleteRows() {
  const std::vector<RowMenuItem> items = session_->deleteMenu(category(), selection());
  if (items.size() == 1 && items.front().command) {
    run(*items.front().command);
  } else {
    showMenu(items, lists_.menuPlace());
  }
}

void FolderWindow::goToOpenRow(int direction) {
  const auto row = session_->nextOpenRow(category(), lists_.caretRow(), direction);
  if (!row) {
    MessageBeep(MB_OK);
    return;
  }
  lists_.select({*row});
  lists_.goTo(*row);
  focusContents();
}

void FolderWindow::copyPaths() {
  putOnClipboard(handle(), wide(session_->pathsText(category(), selection())));
}

void FolderWindow::switchToNames() {
  if (GetFocus() == lists_.list()) {
    focusName(0);
  } else {
    focusContents();
  }
}

void FolderWindow::showUndoLabel(HMENU menu) {
  const auto undo = static_cast<UINT>(Command::undo);
  if (GetMenuState(menu, undo, MF_BYCOMMAND) == static_cast<UINT>(-1)) return;
  const std::string label = session_->undoLabel(category(), selection()) + '\t' + commandKey(Command::undo);
  std::wstring text = wide(label);
  MENUITEMINFOW item = {};
  item.cbSize = sizeof item;
  item.fMask = MIIM_STRING;
  item.dwTypeData = text.data();
  SetMenuItemInfoW(menu, undo, FALSE, &item);
}

}  // namespace merivane
