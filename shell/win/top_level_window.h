#pragma once

#include <windows.h>

#include <shellapi.h>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/win/window.h"
#include "shell/frame_layout.h"
#include "shell/given_side.h"
#include "shell/menu_state.h"
#include "shell/session_host.h"
#include "shell/win/control_look.h"
#include "shell/win/name_row.h"
#include "shell/win/status_bar.h"
#include "shell/win/tool_bar.h"
#include "shell/win/tool_tips.h"
#include "shell/win/wait_dialog.h"
#include "shell/window_kind.h"
#include "shell/window_list.h"
#include "shell/window_placement.h"

namespace merivane {

class Application;

/// One of the program's top-level windows, whatever it compares: the menus, keys and bars, the row of names,
/// the wait for a comparison, drops, placement and closing. What a kind of window adds are its contents,
/// between the names and the status bar, and the commands about them.
///
/// Title, Window menu, tool bar and status bar are not touched while something happens: whatever may make
/// them other says changed(), and when no other message is left they are compared with what they show.
///
/// top_level_window.cpp holds the window itself, top_level_commands.cpp its menus, bars and commands.
class TopLevelWindow : public Window, protected virtual SessionHost {
 public:
  /// Makes the window, not yet shown. False when it cannot be created.
  bool open(const NewWindowRect& at);

  WindowKind kind() const { return kind_; }

  bool PreTranslateMessage(const MSG& message) override;

  /// Something is under way, such as a comparison, or a dialog is open: it takes no other comparison
  /// meanwhile.
  bool isBusy() const { return busyBox() != nullptr || !IsWindowEnabled(handle()); }

  /// The window that takes the keyboard for this one: a box over it, or itself.
  HWND windowForKeys() const;

  /// Puts two names into the boxes, with what is said of them; and compares.
  void setSides(const GivenSide& left, const GivenSide& right);
  void compare(const GivenSide& left, const GivenSide& right);

  void setName(int side, const std::string& name) override;

  /// Gives the keyboard to a name box, its text selected.
  void focusName(int side);

  /// No comparison has been shown yet, and nothing has been typed.
  virtual bool isFresh() const = 0;

  virtual std::string title() const = 0;

  /// Whether the window may close; asks the user where something would be lost.
  virtual bool mayClose() = 0;

  /// Closes it without a question.
  void close();

  /// Something that the title, the Window menu, the tool bar or the status bar tells may have changed.
  void changed();

  /// Brings them up to date, which otherwise waits until no other message is left.
  void update();

  /// The window follows the settings.
  void applySettings();

 protected:
  TopLevelWindow(Application& application, WindowKind kind);

  /// What the status bar says besides help, from the left.
  using StatusTexts = std::array<std::string, StatusBar::kParts - 1>;

  /// Where the left name ends and the right one begins, in the client area.
  struct NameSplit {
    int leftEnd;
    int rightStart;
  };

  // What a kind of window adds.

  /// Creates the contents, in the order of the Tab key. False when they cannot be created.
  virtual bool createContents() = 0;

  virtual void layOutContents(const Area& area) = 0;
  virtual NameSplit nameSplit() const = 0;

  /// The control that has the keyboard after a comparison.
  virtual HWND mainControl() const = 0;

  /// Whether a control takes Tab as text, so that only Ctrl+Tab leaves it.
  virtual bool takesTab(HWND control) const = 0;

  /// Returns whether the window has to be laid out anew.
  virtual bool applySettingsToContents() = 0;

  /// Brings the contents up to date, before a box waits for the user.
  virtual void showContents() = 0;

  virtual StatusTexts statusTexts() const = 0;

  /// What is shown was compared under other options than a comparison would be now.
  virtual bool optionsChanged() const = 0;

  /// Adds what commands depend on to what is known of every window.
  virtual void addFacts(WindowFacts& facts) const = 0;

  /// Takes what is said of files or folders to compare.
  virtual void describe(const GivenSide& left, const GivenSide& right) = 0;

  /// Has the files or folders compared that the boxes name.
  virtual void startComparison() = 0;

  /// Whether something is not saved.
  virtual bool hasUnsavedChanges() const = 0;

  /// Asks whether to save it, as closing does, whatever the settings.
  virtual void offerToSave() = 0;

  /// The box that takes the window's input while something is under way; null when nothing is.
  virtual const BusyBox* busyBox() const { return waitDialog_.isBusy() ? &waitDialog_ : nullptr; }

  /// What runs a command; empty for one that the window does not have.
  virtual std::function<void()> handlerOf(Command command);

  // What they are built on.

  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  /// Runs a command that is enabled.
  void run(Command command);

  /// Gives the keyboard to the contents.
  void focusContents() { SetFocus(mainControl()); }

  /// Turns a setting round, for all windows.
  void toggle(bool Settings::*setting);

  /// Lays out the whole window, or only the row of names.
  void layOut();
  void layOutNames();

  Application& application() const { return application_; }

  /// The window's resolution, in pixels an inch.
  int dpi() const { return look_->dpi; }
  const ControlLook* look() const { return look_.get(); }  // null until the window has been created

  // What a session asks of its window.
  std::string name(int side) const override { return names_.text(side); }
  Answer ask(const Question& question) override;
  void report(const std::string& message, ReportKind kind) override;
  void reportOutOfMemory() override;
  void showStatus(const std::string& text) override;
  void startJob(TextId waiting, Work work, WhenWorkEnds whenEnded, ProgressText progress) override;

 private:
  struct ShownBars {
    bool toolBar = false;
    bool statusBar = false;
    bool operator==(const ShownBars&) const = default;
  };

  void onDestroyed() override;
  bool onCreate();
  void onSize(WPARAM kind);
  void onDpiChanged(int dpi, const RECT& area);
  void onSystemSettings(UINT which);
  void onSystemColours();
  void takeLook(int dpi);
  void onActivate(bool active, bool minimized);
  void onSetFocus();
  void onInitMenuPopup(HMENU menu);
  void onMenuSelect(UINT item, UINT flags);
  std::string idleHelp() const;
  LRESULT onNotify(NMHDR& header);
  void onDropFiles(HDROP drop);
  void onCommand(int id, int code);
  void onNameBox(int side, int code);
  void onClose();
  bool onQueryEndSession(LPARAM reason);
  void onEndSession(bool ending);
  bool onKeyInName(const MSG& message, NameBox& box);
  bool onEscape();
  bool onEnter(HWND control);
  bool onTab(const MSG& message);
  std::optional<Command> commandOf(const MSG& key) const;
  void capturePlacement();
  FrameMetrics metrics() const;
  HMENU windowMenu() const;
  void fillWindowMenu();
  WindowFacts facts() const;
  CommandState stateOf(Command command, const WindowFacts& now);

  Application& application_;
  const WindowKind kind_;
  const WindowTraits& traits_;
  std::unique_ptr<ControlLook> look_;  // from the window's creation on
  ToolBar toolBar_;
  ToolTips toolTips_;
  NameRow names_;
  StatusBar statusBar_;
  WaitDialog waitDialog_;
  ShownBars shownBars_;
  bool escapeHeld_ = false;    // since before the window was active: it was meant for a dialog that has gone
  bool keepsSession_ = false;  // the session's end waits for the user's answer
  HWND lastFocus_ = nullptr;   // the child that has the focus whenever the window is active

  bool changed_ = false;  // since the last update()
  bool saysOptionsChanged_ = false;
  std::string shownTitle_;
  std::vector<WindowMenuItem> shownWindows_;  // in the Window menu
};

}  // namespace merivane
