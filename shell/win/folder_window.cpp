#include "shell/win/folder_window.h"

#include "operations/win/shell_trees.h"
#include "shell/high_contrast.h"
#include "shell/win/application.h"
#include "shell/win/compare_window.h"
#include "shell/win/system_facts.h"

namespace merivane {

FolderWindow::FolderWindow(Application& application)
    : TopLevelWindow(application, WindowKind::folder), lists_(*this) {}

FolderWindow::~FolderWindow() { destroy(); }

LRESULT FolderWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (const auto answered = lists_.answer(message, wParam, lParam)) return *answered;
  const LRESULT result = TopLevelWindow::onMessage(message, wParam, lParam);
  if (message == WM_INITMENUPOPUP) showUndoLabel(reinterpret_cast<HMENU>(wParam));
  return result;
}

bool FolderWindow::PreTranslateMessage(const MSG& message) {
  const bool changesTab = message.message == WM_KEYDOWN && message.wParam == VK_TAB && isCtrlDown();
  if (!changesTab || isBusy()) return TopLevelWindow::PreTranslateMessage(message);
  const int step = isKeyDown(VK_SHIFT) ? ResultLists::kTabs - 1 : 1;
  lists_.showTab((lists_.tab() + step) % ResultLists::kTabs);
  return true;
}

bool FolderWindow::createContents() {
  std::shared_ptr<TreeOperations> trees = makeShellTrees(handle());
  FolderSessionHost& host = *this;
  session_ = std::make_unique<FolderSession>(host, application().sessionWorld(), std::move(trees));
  if (!lists_.create(handle())) return false;
  session_->restoreNames();
  return true;
}

void FolderWindow::layOutContents(const Area& area) { lists_.layOut(area); }

TopLevelWindow::NameSplit FolderWindow::nameSplit() const {
  RECT client = {};
  GetClientRect(handle(), &client);
  const int middle = static_cast<int>(client.right) / 2;
  return {middle - scaled(2, dpi()), middle + scaled(2, dpi())};
}

bool FolderWindow::applySettingsToContents() {
  lists_.followLook();
  showTabTexts();
  return false;
}

TopLevelWindow::StatusTexts FolderWindow::statusTexts() const {
  return {session_->selectionText(category(), selection()), session_->filterText(), session_->troubleText()};
}

// What the lists ask for.

ResultRow FolderWindow::resultRow(int tab, uint32_t row) const {
  const FolderCategory category = kFolderTabs[tab];
  ResultRow result;
  result.name = session_->rowName(category, row);
  result.description = session_->rowDescription(category, row);
  result.operation = session_->markText(category, row);
  result.path = session_->path(category, row);
  result.mark = static_cast<uint8_t>(session_->mark(category, row));
  result.isFolder = session_->entry(category, row).isFolder;
  return result;
}

std::optional<uint32_t> FolderWindow::rowThatBegins(int tab, std::string_view with, uint32_t from) const {
  return session_->findTyped(kFolderTabs[tab], with, from);
}

FileIcons& FolderWindow::rowIcons() const { return application().icons(dpi()); }

MarkColours FolderWindow::markColours(uint8_t mark) const {
  ViewOptions options = application().settings.viewOptions();
  if (const auto contrast = highContrast()) followHighContrast(*contrast, options);
  return merivane::markColours(options.colours, options.textColour, mark);
}

void FolderWindow::onSelection() {
  selection_.reset();
  offered_.reset();
  changed();
}

const RowSelection& FolderWindow::selection() const {
  if (!selection_) selection_ = RowSelection{lists_.selectedRows(), lists_.caretRow()};
  return *selection_;
}

// What the session asks for.

FolderWindow::Place FolderWindow::place() const {
  Place place;
  for (const uint32_t row : selection().selected)
    place.selected.push_back(session_->rowName(category(), row));
  if (selection().caret) place.caret = session_->rowName(category(), *selection().caret);
  place.top = lists_.topRow();
  return place;
}

void FolderWindow::goBackTo(const Place& place) {
  lists_.setTopRow(place.top);
  lists_.select(session_->rowsNamed(category(), place.selected));
  if (!place.caret) return;
  const std::vector<uint32_t> caret = session_->rowsNamed(category(), {*place.caret});
  if (!caret.empty()) lists_.goTo(caret.front());
}

void FolderWindow::startComparison() {
  place_ = place();
  session_->compare();
}

void FolderWindow::onResult(bool again) {
  lists_.refill();
  if (again) goBackTo(place_);
  showTabTexts();
  if (session_->showsComparison()) showStatus(session_->countsText());
  changed();
}

void FolderWindow::onMarks(FolderCategory category) {
  offered_.reset();
  showTabTexts();
  if (category == this->category()) lists_.redraw();
  changed();
}

void FolderWindow::showTabTexts() {
  std::array<std::string, ResultLists::kTabs> texts;
  for (int tab = 0; tab < ResultLists::kTabs; ++tab) texts[tab] = session_->tabLabel(kFolderTabs[tab]);
  lists_.setTabTexts(texts);
}

void FolderWindow::openComparison(const GivenSide (&sides)[2], bool folders, bool several) {
  OpenWindows& windows = application().windows;
  const WindowKind kind = folders ? WindowKind::folder : WindowKind::text;
  // Folders get a window of their own in any case, or this one would lose its result.
  TopLevelWindow* const opened = windows.compare(kind, nullptr, sides[0], sides[1], folders || several);
  if (opened != nullptr && !folders) static_cast<CompareWindow*>(opened)->setFileList(handle());
}

bool FolderWindow::takeNextFile(GivenSide (&sides)[2], int direction) {
  const auto row = session_->changedRow({sides[0].path, sides[1].path});
  const auto next = row ? session_->nextChangedFile(*row, direction) : std::nullopt;
  if (!next) return false;
  session_->sides(FolderCategory::changed, *next, sides);
  session_->markCompared(FolderCategory::changed, *next);
  if (category() == FolderCategory::changed) {
    lists_.select({*next});
    lists_.goTo(*next);
  }
  return true;
}

}  // namespace merivane
