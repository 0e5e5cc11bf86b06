#include "shell/win/print_job.h"

#include <new>
#include <utility>

#include "base/system_error.h"
#include "base/win/messages.h"
#include "base/win/wide.h"

namespace merivane {
namespace {

constexpr int dialogNumber = 1147;
constexpr int textControl = 100;
constexpr int pageControl = 101;
constexpr UINT_PTR pagesTimer = 1;
constexpr UINT pagesMilliseconds = 10;  // between two stretches of pages
constexpr ULONGLONG stretchMilliseconds = 50;

/// The job whose driver is at work. One can come to print while another serves messages.
PrintJob* active = nullptr;

}  // namespace

void PrintJob::start(HWND owner, PrintRequest request, std::unique_ptr<Printout> printout, PageRange pages) {
  request_ = std::move(request);
  printout_ = std::move(printout);
  pages_ = pages;
  page_ = 0;
  cancelled_ = abandoned_ = false;
  error_ = 0;
  owner_ = owner;
  if (open(dialogNumber, owner)) return cover(owner);
  error_ = notEnoughStorage();
  finish();
}

void PrintJob::abandon() {
  abandoned_ = true;
  if (!isBusy() || printing_) return;  // printing ends itself
  if (page_ != 0) AbortDoc(request_.dc.get());
  finish();
}

LRESULT PrintJob::onMessage(UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_INITDIALOG: return onInitDialog();
    case WM_TIMER: return onTimer();
    case WM_COMMAND: return LOWORD(wParam) == IDCANCEL && onCancel();
    default: return FALSE;
  }
}

BOOL PrintJob::onInitDialog() {
  setWindowText(handle(), loadText(TextId::productName));
  setWindowText(GetDlgItem(handle(), textControl), loadText(TextId::printing));
  centre();
  SetTimer(handle(), pagesTimer, pagesMilliseconds, nullptr);
  return TRUE;
}

BOOL PrintJob::onTimer() {
  if (printing_) return TRUE;  // the message was served for the driver
  PrintJob* const before = std::exchange(active, this);
  printing_ = true;
  bool goesOn = false;
  try {
    goesOn = printSome();
  } catch (const std::bad_alloc&) {
    error_ = notEnoughStorage();
    AbortDoc(request_.dc.get());
  }
  printing_ = false;
  active = before;
  if (!goesOn) finish();
  return TRUE;
}

BOOL PrintJob::onCancel() {
  cancelled_ = true;
  EnableWindow(GetDlgItem(handle(), IDCANCEL), FALSE);
  return TRUE;
}

/// Prints for a moment. Returns whether there is more to print.
bool PrintJob::printSome() {
  const ULONGLONG start = GetTickCount64();
  if (page_ == 0 && !startDocument()) return false;
  do {
    if (cancelled_ || abandoned_ || page_ > pages_.last) {
      if (abandoned_) {
        AbortDoc(request_.dc.get());
      } else {
        ended(EndDoc(request_.dc.get()));
      }
      return false;
    }
    if (!printPage()) return false;
    ++page_;
  } while (GetTickCount64() - start < stretchMilliseconds);
  return true;
}

bool PrintJob::startDocument() {
  const std::wstring title = wide(printout_->title());
  DOCINFOW document = {};
  document.cbSize = sizeof document;
  document.lpszDocName = title.c_str();
  if (request_.toFile) document.lpszOutput = L"FILE:";
  SetAbortProc(request_.dc.get(), mayGoOn);
  SetLastError(0);
  if (ended(StartDocW(request_.dc.get(), &document))) return false;
  page_ = pages_.first;
  return true;
}

bool PrintJob::printPage() {
  setWindowText(GetDlgItem(handle(), pageControl),
                loadMessage(TextId::pageOf, {int64_t{page_ - pages_.first + 1}, int64_t{pages_.size()}}));
  UpdateWindow(handle());
  const HDC dc = request_.dc.get();
  SetLastError(0);
  if (ended(StartPage(dc))) return false;
  printout_->paintPage(dc, page_);
  return !ended(EndPage(dc));
}

/// What failed ends the document, with the system's reason unless the user had it end.
bool PrintJob::ended(int result) {
  if (result > 0) return false;
  const DWORD error = GetLastError();
  AbortDoc(request_.dc.get());
  const bool byUser = cancelled_ || error == ERROR_CANCELLED || error == ERROR_PRINT_CANCELLED;
  if (!byUser) error_ = error != 0 ? error : ERROR_WRITE_FAULT;
  return true;
}

void PrintJob::finish() {
  printout_ = nullptr;
  request_ = {};
  uncover();
  if (abandoned_) return;
  if (error_ != 0) showSystemError(owner_, TextId::couldNotPrint, error_);
}

BOOL CALLBACK PrintJob::mayGoOn(HDC, int) {
  active->serveMessages_();
  return !active->cancelled_ && !active->abandoned_;
}

}  // namespace merivane
