#include "shell/win/find_dialog.h"

namespace merivane {

const UINT findReplaceMessage = RegisterWindowMessageA("commdlg_FindReplace");

void FindDialog::open(HWND owner, const std::string& text) {
  if (handle() != nullptr) {
    SetFocus(dialog_);
    return;
  }
  lstrcpynA(text_, text.c_str(), sizeof text_);
  description_ = {};
  description_.lStructSize = sizeof description_;
  description_.hwndOwner = owner;
  description_.Flags = (settings_.findMatchCase ? FR_MATCHCASE : 0) |
                       (settings_.findWholeWord ? FR_WHOLEWORD : 0) | (settings_.findDownwards ? FR_DOWN : 0);
  description_.lpstrFindWhat = text_;
  description_.wFindWhatLen = sizeof text_;
  dialog_ = FindTextA(&description_);
}

bool FindDialog::takeRequest(const FINDREPLACEA& request) {
  if (request.Flags & FR_DIALOGTERM) dialog_ = nullptr;
  if (!(request.Flags & FR_FINDNEXT)) return false;
  settings_.findText = request.lpstrFindWhat;
  settings_.findMatchCase = (request.Flags & FR_MATCHCASE) != 0;
  settings_.findWholeWord = (request.Flags & FR_WHOLEWORD) != 0;
  settings_.findDownwards = (request.Flags & FR_DOWN) != 0;
  DestroyWindow(dialog_);
  dialog_ = nullptr;
  return true;
}

}  // namespace merivane
