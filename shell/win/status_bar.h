#pragma once

#include <windows.h>

#include <string>

#include "shell/win/control_look.h"
#include "shell/window_kind.h"

namespace merivane {

/// The status bar of a window of either kind, with a size grip and four parts: help, and what the kind of
/// window has to say.
class StatusBar {
 public:
  static constexpr int kParts = 4;
  static constexpr int help = 0;

  explicit StatusBar(const WindowTraits& traits) : traits_(traits) {}

  void create(HWND parent);
  HWND handle() const { return handle_; }

  /// Takes the font and resolution of its window; `look` must last until it takes another.
  void setLook(const ControlLook& look);

  /// Fits itself to the width of the window.
  void fit();

  /// A text that is shown already is not drawn again.
  void setText(int part, const std::string& text);

  /// Says in the first part what has just been done, to screen readers as well.
  void announce(const std::string& text);

 private:
  void fitParts();

  const WindowTraits& traits_;
  HWND handle_ = nullptr;
  int dpi_ = 96;
  std::string shown_[kParts];
};

}  // namespace merivane
