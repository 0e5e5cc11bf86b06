#include "shell/win/status_bar.h"

#include <commctrl.h>

#include "base/win/gdi.h"
#include "base/win/messages.h"
#include "base/win/window.h"
#include "shell/frame_layout.h"

namespace merivane {

void StatusBar::create(HWND parent) {
  const DWORD style = WS_CHILD | WS_CLIPSIBLINGS | SBARS_SIZEGRIP | CCS_BOTTOM;
  handle_ = CreateWindowExA(0, STATUSCLASSNAMEA, "", style, 0, 0, 0, 0, parent, nullptr, programInstance(),
                            nullptr);
  // A part that is not there yet takes no text.
  const int edges[kParts] = {};
  SendMessageA(handle_, SB_SETPARTS, kParts, reinterpret_cast<LPARAM>(edges));
  setText(help, loadText(TextId::pressF1));
}

int StatusBar::fit() {
  SendMessageA(handle_, WM_SIZE, 0, 0);
  RECT area = {};
  GetWindowRect(handle_, &area);
  const int grip = IsZoomed(GetParent(handle_)) ? 0 : GetSystemMetrics(SM_CXVSCROLL);
  const auto edges = statusPartEdges(area.right - area.left - grip, scaled(96));
  SendMessageA(handle_, SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
  return area.bottom - area.top;
}

void StatusBar::setText(int part, const std::string& text) {
  if (text == shown_[part]) return;
  SendMessageA(handle_, SB_SETTEXTA, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(text.c_str()));
  shown_[part] = text;
}

}  // namespace merivane
