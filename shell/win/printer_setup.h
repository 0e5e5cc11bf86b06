#pragma once

#include <windows.h>

namespace merivane {

/// The printer that the next print goes to, and how it is set up: kept while the program runs.
class PrinterSetup {
 public:
  PrinterSetup() = default;
  ~PrinterSetup();
  PrinterSetup(const PrinterSetup&) = delete;
  PrinterSetup& operator=(const PrinterSetup&) = delete;

  /// Takes the default printer's setup, without showing a dialog, and turns its paper upright or on its side.
  /// Without a printer there is none.
  void takeDefault(bool portrait);

  HGLOBAL deviceMode() const { return mode_; }    // a DEVMODEW; null: none
  HGLOBAL deviceNames() const { return names_; }  // a DEVNAMES; null: none

 private:
  HGLOBAL mode_ = nullptr;
  HGLOBAL names_ = nullptr;
};

}  // namespace merivane
