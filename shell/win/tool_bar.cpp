#include "shell/win/tool_bar.h"

#include <commctrl.h>

#include <utility>

#include "base/win/messages.h"
#include "base/win/wide.h"
#include "base/win/window.h"

namespace merivane {

void ToolBar::create(HWND parent, WindowKind kind, const ButtonIcons& icons) {
  const DWORD style = WS_CHILD | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_WRAPABLE |
                      TBSTYLE_TOOLTIPS | CCS_TOP | CCS_NODIVIDER;
  if (handle_ != nullptr) DestroyWindow(handle_);
  greyed_.clear();
  handle_ = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", style, 0, 0, 0, 0, parent, nullptr, programInstance(),
                            nullptr);
  SetWindowPos(handle_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  SetWindowTextW(handle_, wide(loadText(TextId::toolBarLabel)).c_str());  // for screen readers, nowhere shown
  SendMessageW(handle_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageW(handle_, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
  SendMessageW(handle_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(icons.list()));
  SendMessageW(handle_, TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(icons.greyedList()));

  buttons_ = toolBarRows(kind);
  std::vector<TBBUTTON> items;
  int group = buttons_.empty() ? 0 : buttons_[0]->button->place / 10;
  for (const CommandRow* row : buttons_) {
    TBBUTTON item = {};
    if (std::exchange(group, row->button->place / 10) != group) {
      item.fsStyle = BTNS_SEP;
      items.push_back(item);
    }
    item.iBitmap = static_cast<int>(row->button->icon);
    item.idCommand = static_cast<int>(row->id);
    item.fsState = TBSTATE_ENABLED;
    item.fsStyle = BTNS_BUTTON;
    item.iString = reinterpret_cast<INT_PTR>(row->help);  // its name for screen readers, nowhere shown
    items.push_back(item);
  }
  SendMessageW(handle_, TB_ADDBUTTONSW, items.size(), reinterpret_cast<LPARAM>(items.data()));
}

void ToolBar::fit() {
  // The first time breaks the rows at the width that the bar had, and gives it the new one.
  for (int i = 0; i < 2; ++i) SendMessageW(handle_, TB_AUTOSIZE, 0, 0);
}

void ToolBar::update(const std::function<CommandState(Command)>& stateOf) {
  for (const CommandRow* row : buttons_) {
    const bool enabled = stateOf(row->id).enabled;
    if (enabled == !greyed_.contains(row->id)) continue;
    SendMessageW(handle_, TB_ENABLEBUTTON, static_cast<WPARAM>(row->id), MAKELPARAM(enabled, 0));
    if (enabled) {
      greyed_.erase(row->id);
    } else {
      greyed_.insert(row->id);
    }
  }
}

}  // namespace merivane
