#include "shell/win/find_dialog.h"

#include <iterator>

#include "base/win/wide.h"

namespace merivane {

const UINT findReplaceMessage = RegisterWindowMessageW(L"commdlg_FindReplace");

void FindDialog::open(HWND owner, const std::string& text) {
  if (handle() != nullptr && owner == description_.hwndOwner) {
    SetFocus(dialog_);
    return;
  }
  close();  // it belongs to another window
  lstrcpynW(text_, wide(text).c_str(), static_cast<int>(std::size(text_)));
  description_ = {};
  description_.lStructSize = sizeof description_;
  description_.hwndOwner = owner;
  description_.Flags = (settings_.findMatchCase ? FR_MATCHCASE : 0) |
                       (settings_.findWholeWord ? FR_WHOLEWORD : 0) | (settings_.findDownwards ? FR_DOWN : 0);
  description_.lpstrFindWhat = text_;
  description_.wFindWhatLen = sizeof text_;
  dialog_ = FindTextW(&description_);
}

bool FindDialog::takeRequest(const FINDREPLACEW& request) {
  if (request.Flags & FR_DIALOGTERM) dialog_ = nullptr;
  if (!(request.Flags & FR_FINDNEXT)) return false;
  settings_.findText = utf8(request.lpstrFindWhat);
  settings_.findMatchCase = (request.Flags & FR_MATCHCASE) != 0;
  settings_.findWholeWord = (request.Flags & FR_WHOLEWORD) != 0;
  settings_.findDownwards = (request.Flags & FR_DOWN) != 0;
  close();
  return true;
}

void FindDialog::close() {
  if (const HWND dialog = handle()) DestroyWindow(dialog);
  dialog_ = nullptr;
}

}  // namespace merivane
