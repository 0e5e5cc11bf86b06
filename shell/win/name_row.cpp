#include "shell/win/name_row.h"

#include <utility>

#include "base/win/dpi.h"
#include "base/win/messages.h"
#include "base/win/wide.h"
#include "shell/command_table.h"
#include "shell/name_box.h"
#include "shell/win/controls.h"
#include "shell/win/file_dialogs.h"

namespace merivane {
namespace {

constexpr int boxNumbers[2] = {101, 102};
constexpr Command upCommands[2] = {Command::upOneFolderLeft, Command::upOneFolderRight};
constexpr int listHeight = 300;  // of a box, with its list

}  // namespace

void NameRow::create(HWND window, ToolTips& tips) {
  const auto makeButton = [&](Command command) {
    const HWND button =
        createControl(window, "BUTTON", WS_TABSTOP | BS_ICON | BS_PUSHBUTTON, static_cast<int>(command));
    SetWindowTextW(button, wide(commandHelp(command)).c_str());  // its name for screen readers, nowhere shown
    tips.add(button, commandHelp(command));
    return button;
  };
  for (const int side : {0, 1}) {
    nameNextControl(window, loadText(traits_.labels[side]));
    boxes_[side].create(window, boxNumbers[side], traits_.dropKinds, settings_.*traits_.histories[side]);
    browseButtons_[side] = makeButton(traits_.browse[side]);
    upButtons_[side] = makeButton(upCommands[side]);
  }
}

void NameRow::setLook(const ControlLook& look) {
  Icon browse = look.icons.icon(IconId::browse);
  Icon up = look.icons.icon(IconId::upOneFolder);
  const auto show = [](HWND button, const Icon& icon) {
    SendMessageW(button, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon.get()));
  };
  for (const int side : {0, 1}) {
    SendMessageW(boxes_[side].handle(), WM_SETFONT, reinterpret_cast<WPARAM>(look.fonts.message.get()), TRUE);
    show(browseButtons_[side], browse);
    show(upButtons_[side], up);
  }
  browseIcon_ = std::move(browse);
  upIcon_ = std::move(up);
  dpi_ = look.dpi;
  layout_ = {};
}

int NameRow::height() const { return heightOf(boxes_[0].handle()); }

void NameRow::place(const NameRowLayout& layout) {
  if (layout == layout_) return;
  layout_ = layout;
  for (const int side : {0, 1}) {
    // A combo box's height is given with its list.
    Area box = layout.nameBox[side];
    box.height = scaled(listHeight, dpi_);
    moveControl(boxes_[side].handle(), box);
    moveControl(browseButtons_[side], layout.browse[side]);
    moveControl(upButtons_[side], layout.upOneFolder[side]);
  }
}

std::optional<int> NameRow::sideOf(int control) const {
  for (const int side : {0, 1}) {
    if (control == boxNumbers[side]) return side;
  }
  return std::nullopt;
}

const NameBox* NameRow::focusedBox() const {
  for (const NameBox& box : boxes_) {
    if (box.hasFocus()) return &box;
  }
  return nullptr;
}

NameBox* NameRow::focusedBox() { return const_cast<NameBox*>(std::as_const(*this).focusedBox()); }

void NameRow::browse(int side) {
  const HWND window = GetParent(boxes_[side].handle());
  const auto choose = (traits_.dropKinds & kDropFolders) != 0 ? chooseFolder : chooseFile;
  const auto chosen = choose(window, loadText(traits_.browseTitles[side]), text(side));
  if (!chosen) return;
  setText(side, *chosen);
  SetFocus(boxes_[side].handle());
}

void NameRow::goUpOneFolder(int side) {
  const auto folder = upOneFolder(text(side));
  if (!folder) {
    MessageBeep(MB_OK);
    return;
  }
  setText(side, *folder);
  boxes_[side].focusEnd();  // where the next name is typed on
}

}  // namespace merivane
