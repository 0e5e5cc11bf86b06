#include "shell/win/page_setup_dialog.h"

#include "base/win/messages.h"
#include "printing/page_geometry.h"

namespace merivane {
namespace {

constexpr int dialogNumber = 1148;
constexpr int scaleBox = 100;
constexpr int firstScope = 101;  // one radio button an ExportScope, in its order
constexpr int lastScope = 103;
constexpr int setupButton = 104;

}  // namespace

void keepOrientation(const PrinterSetup& printer, Settings& settings) {
  settings.printPortrait = printer.portrait().value_or(settings.printPortrait);
}

bool choosePrinterSetup(HWND owner, PrinterSetup& printer, Settings& settings) {
  if (!printer.chooseSetup(owner)) return false;
  keepOrientation(printer, settings);
  return true;
}

void PageSetupDialog::run(HWND owner) { Dialog::run(dialogNumber, owner); }

LRESULT PageSetupDialog::onMessage(UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_INITDIALOG: return onInitDialog();
    case WM_COMMAND: return onCommand(LOWORD(wParam));
    default: return FALSE;
  }
}

BOOL PageSetupDialog::onInitDialog() {
  const HWND box = GetDlgItem(handle(), scaleBox);
  for (const int32_t scale : kOfferedScales) sendText(box, CB_ADDSTRING, 0, std::to_string(scale));
  setWindowText(box, std::to_string(settings_.printScale));
  CheckRadioButton(handle(), firstScope, lastScope, firstScope + settings_.printHow);
  centre();
  return TRUE;
}

BOOL PageSetupDialog::onCommand(int id) {
  switch (id) {
    case setupButton: return choosePrinterSetup(handle(), printer_, settings_), TRUE;
    case IDOK: return onOk();
    case IDCANCEL: return EndDialog(handle(), IDCANCEL);
    default: return FALSE;
  }
}

BOOL PageSetupDialog::onOk() {
  settings_.printScale = typedScale(windowText(GetDlgItem(handle(), scaleBox)).c_str(), settings_.printScale);
  for (int scope = firstScope; scope <= lastScope; ++scope) {
    if (IsDlgButtonChecked(handle(), scope) == BST_CHECKED) settings_.printHow = scope - firstScope;
  }
  return EndDialog(handle(), IDOK);
}

}  // namespace merivane
