// What the commands of a text window do.

#include <optional>
#include <utility>

#include "base/win/messages.h"
#include "mergeview/edit.h"
#include "mergeview/find.h"
#include "mergeview/navigation.h"
#include "shell/command_table.h"
#include "shell/name_box.h"
#include "shell/win/application.h"
#include "shell/win/compare_window.h"
#include "shell/win/file_dialogs.h"
#include "shell/win/shell_utilities.h"

namespace merivane {

std::span<const CompareWindow::Handler> CompareWindow::handlers() {
  using W = CompareWindow;
  static constexpr Handler rows[] = {
      {Command::newTextWindow, [](W& w) { w.application_.windows.NewTextWindow(); }},
      {Command::exportResults, [](W& w) { w.session_.exportResults(); }},
      {Command::close, [](W& w) { PostMessageA(w.handle(), WM_CLOSE, 0, 0); }},
      {Command::exit, [](W& w) { w.application_.windows.closeAll(); }},

      {Command::undo, [](W& w) { undo(w.view_, w.history_); }},
      {Command::redo, [](W& w) { redo(w.view_, w.history_); }},
      {Command::cut, [](W& w) { w.frame_.view.edit().cut(); }},
      {Command::copy, [](W& w) { w.frame_.view.edit().copy(); }},
      {Command::paste, [](W& w) { w.frame_.view.edit().paste(); }},
      {Command::deleteText, [](W& w) { w.frame_.view.edit().deleteForward(); }},
      {Command::selectAll, [](W& w) { selectAll(w.view_); }},
      {Command::find, [](W& w) { w.application_.findDialog.open(w.handle()); }},
      {Command::findNext, [](W& w) { w.search(true); }},
      {Command::findPrev, [](W& w) { w.search(false); }},
      {Command::replaceLeft, [](W& w) { w.session_.replace(0); }},
      {Command::replaceRight, [](W& w) { w.session_.replace(1); }},

      {Command::viewToolBar, [](W& w) { w.toggle(&Settings::viewToolBar); }},
      {Command::viewStatusBar, [](W& w) { w.toggle(&Settings::viewStatusBar); }},
      {Command::viewSummary, [](W& w) { w.toggle(&Settings::viewSummary); }},
      {Command::showWhiteSpace, [](W& w) { w.toggle(&Settings::showWhiteSpace); }},
      {Command::syncScrolling, [](W& w) { w.toggle(&Settings::syncScroll); }},
      {Command::lineNumbersVirtual, [](W& w) { w.numberLines(LineNumbers::rows); }},
      {Command::lineNumbersReal, [](W& w) { w.numberLines(LineNumbers::lines); }},
      {Command::lineNumbersNone, [](W& w) { w.numberLines(LineNumbers::none); }},
      {Command::switchPane, [](W& w) { switchPane(w.view_); }},
      {Command::prevDiff, [](W& w) { goToPreviousDifference(w.view_); }},
      {Command::nextDiff, [](W& w) { goToNextDifference(w.view_); }},
      {Command::refresh, [](W& w) { w.session_.compare(); }},
      {Command::switchSides, [](W& w) { w.session_.switchSides(); }},

      {Command::cascade, [](W& w) { w.application_.windows.cascade(); }},
      {Command::tileHorizontally, [](W& w) { w.application_.windows.tile(true); }},
      {Command::tileVertically, [](W& w) { w.application_.windows.tile(false); }},

      {Command::browseLeftFile, [](W& w) { w.browse(0); }},
      {Command::browseRightFile, [](W& w) { w.browse(1); }},
      {Command::upOneFolderLeft, [](W& w) { w.goUpOneFolder(0); }},
      {Command::upOneFolderRight, [](W& w) { w.goUpOneFolder(1); }},

      {Command::save, [](W& w) { w.session_.save(w.view_.activeSide()); }},
      {Command::saveAs, [](W& w) { w.session_.saveAs(w.view_.activeSide()); }},
      {Command::saveAll, [](W& w) { w.session_.saveAll(); }},
      {Command::copyLineLeft, [](W& w) { w.copy(BlockKind::line, 0); }},
      {Command::copyLineRight, [](W& w) { w.copy(BlockKind::line, 1); }},
      {Command::deleteLine, [](W& w) { deleteBlock(w.view_, w.history_, BlockKind::line); }},
      {Command::copyDiffLeft, [](W& w) { w.copy(BlockKind::difference, 0); }},
      {Command::copyDiffRight, [](W& w) { w.copy(BlockKind::difference, 1); }},
      {Command::deleteDiff, [](W& w) { deleteBlock(w.view_, w.history_, BlockKind::difference); }},
      {Command::lineToClipboard, [](W& w) { blockToClipboard(w.view_, BlockKind::line); }},
      {Command::blockToClipboard, [](W& w) { blockToClipboard(w.view_, BlockKind::difference); }},
      {Command::openInApp, [](W& w) { OpenWithShell(w.handle(), w.activePath(), showSystemError); }},
      {Command::exploreFolder,
       [](W& w) { ExploreFolder(w.handle(), upOneFolder(w.activePath()).value_or(""), showSystemError); }},
      {Command::showProperties, [](W& w) { ShowProperties(w.handle(), w.activePath(), showSystemError); }},
  };
  return rows;
}

void CompareWindow::onCommand(int id, int code) {
  for (const int side : {0, 1}) {
    if (id == kNameBoxIds[side]) return onNameBox(side, code);
  }
  const auto command = static_cast<Command>(id);
  if (listedPlace(command)) {
    application_.windows.ActivateListedWindow(command);
  } else {
    run(command);
  }
}

const CompareWindow::Handler* CompareWindow::findHandler(Command command) {
  for (const Handler& handler : handlers()) {
    if (handler.command == command) return &handler;
  }
  return nullptr;
}

void CompareWindow::run(Command command) {
  if (stateOf(command, facts()).enabled) findHandler(command)->run(*this);
}

CommandState CompareWindow::stateOf(Command command, const WindowFacts& now) const {
  CommandState state = commandState(command, now, application_.settings);
  state.enabled = state.enabled && findHandler(command) != nullptr;
  return state;
}

WindowFacts CompareWindow::facts() const {
  WindowFacts facts;
  facts.textWindows = application_.windows.textWindows();
  facts.folderWindows = application_.windows.folderWindows();
  facts.activeSide = view_.activeSide();
  for (const int side : {0, 1}) {
    facts.modified[side] = history_.isModified(side);
    facts.readOnly[side] = view_.file(side).readOnly;
  }
  facts.canUndo = history_.canUndo();
  facts.canRedo = history_.canRedo();
  facts.hasSelection = view_.hasSelection();
  facts.clipboardHasText = IsClipboardFormatAvailable(CF_TEXT) != 0;
  facts.hasDifferences = view_.model().differenceBlocks() > 0;
  if (view_.caretRow() < view_.rowCount()) facts.caretRow = view_.model().status(view_.caretRow());
  return facts;
}

void CompareWindow::onNameBox(int side, int code) {
  NameBox& box = frame_.nameBoxes[side];
  NameBox& other = frame_.nameBoxes[1 - side];
  switch (code) {
    case CBN_EDITCHANGE: box.onEdit(); break;
    case kNameBoxEnter:
      // With one name still to come, that is what the user wants to do next.
      if (!box.text().empty() && other.text().empty()) {
        SetFocus(other.handle());
      } else {
        run(Command::refresh);
      }
      break;
    case kNameBoxDropped:
      // In a window that shows a comparison the new file takes the old one's place; in a fresh one the
      // other file may still be to come.
      if (!isFresh()) run(Command::refresh);
      break;
  }
}

void CompareWindow::toggle(bool Settings::*setting) {
  application_.settings.*setting = !(application_.settings.*setting);
  application_.windows.applySettings();
}

void CompareWindow::numberLines(LineNumbers kind) {
  application_.settings.showLineNumbers = static_cast<int32_t>(kind);
  application_.windows.applySettings();
}

void CompareWindow::applySettings() {
  const Settings& settings = application_.settings;
  frame_.view.setFont(settings.fontFace, settings.fontSize);
  frame_.view.showCaretBox(settings.drawCaretBox);
  view_.setOptions(settings.viewOptions());
  view_.setCompareOptions(settings.compareOptions());
  frame_.layOut();
}

void CompareWindow::browse(int side) {
  NameBox& box = frame_.nameBoxes[side];
  const auto chosen = chooseFile(
      handle(), loadText(side == 0 ? TextId::chooseLeftFile : TextId::chooseRightFile), box.text());
  if (!chosen) return;
  box.setText(*chosen);
  SetFocus(box.handle());
}

void CompareWindow::goUpOneFolder(int side) {
  NameBox& box = frame_.nameBoxes[side];
  const auto folder = upOneFolder(box.text());
  if (!folder) {
    MessageBeep(MB_OK);
    return;
  }
  box.setText(*folder);
  SetFocus(box.handle());
}

void CompareWindow::search(bool forwards) {
  const Settings& settings = application_.settings;
  const FindQuery query = {settings.findText, settings.findMatchCase, settings.findWholeWord};
  const bool found = forwards ? findNext(view_, query) : findPrevious(view_, query);
  if (!found) showMessage(handle(), TextId::searchTextNotFound, MB_OK | MB_ICONINFORMATION);
}

void CompareWindow::onFind(const FINDREPLACEA& request) {
  if (application_.findDialog.takeRequest(request)) search(application_.settings.findDownwards);
}

}  // namespace merivane
