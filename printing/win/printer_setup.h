#pragma once

#include <windows.h>

#include <commdlg.h>

#include <optional>

#include "printing/page_geometry.h"
#include "printing/win/printer_dc.h"

namespace merivane {

/// What the user chose in the print dialog.
struct PrintRequest {
  PrinterDc dc;
  std::optional<PageRange> range;  // none: all pages
  bool toFile = false;             // which the printer's driver asks for
};

/// The printer that the next print goes to, and how it is set up: kept while the program runs. What fails in
/// a dialog is told to the user there; only cancelling is not.
class PrinterSetup {
 public:
  PrinterSetup() = default;
  ~PrinterSetup() { forget(); }
  PrinterSetup(const PrinterSetup&) = delete;
  PrinterSetup& operator=(const PrinterSetup&) = delete;

  /// Takes the default printer's setup, without showing a dialog, and turns its paper upright or on its side.
  /// Without a printer there is none.
  void takeDefault(bool portrait);

  /// Shows the system's print dialog, which offers this many pages. None when cancelled or failed.
  std::optional<PrintRequest> choosePrint(HWND owner, uint32_t pages);

  /// Shows the dialog that chooses a printer and its paper. False when cancelled or failed.
  bool chooseSetup(HWND owner);

  /// A context that tells of the printer's page; none without a printer.
  PrinterDc information() const;

  /// Whether the paper is upright; none where the printer does not know.
  std::optional<bool> portrait() const;

  /// Whether the printer prints in colours, as it is set up.
  bool inColour(const PrinterDc& dc) const;

 private:
  bool show(HWND owner, PRINTDLGW& dialog);
  void forget();

  HGLOBAL mode_ = nullptr;   // a DEVMODEW
  HGLOBAL names_ = nullptr;  // a DEVNAMES
};

}  // namespace merivane
