// What the commands of a text window do.

#include <optional>
#include <utility>

#include "base/win/messages.h"
#include "base/win/wide.h"
#include "mergeview/edit.h"
#include "mergeview/find.h"
#include "mergeview/navigation.h"
#include "mergeview/spoken_text.h"
#include "shell/command_table.h"
#include "shell/name_box.h"
#include "shell/win/application.h"
#include "shell/win/compare_window.h"
#include "shell/win/file_dialogs.h"
#include "shell/win/folder_window.h"
#include "shell/win/shell_utilities.h"

namespace merivane {

std::span<const CompareWindow::Handler> CompareWindow::handlers() {
  using W = CompareWindow;
  static constexpr Handler rows[] = {
      {Command::compareParents, [](W& w) { w.compareParents(); }},
      {Command::exportResults, [](W& w) { w.session_.exportResults(); }},
      {Command::pageSetup, [](W& w) { w.setUpPage(); }},
      {Command::printPreview, [](W& w) { w.preview(); }},
      {Command::print, [](W& w) { w.print(); }},

      {Command::undo, [](W& w) { undo(w.view_, w.history_); }},
      {Command::redo, [](W& w) { redo(w.view_, w.history_); }},
      {Command::cut, [](W& w) { w.panes_.view.edit().cut(); }},
      {Command::copy, [](W& w) { w.panes_.view.edit().copy(); }},
      {Command::paste, [](W& w) { w.panes_.view.edit().paste(); }},
      {Command::deleteText, [](W& w) { w.panes_.view.edit().deleteForward(); }},
      {Command::selectAll, [](W& w) { selectAll(w.view_); }},
      {Command::find, [](W& w) { w.find(); }},
      {Command::findNext, [](W& w) { w.search(true); }},
      {Command::findPrev, [](W& w) { w.search(false); }},
      {Command::replaceLeft, [](W& w) { w.session_.replace(0); }},
      {Command::replaceRight, [](W& w) { w.session_.replace(1); }},

      {Command::viewSummary, [](W& w) { w.toggle(&Settings::viewSummary); }},
      {Command::showWhiteSpace, [](W& w) { w.toggle(&Settings::showWhiteSpace); }},
      {Command::syncScrolling, [](W& w) { w.toggle(&Settings::syncScroll); }},
      {Command::lineNumbersVirtual, [](W& w) { w.numberLines(LineNumbers::rows); }},
      {Command::lineNumbersReal, [](W& w) { w.numberLines(LineNumbers::lines); }},
      {Command::lineNumbersNone, [](W& w) { w.numberLines(LineNumbers::none); }},
      {Command::switchPane, [](W& w) { switchPane(w.view_), w.focusContents(); }},
      {Command::prevDiff, [](W& w) { w.sayDifference(goToPreviousDifference(w.view_)); }},
      {Command::nextDiff, [](W& w) { w.sayDifference(goToNextDifference(w.view_)); }},
      {Command::prevMark, [](W& w) { goToPreviousMark(w.view_), w.focusContents(); }},
      {Command::nextMark, [](W& w) { goToNextMark(w.view_), w.focusContents(); }},
      {Command::prevFile, [](W& w) { w.compareNextFile(-1); }},
      {Command::nextFile, [](W& w) { w.compareNextFile(1); }},
      {Command::switchSides, [](W& w) { w.session_.switchSides(); }},

      {Command::save, [](W& w) { w.session_.save(); }},
      {Command::saveAs, [](W& w) { w.session_.saveAs(); }},
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

std::function<void()> CompareWindow::handlerOf(Command command) {
  for (const Handler& handler : handlers()) {
    if (handler.command == command) return [this, run = handler.run] { run(*this); };
  }
  return TopLevelWindow::handlerOf(command);
}

void CompareWindow::addFacts(WindowFacts& facts) const {
  facts.activeSide = view_.activeSide();
  for (const int side : {0, 1}) {
    facts.modified[side] = history_.isModified(side);
    facts.readOnly[side] = view_.file(side).readOnly;
  }
  facts.canUndo = history_.canUndo();
  facts.canRedo = history_.canRedo();
  facts.hasSelection = view_.hasSelection();
  facts.showsComparison = session_.showsComparison();
  facts.hasFile = session_.hasFile(view_.activeSide());
  facts.hasDifferences = facts.showsComparison && view_.model().differenceBlocks() > 0;
  facts.hasParents = upOneFolder(session_.sideName(0)) && upOneFolder(session_.sideName(1));
  facts.hasFileList = dynamic_cast<FolderWindow*>(Window::of(fileList_)) != nullptr;
  if (view_.caretRow() < view_.rowCount()) facts.caretRow = view_.model().status(view_.caretRow());
}

void CompareWindow::numberLines(LineNumbers kind) {
  application().settings.showLineNumbers = static_cast<int32_t>(kind);
  application().windows.applySettings();
}

void CompareWindow::sayDifference(bool found) {
  if (found) showStatus(differenceText(view_.model(), view_.caretRow()));
  focusContents();
}

void CompareWindow::compareParents() {
  const std::string folders[] = {upOneFolder(session_.sideName(0)).value_or(""),
                                 upOneFolder(session_.sideName(1)).value_or("")};
  application().windows.compare(WindowKind::folder, nullptr, folders[0], folders[1], false);
}

void CompareWindow::compareNextFile(int direction) {
  FolderWindow* const list = dynamic_cast<FolderWindow*>(Window::of(fileList_));
  GivenSide sides[2] = {session_.sideName(0), session_.sideName(1)};
  if (list != nullptr && list->takeNextFile(sides, direction)) {
    compare(sides[0], sides[1]);
  } else {
    showStatus(loadText(TextId::noMoreFiles));
    MessageBeep(MB_OK);
  }
}

void CompareWindow::find() {
  const auto selected = selectionToFind(view_);
  application().findDialog.open(handle(), selected.value_or(application().settings.findText));
}

void CompareWindow::search(bool forwards) {
  const Settings& settings = application().settings;
  const FindQuery query = {settings.findText, settings.findMatchCase, settings.findWholeWord};
  const bool found = forwards ? findNext(view_, query) : findPrevious(view_, query);
  if (found) focusContents();
  if (!found) showMessage(handle(), TextId::searchTextNotFound, MB_OK | MB_ICONINFORMATION);
}

void CompareWindow::onFind(const FINDREPLACEW& request) {
  if (application().findDialog.takeRequest(request)) search(application().settings.findDownwards);
}

}  // namespace merivane
