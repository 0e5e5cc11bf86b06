#include "shell/win/wait_dialog.h"

#include <sstream>
#include <string>
#include <utility>

#include "base/win/messages.h"

namespace merivane {

const UINT compareDoneMessage =
    RegisterWindowMessageW(L"MSG_COMPARE_DONE-{2ECF7E4C-1184-4b0e-8849-F7DDD5BCF4DC}");

namespace {

constexpr int dialogNumber = 1140;
constexpr int dialogWithProgress = 1147;
constexpr int textControl = 100;
constexpr int progressControls[] = {101, 102};  // a line each
constexpr UINT_PTR showTimer = 1;
constexpr UINT_PTR progressTimer = 2;
constexpr UINT progressMilliseconds = 100;
constexpr UINT unnoticedMilliseconds = 150;

}  // namespace

WaitDialog::~WaitDialog() { abandon(); }

void WaitDialog::start(HWND owner, TextId waiting, Work work, WhenWorkEnds whenEnded, ProgressText progress) {
  job_ = BackgroundJob::start(owner, compareDoneMessage, std::move(work));
  whenEnded_ = std::move(whenEnded);
  progress_ = std::move(progress);
  waiting_ = waiting;
  owner_ = owner;
  open(progress_ ? dialogWithProgress : dialogNumber, owner);
}

void WaitDialog::finish() {
  // The message may be of work that was given up before.
  const auto end = job_ != nullptr ? job_->end() : std::nullopt;
  if (!end) return;
  uncover();
  job_ = nullptr;
  progress_ = nullptr;
  std::exchange(whenEnded_, nullptr)(*end);
}

void WaitDialog::abandon() {
  if (job_ == nullptr) return;
  job_->cancel();
  uncover();
  job_ = nullptr;
  whenEnded_ = nullptr;
  progress_ = nullptr;
}

LRESULT WaitDialog::onMessage(UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_INITDIALOG: return onInitDialog();
    case WM_TIMER: return onTimer(wParam);
    case WM_COMMAND: return onCommand(LOWORD(wParam));
    default: return FALSE;
  }
}

BOOL WaitDialog::onInitDialog() {
  setWindowText(handle(), loadText(TextId::pleaseWait));
  setWindowText(GetDlgItem(handle(), textControl), loadText(waiting_));
  centre();
  SetTimer(handle(), showTimer, unnoticedMilliseconds, nullptr);
  return TRUE;
}

BOOL WaitDialog::onTimer(UINT_PTR timer) {
  if (timer == progressTimer) return showProgress(), TRUE;
  KillTimer(handle(), showTimer);
  if (progress_) {
    showProgress();
    SetTimer(handle(), progressTimer, progressMilliseconds, nullptr);
  }
  cover(owner_);
  return TRUE;
}

void WaitDialog::showProgress() {
  std::istringstream lines(progress_());
  for (const int number : progressControls) {
    const HWND control = GetDlgItem(handle(), number);
    std::string line;
    std::getline(lines, line);
    if (windowText(control) != line) setWindowText(control, line);
  }
}

BOOL WaitDialog::onCommand(int id) {
  if (id != IDCANCEL) return FALSE;
  job_->cancel();
  // The thread takes until its next look at the flag; the user need not.
  PostMessageW(owner_, compareDoneMessage, 0, 0);
  return TRUE;
}

}  // namespace merivane
