#pragma once

#include "base/win/dialog.h"
#include "shell/settings.h"

namespace merivane {

/// Asks what of a comparison to export, and into which file. Both are kept in the settings.
class ExportDialog final : public Dialog {
 public:
  explicit ExportDialog(Settings& settings) : settings_(settings) {}
  ~ExportDialog() override { destroy(); }

  /// True when the user wants the export that the settings now describe.
  bool run(HWND owner);

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL onInitDialog();
  BOOL onCommand(int id, int code);
  BOOL onEdit();
  BOOL onBrowse();
  BOOL onOk();
  std::string fileName() const;

  Settings& settings_;
};

}  // namespace merivane
