#pragma once

#include <windows.h>

#include <string>

namespace merivane {

/// The tips of a window's own buttons. It sees only the messages that are relayed to it.
class ToolTips {
 public:
  void create(HWND parent);
  void setFont(HFONT font);
  void add(HWND child, const std::string& tip);
  void relay(const MSG& message) const;

 private:
  HWND handle_ = nullptr;
};

}  // namespace merivane
