#include "shell/win/status_bar.h"

#include <commctrl.h>

#include "base/win/gdi.h"
#include "base/win/messages.h"
#include "base/win/window.h"
#include "shell/frame_layout.h"

namespace merivane {

void StatusBar::create(HWND parent) {
  const DWORD style = WS_CHILD | WS_CLIPSIBLINGS | SBARS_SIZEGRIP | CCS_BOTTOM;
  handle_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", style, 0, 0, 0, 0, parent, nullptr, programInstance(),
                            nullptr);
  // A part that is not there yet takes no text.
  const int edges[kParts] = {};
  SendMessageW(handle_, SB_SETPARTS, kParts, reinterpret_cast<LPARAM>(edges));
  setText(help, loadText(TextId::pressF1));
}

int StatusBar::fit() {
  SendMessageW(handle_, WM_SIZE, 0, 0);
  RECT area = {};
  GetWindowRect(handle_, &area);
  const int grip = IsZoomed(GetParent(handle_)) ? 0 : GetSystemMetrics(SM_CXVSCROLL);
  const auto edges = statusPartEdges(area.right - area.left - grip, scaled(96));
  SendMessageW(handle_, SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
  return area.bottom - area.top;
}

void StatusBar::setText(int part, const std::string& text) {
  if (text == shown_[part]) return;
  sendText(handle_, SB_SETTEXTW, static_cast<WPARAM>(part), text);
  shown_[part] = text;
}

void StatusBar::announce(const std::string& text) {
  setText(help, text);
  NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, handle_, OBJID_CLIENT, help + 1);  // children count from 1
}

}  // namespace merivane
