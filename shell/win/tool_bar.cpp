#include "shell/win/tool_bar.h"

#include <commctrl.h>

#include <vector>

#include "base/win/window.h"

namespace merivane {
namespace {

struct ToolButton {
  Command command;
  IconId icon;
  bool startsGroup = false;
};

constexpr ToolButton buttons[] = {
    {Command::newTextWindow, IconId::newTextWindow},
    {Command::newFolderWindow, IconId::newFolderWindow},
    {Command::save, IconId::save, true},
    {Command::saveAll, IconId::saveAll},
    {Command::print, IconId::print},
    {Command::undo, IconId::undo, true},
    {Command::redo, IconId::redo},
    {Command::cut, IconId::cut, true},
    {Command::copy, IconId::copy},
    {Command::paste, IconId::paste},
    {Command::find, IconId::find, true},
    {Command::refresh, IconId::refresh, true},
    {Command::prevDiff, IconId::prevDiff},
    {Command::nextDiff, IconId::nextDiff},
    {Command::copyDiffLeft, IconId::copyLeft, true},
    {Command::copyDiffRight, IconId::copyRight},
    {Command::deleteDiff, IconId::deleteDiff},
    {Command::switchSides, IconId::switchSides},
    {Command::options, IconId::options, true},
};

}  // namespace

void ToolBar::create(HWND parent, const ButtonIcons& icons) {
  const DWORD style = WS_CHILD | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_TOP | CCS_NODIVIDER;
  handle_ = CreateWindowExA(0, TOOLBARCLASSNAMEA, "", style, 0, 0, 0, 0, parent, nullptr, programInstance(),
                            nullptr);
  SendMessageA(handle_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageA(handle_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(icons.list()));
  SendMessageA(handle_, TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(icons.greyedList()));

  std::vector<TBBUTTON> row;
  for (const ToolButton& button : buttons) {
    TBBUTTON item = {};
    if (button.startsGroup) {
      item.fsStyle = BTNS_SEP;
      row.push_back(item);
    }
    item.iBitmap = static_cast<int>(button.icon);
    item.idCommand = static_cast<int>(button.command);
    item.fsState = TBSTATE_ENABLED;
    item.fsStyle = BTNS_BUTTON;
    row.push_back(item);
  }
  SendMessageA(handle_, TB_ADDBUTTONSA, row.size(), reinterpret_cast<LPARAM>(row.data()));
}

int ToolBar::fit() {
  SendMessageA(handle_, TB_AUTOSIZE, 0, 0);
  RECT area = {};
  GetWindowRect(handle_, &area);
  return area.bottom - area.top;
}

void ToolBar::update(const std::function<CommandState(Command)>& stateOf) {
  for (const ToolButton& button : buttons) {
    const LPARAM enabled = MAKELPARAM(stateOf(button.command).enabled ? TRUE : FALSE, 0);
    SendMessageA(handle_, TB_ENABLEBUTTON, static_cast<WPARAM>(button.command), enabled);
  }
}

}  // namespace merivane
