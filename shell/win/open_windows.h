#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "shell/commands.h"
#include "shell/window_list.h"

namespace merivane {

class Application;
class CompareWindow;

/// The program's top-level windows. Folder windows are not there yet: what asks for one is greyed or refused
/// before it comes here, and their list stays empty.
class OpenWindows {
 public:
  /// `showCommand` is how the first window is to be shown.
  OpenWindows(Application& application, int showCommand);
  ~OpenWindows();

  /// Compares two files in the window that the reuse rules choose, or in a new one. False when there is no
  /// window to be had.
  bool OpenFilesInTextWindow(CompareWindow* target, const std::string& left, const std::string& right,
                             bool force);

  /// Opens an empty window, with a name in its left box unless that is empty. False when it cannot be had.
  bool NewTextWindow(const std::string& left = {});

  /// Takes a closed window off the list; the last one ends the program. The object goes with the next
  /// forgetClosed(), as one of its own handlers may have closed it.
  void RemoveWindow(const CompareWindow& window);
  void forgetClosed();

  /// Closes all windows, and the program with them; stops at the first that stays.
  void closeAll();

  /// Fills a Window menu behind its first four items.
  void BuildWindowMenu(const CompareWindow& current, HMENU menu) const;

  /// Gives the focus to the window that a Window-menu command names; nothing for a number beyond the list.
  void ActivateListedWindow(Command command) const;

  void cascade() const;
  void tile(bool horizontally) const;

  /// Menus, titles and tool bars of all windows follow what happened to one.
  void refreshAll();

  /// The panes of all windows follow the settings.
  void applySettings();

  int textWindows() const { return static_cast<int>(open_.size()); }
  int folderWindows() const { return 0; }

 private:
  CompareWindow* find(WindowId id) const;
  CompareWindow* make();
  std::vector<HWND> handles() const;

  Application& application_;
  int showCommand_;
  std::vector<std::unique_ptr<CompareWindow>> open_;
  std::vector<std::unique_ptr<CompareWindow>> closed_;
};

}  // namespace merivane
