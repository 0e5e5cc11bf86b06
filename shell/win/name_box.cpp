#include "shell/win/name_box.h"

#include <commctrl.h>

#include <exception>
#include <utility>
#include <vector>

#include "base/win/messages.h"
#include "base/win/wide.h"
#include "base/win/window.h"
#include "shell/win/shell_utilities.h"

namespace merivane {
namespace {

/// Says for its lifetime that the text is changed by the program.
class Setting {
 public:
  explicit Setting(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  ~Setting() { flag_ = before_; }
  Setting(const Setting&) = delete;
  Setting& operator=(const Setting&) = delete;

 private:
  bool& flag_;
  const bool before_;
};

}  // namespace

NameBox::~NameBox() {
  if (history_ != nullptr) history_->detach(*this);
}

void NameBox::create(HWND parent, int id, uint32_t dropKinds, HistoryList& history) {
  const DWORD style =
      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL;
  const HWND comboBox =
      CreateWindowExW(WS_EX_ACCEPTFILES, L"COMBOBOX", L"", style, 0, 0, 0, 0, parent,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), programInstance(), nullptr);
  adopt(comboBox, dropKinds, history);
}

void NameBox::adopt(HWND comboBox, uint32_t dropKinds, HistoryList& history, int longest) {
  handle_ = comboBox;
  edit_ = GetWindow(handle_, GW_CHILD);
  SendMessageW(handle_, CB_LIMITTEXT, static_cast<WPARAM>(longest), 0);
  for (const HWND window : {handle_, edit_}) {
    SetWindowSubclass(window, subclassProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
  }
  dropKinds_ = dropKinds;
  history_ = &history;
  history.attach(*this);
  refill(history);
}

std::string NameBox::text() const { return windowText(handle_); }

void NameBox::setText(const std::string& text) {
  const Setting setting(settingText_);
  setWindowText(handle_, text);
}

void NameBox::refill(const HistoryList& list) {
  const Setting setting(settingText_);
  const std::string edited = text();
  DWORD selection[2] = {};
  SendMessageW(edit_, EM_GETSEL, reinterpret_cast<WPARAM>(&selection[0]),
               reinterpret_cast<LPARAM>(&selection[1]));
  SendMessageW(handle_, CB_RESETCONTENT, 0, 0);
  for (const std::string& entry : list.entries()) {
    sendText(handle_, CB_ADDSTRING, 0, entry);
  }
  setText(edited);
  // Whoever has just typed the name stays where he was.
  SendMessageW(edit_, EM_SETSEL, selection[0], static_cast<LPARAM>(selection[1]));
}

void NameBox::onEdit() {
  if (settingText_) return;
  const auto completion = completion_.onEdit(text(), *history_);
  if (!completion) return;
  const Setting setting(settingText_);
  SendMessageW(handle_, CB_SETCURSEL, static_cast<WPARAM>(completion->entry), 0);
  SendMessageW(edit_, EM_SETSEL, completion->selectionBegin, static_cast<LPARAM>(completion->selectionEnd));
}

WindowFacts::NameBox NameBox::facts() const {
  const auto selection = static_cast<DWORD>(SendMessageW(edit_, EM_GETSEL, 0, 0));
  return {SendMessageW(edit_, EM_CANUNDO, 0, 0) != 0, LOWORD(selection) != HIWORD(selection)};
}

void NameBox::edit(Command command) {
  switch (command) {
    case Command::undo:
      completion_.onCut();
      SendMessageW(edit_, EM_UNDO, 0, 0);
      break;
    case Command::cut: SendMessageW(edit_, WM_CUT, 0, 0); break;
    case Command::copy: SendMessageW(edit_, WM_COPY, 0, 0); break;
    case Command::paste: SendMessageW(edit_, WM_PASTE, 0, 0); break;
    case Command::deleteText: SendMessageW(edit_, WM_KEYDOWN, VK_DELETE, 0); break;
    case Command::selectAll: SendMessageW(edit_, EM_SETSEL, 0, -1); break;
    default: break;
  }
}

void NameBox::focusAll() {
  SetFocus(handle_);
  SendMessageW(edit_, EM_SETSEL, 0, -1);
}

void NameBox::focusEnd() {
  SetFocus(handle_);
  // After the focus, which selects the whole text.
  const size_t end = wide(text()).size();
  SendMessageW(edit_, EM_SETSEL, end, static_cast<LPARAM>(end));
}

void NameBox::drop(const std::string& name) {
  if (!acceptsDrop(systemFiles().kind(name), dropKinds_)) return;
  setText(name);
  focusEnd();
  notifyParent(kNameBoxDropped);
}

void NameBox::notifyParent(UINT code) {
  const WPARAM source = MAKEWPARAM(GetDlgCtrlID(handle_), code);
  PostMessageW(GetParent(handle_), WM_COMMAND, source, reinterpret_cast<LPARAM>(handle_));
}

bool NameBox::onKeyDown(WPARAM key) {
  completion_.onKey(key == VK_DELETE || key == VK_BACK);
  if (key != VK_RETURN || isListOpen()) return false;
  notifyParent(kNameBoxEnter);
  return true;
}

void NameBox::onDropFiles(HDROP drop) {
  const std::vector<std::string> names = takeDrop(drop);
  if (!names.empty()) this->drop(names[0]);
}

LRESULT CALLBACK NameBox::subclassProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR box) {
  auto& self = *reinterpret_cast<NameBox*>(box);
  try {
    switch (message) {
      case WM_KEYDOWN:
        if (window == self.edit_ && self.onKeyDown(wParam)) return 0;
        break;
      case WM_CHAR:
        // The edit field would beep at it; the key has been dealt with.
        if (window == self.edit_ && wParam == '\r' && !self.isListOpen()) return 0;
        break;
      case WM_CUT:
      case WM_CLEAR: self.completion_.onCut(); break;
      case WM_DROPFILES: self.onDropFiles(reinterpret_cast<HDROP>(wParam)); return 0;
      case WM_NCDESTROY:
        RemoveWindowSubclass(window, subclassProcedure, id);
        if (window == self.handle_) self.handle_ = nullptr;
        break;
      case WM_SIZE:
      case WM_KILLFOCUS: {
        // A combo box leaves its text selected, or selects it, where nobody types.
        const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
        if (GetFocus() != self.edit_) SendMessageW(self.edit_, EM_SETSEL, static_cast<WPARAM>(-1), 0);
        return result;
      }
    }
  } catch (const std::exception&) {
    reportOutOfMemory();
    return 0;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace merivane
