#pragma once

#include "base/win/dialog.h"
#include "printing/win/printer_setup.h"
#include "shell/settings.h"

namespace merivane {

/// Asks at what scale to print, what of a comparison, and on which printer. The printer's own dialog takes
/// effect at once, the rest with OK.
class PageSetupDialog final : public Dialog {
 public:
  PageSetupDialog(Settings& settings, PrinterSetup& printer) : settings_(settings), printer_(printer) {}
  ~PageSetupDialog() override { destroy(); }

  void run(HWND owner);

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL onInitDialog();
  BOOL onCommand(int id);
  BOOL onOk();

  Settings& settings_;
  PrinterSetup& printer_;
};

/// Shows the printer setup dialog, and keeps the orientation for the next start. False when cancelled.
bool choosePrinterSetup(HWND owner, PrinterSetup& printer, Settings& settings);

/// Keeps the printer's orientation, where it has one, for the next start.
void keepOrientation(const PrinterSetup& printer, Settings& settings);

}  // namespace merivane
