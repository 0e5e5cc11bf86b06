#pragma once

#include <windows.h>

#include <functional>
#include <set>
#include <vector>

#include "shell/command_table.h"
#include "shell/win/button_icons.h"
#include "shell/window_kind.h"

namespace merivane {

/// The tool bar of a window of either kind. Its buttons send commands to the window and ask it, by
/// TTN_GETDISPINFO, for their tips.
class ToolBar {
 public:
  /// Creates it; once more in place of the one there is, for another resolution. `icons` must last as long.
  void create(HWND parent, WindowKind kind, const ButtonIcons& icons);
  HWND handle() const { return handle_; }

  /// Fits itself to the width of the window.
  void fit();

  /// Enables the buttons as `stateOf` says. One that shows it already is left alone.
  void update(const std::function<CommandState(Command)>& stateOf);

 private:
  HWND handle_ = nullptr;
  std::vector<const CommandRow*> buttons_;
  std::set<Command> greyed_;
};

}  // namespace merivane
