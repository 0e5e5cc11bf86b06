#include "shell/win/wait_dialog.h"

#include <utility>

#include "base/win/messages.h"

namespace merivane {
namespace {

constexpr int dialogNumber = 1140;
constexpr int textControl = 100;
constexpr UINT_PTR showTimer = 1;
constexpr UINT unnoticedMilliseconds = 150;

}  // namespace

WaitDialog::WaitDialog(std::function<void()> onCancel) : onCancel_(std::move(onCancel)) {}

WaitDialog::~WaitDialog() { close(); }

void WaitDialog::open(HWND owner) {
  owner_ = owner;
  focus_ = nullptr;
  Dialog::open(dialogNumber, owner);
}

void WaitDialog::close() {
  if (owner_ == nullptr) return;
  // Enabled before the dialog goes, or the system would activate another program's window.
  EnableWindow(owner_, TRUE);
  destroy();
  if (focus_ != nullptr && GetActiveWindow() == owner_) SetFocus(focus_);
  owner_ = nullptr;
}

bool WaitDialog::takes(const MSG& message) const {
  if (IsDialogMessageA(handle(), const_cast<MSG*>(&message))) return true;
  const auto within = [&](UINT first, UINT last) {
    return message.message >= first && message.message <= last;
  };
  return within(WM_KEYFIRST, WM_KEYLAST) || within(WM_MOUSEFIRST, WM_MOUSELAST);
}

LRESULT WaitDialog::onMessage(UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_INITDIALOG: return onInitDialog();
    case WM_TIMER: return onTimer();
    case WM_COMMAND: return onCommand(LOWORD(wParam));
    default: return FALSE;
  }
}

BOOL WaitDialog::onInitDialog() {
  SetWindowTextA(handle(), loadText(TextId::pleaseWait).c_str());
  SetDlgItemTextA(handle(), textControl, loadText(TextId::pleaseWaitComparing).c_str());
  centre();
  SetTimer(handle(), showTimer, unnoticedMilliseconds, nullptr);
  return TRUE;
}

BOOL WaitDialog::onTimer() {
  KillTimer(handle(), showTimer);
  focus_ = GetFocus();
  EnableWindow(owner_, FALSE);
  ShowWindow(handle(), SW_SHOW);
  return TRUE;
}

BOOL WaitDialog::onCommand(int id) {
  if (id != IDCANCEL) return FALSE;
  onCancel_();
  return TRUE;
}

}  // namespace merivane
