#include "shell/win/tool_tips.h"

#include <commctrl.h>

#include "base/win/wide.h"
#include "base/win/window.h"

namespace merivane {

void ToolTips::create(HWND parent) {
  const DWORD style = WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX;
  handle_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, L"", style, 0, 0, 0, 0, parent, nullptr,
                            programInstance(), nullptr);
}

void ToolTips::setFont(HFONT font) {
  SendMessageW(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

void ToolTips::add(HWND child, const std::string& tip) {
  std::wstring text = wide(tip);
  TOOLINFOW tool = {};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND;
  tool.hwnd = GetParent(child);
  tool.uId = reinterpret_cast<UINT_PTR>(child);
  tool.lpszText = text.data();
  SendMessageW(handle_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::relay(const MSG& message) const {
  MSG copy = message;
  SendMessageW(handle_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&copy));
}

}  // namespace merivane
