#pragma once

#include <windows.h>

#include <commdlg.h>

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "mergeview/merge_commands.h"
#include "mergeview/undo_history.h"
#include "shell/text_session.h"
#include "shell/win/compare_panes.h"
#include "shell/win/print_job.h"
#include "shell/win/top_level_window.h"

namespace merivane {

/// A text window: two files and their comparison. What is decided about the files is the session's; the
/// window only shows its questions and texts. compare_window_commands.cpp holds what its commands do,
/// compare_window_printing.cpp those that print.
class CompareWindow final : public TopLevelWindow, private TextViewOwner, private TextSessionHost {
 public:
  explicit CompareWindow(Application& application);
  ~CompareWindow() override;

  bool isFresh() const override { return session_.isFresh(); }
  std::string title() const override { return session_.title(); }
  bool mayClose() override { return session_.mayClose(); }

  /// The files are of a list in a folder window, whose other files can be compared from here.
  void setFileList(HWND folderWindow) { fileList_ = folderWindow; }

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam);

  // What a top-level window leaves to its kind.
  bool createContents() override;
  void layOutContents(const Area& area) override;
  NameSplit nameSplit() const override;
  HWND mainControl() const override { return panes_.view.handle(); }
  bool takesTab(HWND control) const override { return control == panes_.view.handle(); }
  bool applySettingsToContents() override;
  void showContents() override { panes_.view.applyChanges(); }
  StatusTexts statusTexts() const override;
  bool optionsChanged() const override { return session_.optionsChanged(); }
  void addFacts(WindowFacts& facts) const override;
  const BusyBox* busyBox() const override;
  std::function<void()> handlerOf(Command command) override;
  void describe(const GivenSide& left, const GivenSide& right) override { session_.describe(left, right); }
  void startComparison() override { session_.compare(); }
  bool hasUnsavedChanges() const override { return history_.isModified(0) || history_.isModified(1); }
  void offerToSave() override { session_.offerToSave(); }

  // What the panes and the session ask for.
  void onViewChanges(const ViewChanges& changes) override;
  void onRefused(const std::string& why) override { showStatus(why); }
  void onPaneMenu(int side, POINT screen) override;
  std::optional<std::string> chooseSaveFile(const std::string& title, const std::string& name) override;
  std::optional<ExportChoice> chooseExport(const ExportChoice& choice) override;

  // Commands.
  struct Handler {
    Command command;
    void (*run)(CompareWindow& window);
  };
  static std::span<const Handler> handlers();
  void numberLines(LineNumbers kind);
  std::string activePath() const { return session_.sideName(view_.activeSide()); }
  void copy(BlockKind kind, int to) { copyBlock(view_, history_, kind, to); }
  void sayDifference(bool found);
  void find();
  void compareParents();
  void compareNextFile(int direction);
  void search(bool forwards);
  void print();
  void preview();
  void setUpPage();
  void sayNoPrinter();
  std::unique_ptr<Printout> makePrintout(const PrinterDc& dc) const;
  std::unique_ptr<Printout> makePrintout() const;
  void onFind(const FINDREPLACEW& request);

  UndoHistory history_;
  ComparePanes panes_;
  ViewState& view_;
  TextSession session_;
  PrintJob printJob_;
  HWND fileList_ = nullptr;  // a folder window, which may have gone
};

}  // namespace merivane
