#include "shell/win/busy_box.h"

#include <shellapi.h>

#include <utility>

namespace merivane {

bool BusyBox::takes(const MSG& message) const {
  if (IsDialogMessageW(handle(), const_cast<MSG*>(&message))) return true;
  if (message.message == WM_DROPFILES) {
    DragFinish(reinterpret_cast<HDROP>(message.wParam));
    MessageBeep(MB_OK);
    return true;
  }
  const auto within = [&](UINT first, UINT last) {
    return message.message >= first && message.message <= last;
  };
  return within(WM_KEYFIRST, WM_KEYLAST) || within(WM_MOUSEFIRST, WM_MOUSELAST);
}

void BusyBox::cover(HWND owner) {
  owner_ = owner;
  focus_ = GetFocus();
  disablesOwner_ = EnableWindow(owner, FALSE) == FALSE;
  ShowWindow(handle(), SW_SHOW);
}

void BusyBox::uncover() {
  // Enabled before the dialog goes, or the system would activate another program's window.
  if (std::exchange(disablesOwner_, false)) EnableWindow(owner_, TRUE);
  destroy();
  if (focus_ != nullptr && GetActiveWindow() == owner_) SetFocus(focus_);
  focus_ = nullptr;
}

}  // namespace merivane
