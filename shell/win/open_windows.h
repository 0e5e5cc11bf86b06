#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "shell/commands.h"
#include "shell/given_side.h"
#include "shell/window_kind.h"
#include "shell/window_list.h"

namespace merivane {

class Application;
class TopLevelWindow;

/// The program's top-level windows, each kind in a list of its own.
class OpenWindows {
 public:
  /// `showCommand` is how the first window is to be shown.
  OpenWindows(Application& application, int showCommand);
  ~OpenWindows();

  /// Compares two files or two folders in the window of that kind that the reuse rules choose, or in a new
  /// one; `target` is the window that was asked, if one was. Returns the window, null when none can be
  /// created or the one chosen is busy.
  TopLevelWindow* compare(WindowKind kind, TopLevelWindow* target, const GivenSide& left,
                          const GivenSide& right, bool force);

  /// Opens a window to name files or folders in: with those of the last comparison, or with these. The
  /// keyboard is in the box where a name is to come. Null when it cannot be created.
  TopLevelWindow* openNew(WindowKind kind);
  TopLevelWindow* openNew(WindowKind kind, const GivenSide& left, const GivenSide& right);

  /// Takes a closed window off the list; the last one ends the program. The object goes with the next
  /// forgetClosed(), as one of its own handlers may have closed it.
  void RemoveWindow(const TopLevelWindow& window);
  void forgetClosed();

  /// Closes all windows, and the program with them, once each has said that it may close.
  void closeAll();

  /// What stands in the Window menu of one of the windows after its fixed items.
  std::vector<WindowMenuItem> menuItems(const TopLevelWindow& current) const;

  /// Gives the focus to the window that a Window-menu command names; nothing for a number beyond the list.
  void ActivateListedWindow(Command command) const;

  void cascade() const;
  void tile(bool horizontally) const;

  /// All windows follow the settings.
  void applySettings();

  int count(WindowKind kind) const { return static_cast<int>(list(kind).size()); }

 private:
  using List = std::vector<std::unique_ptr<TopLevelWindow>>;

  const List& list(WindowKind kind) const { return open_[static_cast<int>(kind)]; }
  std::unique_ptr<TopLevelWindow> construct(WindowKind kind);
  TopLevelWindow* make(WindowKind kind);
  std::vector<HWND> handles() const;
  void listChanged();

  Application& application_;
  int showCommand_;
  List open_[kWindowKinds];
  List closed_;
};

}  // namespace merivane
