#pragma once

#include <windows.h>

#include <string>

namespace merivane {

/// A text window's status bar, with a size grip and four parts.
class StatusBar {
 public:
  enum Part { help, caret, lineEnds, differences };

  void create(HWND parent);
  HWND handle() const { return handle_; }

  /// Fits itself to the width of the window; answers the height it takes.
  int fit();

  void setText(Part part, const std::string& text);

 private:
  HWND handle_ = nullptr;
};

}  // namespace merivane
