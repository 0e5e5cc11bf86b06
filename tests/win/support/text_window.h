#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "shell/commands.h"
#include "tests/win/support/program.h"

namespace merivane {

/// A menu answers only within its own process: a library that is hooked in there looks at one for a window
/// that gets this registered message, with the menu's place in the menu bar and the address of room for a
/// text.
inline constexpr char kMenuMessage[] = "merivane-tests-read-menu";

/// One of the program's text windows, as a user sees it. The handle is the program's: it may go at any time.
class TextWindow {
 public:
  TextWindow(const Program& program, HWND window) : program_(&program), window_(window) {}

  HWND handle() const { return window_; }
  HWND view() const { return childOf(window_, "TextView"); }
  HWND summary() const { return childOf(window_, "Summary"); }
  HWND nameBox(int side) const { return GetDlgItem(window_, 101 + side); }
  HWND nameEdit(int side) const { return childOf(nameBox(side), "Edit"); }

  std::string title() const { return textOf(window_); }

  /// Parts of the status bar.
  std::string caret() const { return statusText(1); }
  std::string lineEnds() const { return statusText(2); }
  std::string differences() const { return statusText(3); }

  /// The caret's row, from 1.
  int row() const { return std::stoi(caret().substr(5)); }

  std::string name(int side) const { return textOf(nameBox(side)); }
  void setNames(const std::string& left, const std::string& right) const;

  /// Sends a command as its menu item would.
  void run(Command command) const { PostMessageA(window_, WM_COMMAND, static_cast<WPARAM>(command), 0); }

  /// The items of one of the menu bar's menus as they show when it opens, a line each and those of submenus
  /// behind theirs: "*" in front of one that is checked, "o" where that is a bullet, "-" of one that is
  /// greyed.
  std::string menu(int place) const;

  /// Drops files on the window, or on a child of it, at a place in its client area.
  void drop(HWND window, POINT at, const std::vector<std::string>& paths) const;

  /// Waits until a comparison is shown, and answers what the status bar says of its differences.
  std::string compared() const;

  /// Makes it the window that keys go to; false when it does not become it.
  bool activate() const;

 private:
  std::string statusText(int part) const;
  std::string ask(HWND window, UINT message, WPARAM wParam, size_t room) const;

  const Program* program_;
  HWND window_;
};

}  // namespace merivane
