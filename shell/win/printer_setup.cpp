#include "shell/win/printer_setup.h"

#include <commdlg.h>

namespace merivane {

PrinterSetup::~PrinterSetup() {
  if (mode_ != nullptr) GlobalFree(mode_);
  if (names_ != nullptr) GlobalFree(names_);
}

void PrinterSetup::takeDefault(bool portrait) {
  PRINTDLGW dialog = {};
  dialog.lStructSize = sizeof dialog;
  dialog.Flags = PD_RETURNDEFAULT | PD_NOWARNING;
  if (!PrintDlgW(&dialog)) return;
  mode_ = dialog.hDevMode;
  names_ = dialog.hDevNames;
  auto* const mode = static_cast<DEVMODEW*>(mode_ != nullptr ? GlobalLock(mode_) : nullptr);
  if (mode == nullptr) return;
  mode->dmFields |= DM_ORIENTATION;
  mode->dmOrientation = portrait ? DMORIENT_PORTRAIT : DMORIENT_LANDSCAPE;
  GlobalUnlock(mode_);
}

}  // namespace merivane
