#pragma once

#include <optional>
#include <string>

#include "base/win/dialog.h"
#include "shell/text_session.h"

namespace merivane {

/// Asks what of a comparison to export, and into which file.
class ExportDialog final : public Dialog {
 public:
  explicit ExportDialog(const ExportChoice& choice) : choice_(choice) {}
  ~ExportDialog() override { destroy(); }

  /// None when cancelled.
  std::optional<ExportChoice> run(HWND owner);

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL onInitDialog();
  BOOL onCommand(int id, int code);
  BOOL onEdit();
  BOOL onBrowse();
  BOOL onOk();
  std::string fileName() const;

  ExportChoice choice_;
};

}  // namespace merivane
