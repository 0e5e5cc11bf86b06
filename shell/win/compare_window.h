#pragma once

#include <windows.h>

#include <commdlg.h>
#include <shellapi.h>

#include <memory>
#include <span>
#include <string>

#include "base/texts.h"
#include "base/win/window.h"
#include "mergeview/merge_commands.h"
#include "mergeview/side_commands.h"
#include "mergeview/undo_history.h"
#include "shell/close_rules.h"
#include "shell/menu_state.h"
#include "shell/win/compare_frame.h"
#include "shell/win/wait_dialog.h"
#include "shell/window_placement.h"

namespace merivane {

class Application;

/// A text window: two files, their comparison and the frame around it.
///
/// compare_window.cpp holds the window itself, compare_window_commands.cpp what its commands do, and
/// compare_window_files.cpp comparing, saving, exporting and closing.
class CompareWindow final : public Window,
                            private TextViewOwner,
                            private ReplaceOwner,
                            private ClosingWindow {
 public:
  explicit CompareWindow(Application& application);
  ~CompareWindow() override;

  /// Makes the window, not yet shown. False when it cannot be had.
  bool open(const NewWindowRect& at);

  bool PreTranslateMessage(const MSG& message) override;

  /// Puts two names into the boxes, keeps them for the next run and compares.
  void compare(const std::string& left, const std::string& right);

  /// Puts a name into a side's box.
  void setName(int side, const std::string& name);

  /// No comparison has been shown yet, and nothing has been typed.
  bool isFresh() const { return fresh_; }

  std::string title() const;

  /// Title, Window menu, tool bar and status bar follow what has happened.
  void refresh();

  /// The panes follow the settings.
  void applySettings();

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam);
  void onDestroyed() override;
  bool onCreate();
  void onSize(WPARAM kind);
  void onGetMinMaxInfo(MINMAXINFO& info) const;
  void onActivate(bool active, bool minimized);
  void onSetFocus();
  void onSystemChange();
  void capturePlacement();
  void onInitMenuPopup(HMENU menu);
  void onMenuSelect(UINT item, UINT flags);
  LRESULT onNotify(NMHDR& header);
  void onHScroll(HWND bar, int request);
  void onDropFiles(HDROP drop);
  bool onTab(const MSG& message);
  bool isNameListOpen() const;
  bool undoInNameBox() const;
  HMENU windowMenu() const;

  void onViewChanges(const ViewChanges& changes) override;
  void onPaneMenu(int side, POINT screen) override;

  // Commands.
  struct Handler {
    Command command;
    void (*run)(CompareWindow& window);
  };
  static std::span<const Handler> handlers();
  void onCommand(int id, int code);
  void onNameBox(int side, int code);
  void run(Command command);
  static const Handler* findHandler(Command command);
  CommandState stateOf(Command command, const WindowFacts& now) const;
  WindowFacts facts() const;
  void updateToolBar();
  void showCaretPlace();
  void toggle(bool Settings::*setting);
  void numberLines(LineNumbers kind);
  void browse(int side);
  void goUpOneFolder(int side);
  std::string activePath() const;
  void copy(BlockKind kind, int to) { copyBlock(view_, history_, kind, to); }
  void search(bool forwards);
  void onFind(const FINDREPLACEA& request);
  void switchSides();

  // Files.
  void startComparison();
  struct Run;
  void onCompared(const Outcome& outcome, Run& run);
  void showComparison(const Outcome& outcome, Run& run);
  bool mayClose();
  void onClose();
  bool onQueryEndSession();
  void onEndSession(bool ending);
  TitleSide titleSide(int side) const;
  std::string nameOf(int side) const;
  bool saveSide(int side);
  void saveAll();
  bool mayOverwrite(int side, const std::string& path);
  bool warn(TextId question, const std::string& path) const;
  bool write(int side, const std::string& path);
  void showSaved();
  bool reportSaved(SystemError error) const;
  void exportResults();
  bool mayReplace() override;
  bool saveText(int side, const TextBuffer& text, LineEndKind kind) override;
  void onSideSaved(int side) override;
  TitleSide side(int side) override { return titleSide(side); }
  CloseAnswer ask(const std::string& question) override;
  bool save(int side, const std::string& path) override;
  bool saveAs(int side, const char* title) override;
  bool saveAs(int side);

  Application& application_;
  UndoHistory history_;
  CompareFrame frame_;
  ViewState& view_;
  HWND lastFocus_ = nullptr;  // the child that has the focus whenever the window is active

  bool fresh_ = true;
  WaitDialog waitDialog_;
};

}  // namespace merivane
