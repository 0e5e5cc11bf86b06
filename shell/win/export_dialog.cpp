#include "shell/win/export_dialog.h"

#include "base/win/messages.h"
#include "shell/win/file_dialogs.h"

namespace merivane {
namespace {

constexpr int dialogNumber = 1146;
constexpr int firstScope = 100;  // one radio button an ExportScope, in its order
constexpr int lastScope = 102;
constexpr int fileEdit = 103;
constexpr int browseButton = 104;

}  // namespace

std::optional<ExportChoice> ExportDialog::run(HWND owner) {
  if (Dialog::run(dialogNumber, owner) != IDOK) return std::nullopt;
  return choice_;
}

LRESULT ExportDialog::onMessage(UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_INITDIALOG: return onInitDialog();
    case WM_COMMAND: return onCommand(LOWORD(wParam), HIWORD(wParam));
    default: return FALSE;
  }
}

BOOL ExportDialog::onInitDialog() {
  CheckRadioButton(handle(), firstScope, lastScope, firstScope + static_cast<int>(choice_.scope));
  setWindowText(GetDlgItem(handle(), fileEdit), choice_.path);
  onEdit();
  centre();
  return TRUE;
}

BOOL ExportDialog::onCommand(int id, int code) {
  switch (id) {
    case fileEdit: return code == EN_CHANGE && onEdit();
    case browseButton: return onBrowse();
    case IDOK: return onOk();
    case IDCANCEL: return EndDialog(handle(), IDCANCEL);
    default: return FALSE;
  }
}

BOOL ExportDialog::onEdit() {
  EnableWindow(GetDlgItem(handle(), IDOK), !fileName().empty());
  return TRUE;
}

BOOL ExportDialog::onBrowse() {
  const auto chosen = chooseExportFile(handle(), fileName());
  if (chosen) setWindowText(GetDlgItem(handle(), fileEdit), *chosen);
  return TRUE;
}

BOOL ExportDialog::onOk() {
  // The Enter key asks for a button that is greyed, too.
  if (fileName().empty()) return TRUE;
  choice_.path = fileName();
  for (int scope = firstScope; scope <= lastScope; ++scope) {
    if (IsDlgButtonChecked(handle(), scope) == BST_CHECKED) {
      choice_.scope = static_cast<ExportScope>(scope - firstScope);
    }
  }
  return EndDialog(handle(), IDOK);
}

std::string ExportDialog::fileName() const { return windowText(GetDlgItem(handle(), fileEdit)); }

}  // namespace merivane
