#pragma once

#include <windows.h>

#include <functional>

#include "shell/commands.h"
#include "shell/menu_state.h"
#include "shell/win/button_icons.h"

namespace merivane {

/// A text window's tool bar. Its buttons send commands to the window and ask it, by TTN_GETDISPINFO, for
/// their tips.
class ToolBar {
 public:
  /// `icons` must outlive the tool bar's window.
  void create(HWND parent, const ButtonIcons& icons);
  HWND handle() const { return handle_; }

  /// Fits itself to the width of the window; answers the height it takes.
  int fit();

  /// Enables and presses the buttons as `stateOf` says.
  void update(const std::function<CommandState(Command)>& stateOf);

 private:
  HWND handle_ = nullptr;
};

}  // namespace merivane
