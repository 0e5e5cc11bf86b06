#include "shell/win/status_bar.h"

#include <commctrl.h>

#include "base/win/dpi.h"
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

void StatusBar::setLook(const ControlLook& look) {
  dpi_ = look.dpi;
  SendMessageW(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(look.fonts.status.get()), TRUE);
}

void StatusBar::fit() {
  SendMessageW(handle_, WM_SIZE, 0, 0);
  fitParts();
}

void StatusBar::fitParts() {
  RECT area = {};
  GetWindowRect(handle_, &area);
  const int grip = IsZoomed(GetParent(handle_)) ? 0 : systemMetric(SM_CXVSCROLL, dpi_);
  unsigned empty = 0;
  for (int part = 0; part < kParts; ++part) empty |= unsigned{shown_[part].empty()} << part;
  const auto edges = withoutEmptyParts(traits_.statusEdges(area.right - area.left - grip, dpi_), empty);
  SendMessageW(handle_, SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
}

void StatusBar::setText(int part, const std::string& text) {
  if (text == shown_[part]) return;
  const bool appearsOrGoes = text.empty() != shown_[part].empty();
  sendText(handle_, SB_SETTEXTW, static_cast<WPARAM>(part), text);
  shown_[part] = text;
  if (part != help && appearsOrGoes) fitParts();
}

void StatusBar::announce(const std::string& text) {
  setText(help, text);
  NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, handle_, OBJID_CLIENT, help + 1);  // children count from 1
}

}  // namespace merivane
