#pragma once

#include "base/win/dialog.h"
#include "shell/win/help.h"

namespace merivane {

/// The program's name, its version, when that was made, and its licence.
class AboutDialog final : public Dialog {
 public:
  explicit AboutDialog(Help& help) : help_(help) {}
  ~AboutDialog() override { destroy(); }

  /// Shows it until the user closes it.
  void run(HWND owner);

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL onInitDialog();
  BOOL onCommand(int id);
  BOOL onDrawItem(const DRAWITEMSTRUCT& item);

  Help& help_;
  Font nameFont_;
};

}  // namespace merivane
