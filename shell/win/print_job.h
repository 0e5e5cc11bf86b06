#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/result.h"
#include "printing/win/printer_setup.h"
#include "printing/win/printout.h"
#include "shell/win/busy_box.h"

namespace merivane {

/// "Printing..." over a window whose comparison goes to a printer, some pages at a time, so that the program
/// serves its messages in between. Whatever ends it, the window has its input back before the user is told.
class PrintJob final : public BusyBox {
 public:
  /// `serveMessages` serves those that are waiting, whenever the printer's driver asks whether to go on.
  explicit PrintJob(std::function<void()> serveMessages) : serveMessages_(std::move(serveMessages)) {}
  ~PrintJob() override { abandon(); }

  /// Prints pages that there are of the printout. Only while isBusy() is false.
  void start(HWND owner, PrintRequest request, std::unique_ptr<Printout> printout, PageRange pages);

  bool isBusy() const override { return printout_ != nullptr; }

  /// Aborts the document, of which nothing more is printed, and tells nobody.
  void abandon();

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL onInitDialog();
  BOOL onTimer();
  BOOL onCancel();
  bool printSome();
  bool printPage();
  bool startDocument();
  bool ended(int result);
  void finish();
  static BOOL CALLBACK mayGoOn(HDC dc, int error);

  std::function<void()> serveMessages_;
  PrintRequest request_;
  std::unique_ptr<Printout> printout_;
  PageRange pages_;
  uint32_t page_ = 0;  // the next one; 0: the document has not been started
  bool printing_ = false;
  bool cancelled_ = false;
  bool abandoned_ = false;
  SystemError error_ = 0;
  HWND owner_ = nullptr;
};

}  // namespace merivane
