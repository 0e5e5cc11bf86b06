#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "shell/folder_session.h"
#include "shell/win/result_lists.h"
#include "shell/win/top_level_window.h"

namespace merivane {

/// A folder window: two folders and what a comparison of them found. What is decided about the entries is the
/// session's; the window only shows its rows, menus and questions. folder_window_commands.cpp holds what its
/// commands do.
class FolderWindow final : public TopLevelWindow, private ResultListsOwner, private FolderSessionHost {
 public:
  explicit FolderWindow(Application& application);
  ~FolderWindow() override;

  bool isFresh() const override { return session_->isFresh(); }
  std::string title() const override { return session_->title(); }
  bool mayClose() override { return session_->mayClose(); }

  /// Gives the changed file before (-1) or after (1) two files of this comparison, and marks it as compared.
  /// False when there is none.
  bool takeNextFile(GivenSide (&sides)[2], int direction);

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool PreTranslateMessage(const MSG& message) override;

  // What a top-level window leaves to its kind.
  bool createContents() override;
  void layOutContents(const Area& area) override;
  NameSplit nameSplit() const override;
  HWND mainControl() const override { return lists_.list(); }
  bool takesTab(HWND) const override { return false; }
  bool applySettingsToContents() override;
  void showContents() override {}
  StatusTexts statusTexts() const override;
  bool optionsChanged() const override { return session_->optionsChanged(); }
  void addFacts(WindowFacts& facts) const override;
  std::function<void()> handlerOf(Command command) override;
  void describe(const GivenSide& left, const GivenSide& right) override { session_->describe(left, right); }
  void startComparison() override;
  bool hasUnsavedChanges() const override { return false; }
  void offerToSave() override {}

  // What the lists ask for.
  uint32_t rowCount(int tab) const override { return session_->rowCount(kFolderTabs[tab]); }
  ResultRow resultRow(int tab, uint32_t row) const override;
  std::optional<uint32_t> rowThatBegins(int tab, std::string_view with, uint32_t from) const override;
  const ControlLook* rowLook() const override { return look(); }
  FileIcons& rowIcons() const override;
  MarkColours markColours(uint8_t mark) const override;
  void onSelection() override;
  void onRowChosen() override;
  void onRowMenu(POINT screen) override;

  // What the session asks for.
  void onResult(bool again) override;
  void onMarks(FolderCategory category) override;
  void openComparison(const GivenSide (&sides)[2], bool folders, bool several) override;

  // Commands.
  struct Handler {
    Command command;
    void (*run)(FolderWindow& window);
  };
  static std::span<const Handler> handlers();
  FolderCategory category() const { return kFolderTabs[lists_.tab()]; }
  const RowSelection& selection() const;
  std::string selectedPath() const;
  void runOnRows(Command command) { session_->run(command, category(), selection()); }
  void showMenu(const std::vector<RowMenuItem>& items, POINT screen);
  void deleteRows();
  void goToOpenRow(int direction);
  void copyPaths();
  void switchToNames();
  void showUndoLabel(HMENU menu);
  void showTabTexts();

  /// Where the user was before a comparison that is done again.
  struct Place {
    std::vector<std::string> selected;
    std::optional<std::string> caret;
    uint32_t top = 0;
  };
  Place place() const;
  void goBackTo(const Place& place);

  ResultLists lists_;
  std::unique_ptr<FolderSession> session_;  // from the window's creation on
  Place place_;
  mutable std::optional<RowSelection> selection_;        // as long as it is the lists'
  mutable std::optional<std::vector<Command>> offered_;  // for it
};

}  // namespace merivane
