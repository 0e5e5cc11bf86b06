#include "shell/win/compare_window.h"

#include "shell/high_contrast.h"
#include "shell/win/application.h"
#include "shell/win/export_dialog.h"
#include "shell/win/file_dialogs.h"
#include "shell/win/system_facts.h"

namespace merivane {

CompareWindow::CompareWindow(Application& application)
    : TopLevelWindow(application, WindowKind::text),
      panes_(*this, history_),
      view_(panes_.view.state()),
      session_(*this, application.sessionWorld(), view_, history_),
      printJob_([&application] { application.serveMessages(); }) {}

CompareWindow::~CompareWindow() { destroy(); }

LRESULT CompareWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const HWND window = handle();
  const LRESULT result = answer(message, wParam, lParam);
  if (of(window) == this) showContents();  // the message may have been the last
  return result;
}

LRESULT CompareWindow::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == findReplaceMessage) return onFind(*reinterpret_cast<FINDREPLACEW*>(lParam)), 0;
  switch (message) {
    case WM_DESTROY: printJob_.abandon(); return TopLevelWindow::onMessage(message, wParam, lParam);
    case WM_HSCROLL: panes_.onHScroll(reinterpret_cast<HWND>(lParam), LOWORD(wParam)); return 0;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL: return SendMessageW(panes_.view.handle(), message, wParam, lParam);
    default: return TopLevelWindow::onMessage(message, wParam, lParam);
  }
}

bool CompareWindow::createContents() {
  if (!panes_.create(handle())) return false;
  session_.restoreNames();
  return true;
}

void CompareWindow::layOutContents(const Area& area) {
  panes_.layOut(area, application().settings.viewSummary, dpi());
}

TopLevelWindow::NameSplit CompareWindow::nameSplit() const {
  return {view_.pane(0).paneRight, view_.pane(1).paneLeft};
}

const BusyBox* CompareWindow::busyBox() const {
  return printJob_.isBusy() ? &printJob_ : TopLevelWindow::busyBox();
}

bool CompareWindow::applySettingsToContents() {
  const Settings& settings = application().settings;
  panes_.view.setFont(settings.fontFace, settings.fontSize, dpi());
  panes_.view.showCaretBox(settings.drawCaretBox);
  ViewOptions options = settings.viewOptions();
  if (const auto contrast = highContrast()) followHighContrast(*contrast, options);
  view_.setOptions(options);
  view_.setCompareOptions(settings.compareOptions());
  showContents();
  return panes_.showsSummary() != settings.viewSummary;
}

TopLevelWindow::StatusTexts CompareWindow::statusTexts() const {
  return {session_.caretText(), session_.lineEndText(), session_.differencesText()};
}

void CompareWindow::onViewChanges(const ViewChanges& changes) {
  const bool all = changes.everything || changes.looks;
  if (all || changes.history) panes_.summary.setBlank(!session_.showsComparison());
  if (all) panes_.summary.redraw();
  if (all || changes.edges || changes.scrolled || changes.scrollRanges) panes_.followSplit();
  if (all || changes.edges) layOutNames();
  if (all || changes.caret) panes_.summary.moveCaretMarker();
  if (all || changes.caret || changes.history || changes.modified) changed();
}

void CompareWindow::onPaneMenu(int side, POINT screen) {
  const auto number = static_cast<int>(paneMenu(view_.model().status(view_.caretRow()), side));
  const HMENU menu = LoadMenuW(programInstance(), MAKEINTRESOURCEW(number));
  TrackPopupMenu(GetSubMenu(menu, 0), TPM_RIGHTBUTTON, screen.x, screen.y, 0, handle(), nullptr);
  DestroyMenu(menu);
}

std::optional<std::string> CompareWindow::chooseSaveFile(const std::string& title, const std::string& name) {
  return merivane::chooseSaveFile(handle(), title, name);
}

std::optional<ExportChoice> CompareWindow::chooseExport(const ExportChoice& choice) {
  return ExportDialog(choice).run(handle());
}

}  // namespace merivane
