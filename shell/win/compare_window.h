#pragma once

#include <windows.h>

#include <commdlg.h>
#include <shellapi.h>

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "base/texts.h"
#include "base/win/window.h"
#include "mergeview/merge_commands.h"
#include "mergeview/undo_history.h"
#include "shell/menu_state.h"
#include "shell/text_session.h"
#include "shell/win/compare_frame.h"
#include "shell/win/wait_dialog.h"
#include "shell/window_placement.h"

namespace merivane {

class Application;

/// A text window: two files, their comparison and the frame around it.
///
/// compare_window.cpp holds the window itself, compare_window_commands.cpp what its commands do. What is
/// decided about the files is the session's; the window only shows its questions and texts.
class CompareWindow final : public Window, private TextViewOwner, private TextSessionHost {
 public:
  explicit CompareWindow(Application& application);
  ~CompareWindow() override;

  /// Makes the window, not yet shown. False when it cannot be had.
  bool open(const NewWindowRect& at);

  bool PreTranslateMessage(const MSG& message) override;

  /// Puts two names into the boxes, keeps them for the next run and compares.
  void compare(const std::string& left, const std::string& right);

  /// Puts a name into a side's box.
  void setName(int side, const std::string& name) override;

  /// No comparison has been shown yet, and nothing has been typed.
  bool isFresh() const { return session_.isFresh(); }

  std::string title() const { return session_.title(); }

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
  std::string activePath() const { return session_.sideName(view_.activeSide()); }
  void copy(BlockKind kind, int to) { copyBlock(view_, history_, kind, to); }
  void search(bool forwards);
  void onFind(const FINDREPLACEA& request);

  // What the session asks for.
  std::string name(int side) const override;
  Answer ask(const Question& question) override;
  void report(const std::string& message, ReportKind kind) override;
  void reportOutOfMemory() override;
  void startJob(Work work, WhenWorkEnds whenEnded) override;
  std::optional<std::string> chooseSaveFile(const std::string& title, const std::string& name) override;
  std::optional<ExportChoice> chooseExport(const ExportChoice& choice) override;

  void onClose();
  bool onQueryEndSession();
  void onEndSession(bool ending);

  Application& application_;
  UndoHistory history_;
  CompareFrame frame_;
  ViewState& view_;
  TextSession session_;
  HWND lastFocus_ = nullptr;  // the child that has the focus whenever the window is active

  WaitDialog waitDialog_;
};

}  // namespace merivane
