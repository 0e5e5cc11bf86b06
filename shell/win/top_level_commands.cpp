// Menus, tips and the commands that every window has.

#include <windows.h>

#include <commctrl.h>

#include <iterator>
#include <span>

#include "base/win/messages.h"
#include "base/win/wide.h"
#include "shell/command_table.h"
#include "shell/help_places.h"
#include "shell/win/about_dialog.h"
#include "shell/win/application.h"
#include "shell/win/shell_utilities.h"
#include "shell/win/top_level_window.h"

namespace merivane {
namespace {

constexpr int fixedWindowItems = 4;  // at the top of the Window menu

void showState(HMENU menu, UINT item, const CommandState& state) {
  EnableMenuItem(menu, item, MF_BYCOMMAND | (state.enabled ? MF_ENABLED : MF_GRAYED));
  if (state.radio && state.checked) {
    CheckMenuRadioItem(menu, item, item, item, MF_BYCOMMAND);
  } else {
    CheckMenuItem(menu, item, MF_BYCOMMAND | (state.checked ? MF_CHECKED : MF_UNCHECKED));
  }
}

}  // namespace

std::function<void()> TopLevelWindow::handlerOf(Command command) {
  OpenWindows& windows = application_.windows;
  switch (command) {
    case Command::newTextWindow: return [&] { windows.openNew(WindowKind::text); };
    case Command::newFolderWindow: return [&] { windows.openNew(WindowKind::folder); };
    case Command::close: return [this] { PostMessageW(handle(), WM_CLOSE, 0, 0); };
    case Command::exit: return [&] { windows.closeAll(); };
    case Command::viewToolBar: return [this] { toggle(&Settings::viewToolBar); };
    case Command::viewStatusBar: return [this] { toggle(&Settings::viewStatusBar); };
    case Command::refresh: return [this] { startComparison(); };
    case Command::options: return [this] { application_.optionsDialog.open(handle()); };
    case Command::cascade: return [&] { windows.cascade(); };
    case Command::tileHorizontally: return [&] { windows.tile(true); };
    case Command::tileVertically: return [&] { windows.tile(false); };
    case Command::upOneFolderLeft: return [this] { names_.goUpOneFolder(0); };
    case Command::upOneFolderRight: return [this] { names_.goUpOneFolder(1); };
    case Command::usersManual: return [this] { application_.help.show(); };
    case Command::quickTour: return [this] { application_.help.show("quicktour.html"); };
    case Command::customerSupport: return [this] { application_.help.show("support.html"); };
    case Command::visitWebsite: return [this] { OpenAddress(handle(), kWebSite, showSystemError); };
    case Command::sendEmail: return [this] { OpenAddress(handle(), kSupportMail, showSystemError); };
    case Command::tipOfTheDay: return [this] { application_.tipDialog.show(handle()); };
    case Command::about: return [this] { AboutDialog(application_.help).run(handle()); };
    default: break;
  }
  for (const int side : {0, 1}) {
    if (command == traits_.names.browse[side]) return [this, side] { names_.browse(side); };
  }
  return nullptr;
}

void TopLevelWindow::toggle(bool Settings::*setting) {
  application_.settings.*setting = !(application_.settings.*setting);
  application_.windows.applySettings();
}

void TopLevelWindow::onCommand(int id, int code) {
  if (const auto side = names_.sideOf(id)) return onNameBox(*side, code);
  const auto command = static_cast<Command>(id);
  if (listedPlace(command)) {
    application_.windows.ActivateListedWindow(command);
  } else {
    run(command);
  }
}

void TopLevelWindow::run(Command command) {
  if (!stateOf(command, facts()).enabled) return;
  NameBox* const box = names_.focusedBox();
  if (box != nullptr && editsText(command)) {
    box->edit(command);
  } else {
    handlerOf(command)();
  }
  changed();
}

CommandState TopLevelWindow::stateOf(Command command, const WindowFacts& now) {
  CommandState state = commandState(command, now, application_.settings);
  state.enabled = state.enabled && handlerOf(command) != nullptr;
  return state;
}

WindowFacts TopLevelWindow::facts() const {
  WindowFacts facts;
  facts.textWindows = application_.windows.count(WindowKind::text);
  facts.folderWindows = application_.windows.count(WindowKind::folder);
  facts.busy = busyBox() != nullptr;
  facts.clipboardHasText = IsClipboardFormatAvailable(CF_TEXT) != 0;
  if (const NameBox* const box = names_.focusedBox()) facts.nameBox = box->facts();
  addFacts(facts);
  return facts;
}

/// The command that the accelerators give to a key.
std::optional<Command> TopLevelWindow::commandOf(const MSG& key) const {
  ACCEL entries[128];
  const int count = CopyAcceleratorTableW(accelerators(), entries, static_cast<int>(std::size(entries)));
  int held = FVIRTKEY;
  if (isKeyDown(VK_CONTROL)) held |= FCONTROL;
  if (isKeyDown(VK_SHIFT)) held |= FSHIFT;
  if (isKeyDown(VK_MENU)) held |= FALT;
  for (const ACCEL& entry : std::span(entries, static_cast<size_t>(count))) {
    if (entry.key == key.wParam && (entry.fVirt & ~FNOINVERT) == held) return static_cast<Command>(entry.cmd);
  }
  return std::nullopt;
}

// Menus.

HMENU TopLevelWindow::windowMenu() const {
  // The one with the command to cascade, wherever it stands.
  const HMENU bar = GetMenu(handle());
  for (int i = 0; i < GetMenuItemCount(bar); ++i) {
    const HMENU menu = GetSubMenu(bar, i);
    if (GetMenuState(menu, static_cast<UINT>(Command::cascade), MF_BYCOMMAND) != static_cast<UINT>(-1))
      return menu;
  }
  return nullptr;
}

void TopLevelWindow::fillWindowMenu() {
  std::vector<WindowMenuItem> items = application_.windows.menuItems(*this);
  if (items == shownWindows_) return;
  const HMENU menu = windowMenu();
  while (DeleteMenu(menu, fixedWindowItems, MF_BYPOSITION)) continue;
  for (const WindowMenuItem& item : items) {
    UINT flags = MF_STRING;
    if (item.kind == WindowMenuItem::Kind::separator) flags = MF_SEPARATOR;
    if (item.kind == WindowMenuItem::Kind::placeholder) flags |= MF_GRAYED;
    if (item.checked) flags |= MF_CHECKED;
    AppendMenuW(menu, flags, static_cast<UINT_PTR>(item.command), wide(item.text).c_str());
  }
  shownWindows_ = std::move(items);
}

void TopLevelWindow::onInitMenuPopup(HMENU menu) {
  if (menu == windowMenu()) fillWindowMenu();
  const WindowFacts now = facts();
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const UINT item = GetMenuItemID(menu, i);
    const auto command = static_cast<Command>(item);
    if (findCommand(command) != nullptr) showState(menu, item, stateOf(command, now));
  }
}

void TopLevelWindow::onMenuSelect(UINT item, UINT flags) {
  const bool command = flags != 0xFFFF && (flags & (MF_POPUP | MF_SYSMENU)) == 0;
  const std::string help = command ? commandHelp(static_cast<Command>(item)) : "";
  const bool closed = flags == 0xFFFF;
  statusBar_.setText(StatusBar::help, closed ? idleHelp() : help);
}

std::string TopLevelWindow::idleHelp() const {
  return loadText(saysOptionsChanged_ ? TextId::optionsChanged : TextId::pressF1);
}

LRESULT TopLevelWindow::onNotify(NMHDR& header) {
  if (header.code != TTN_GETDISPINFOW) return 0;
  auto& info = reinterpret_cast<NMTTDISPINFOW&>(header);
  const std::string tip = commandTip(static_cast<Command>(header.idFrom));
  lstrcpynW(info.szText, wide(tip).c_str(), static_cast<int>(std::size(info.szText)));
  return 0;
}

}  // namespace merivane
