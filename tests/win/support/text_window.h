#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "shell/commands.h"
#include "tests/win/support/menus.h"
#include "tests/win/support/program.h"

namespace merivane {

/// One of the program's text windows, as a user sees it. The handle is the program's: it may go at any time.
class TextWindow {
 public:
  TextWindow(const Program& program, HWND window);

  HWND handle() const { return window_; }
  HWND view() const { return childOf(window_, "TextView"); }
  HWND summary() const { return childOf(window_, "Summary"); }
  HWND nameBox(int side) const;
  HWND nameEdit(int side) const { return childOf(nameBox(side), "Edit"); }

  std::string title() const { return textOf(window_); }

  /// Parts of the status bar.
  std::string help() const { return statusText(0); }
  std::string caret() const { return statusText(1); }
  std::string lineEnds() const { return statusText(2); }
  std::string differences() const { return statusText(3); }

  std::string name(int side) const { return textOf(nameBox(side)); }
  void setName(int side, const std::string& name) const;

  /// The entries of a name box's list.
  std::vector<std::string> names(int side) const;

  /// Sends a command as its menu item would.
  void run(Command command) const;

  /// One of the menus of the menu bar, as it shows when it opens.
  std::vector<MenuItem> menu(int place) const { return readMenu(program_->process(), window_, place); }

  /// Makes it the window that keys go to; false when it does not become it.
  bool activate() const;

  /// Waits until a comparison is shown, and answers what the status bar says of its differences.
  std::string compared() const;

  RECT area() const;

 private:
  std::string statusText(int part) const;

  const Program* program_;
  HWND window_;
};

}  // namespace merivane
