#pragma once

#include <functional>
#include <memory>

#include "base/win/dialog.h"
#include "printing/win/preview_pane.h"
#include "printing/win/printer_setup.h"
#include "shell/settings.h"

namespace merivane {

/// Shows the pages as they will be printed. What is changed of printer and scale in it shows at once.
class PreviewDialog final : public Dialog {
 public:
  /// `layOut` makes the printout for the printer and the settings as they are; null where there is no
  /// printer.
  using LayOut = std::function<std::unique_ptr<Printout>()>;

  PreviewDialog(Settings& settings, PrinterSetup& printer, LayOut layOut)
      : settings_(settings), printer_(printer), layOut_(std::move(layOut)) {}
  ~PreviewDialog() override { destroy(); }

  /// Returns whether the user wants to print.
  bool run(HWND owner);

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL onInitDialog();
  BOOL onCommand(int id, int code);
  BOOL onSize(int width, int height);
  BOOL onSetup();
  BOOL onScale();
  BOOL onZoom();
  BOOL turnTo(int64_t page);
  BOOL end(int result);
  void place();
  void fillScales();
  void showState();
  void enable(int button, bool enabled);
  HWND item(int id) const { return GetDlgItem(handle(), id); }

  Settings& settings_;
  PrinterSetup& printer_;
  LayOut layOut_;
  PreviewPane pane_{[this] { showState(); }};
};

}  // namespace merivane
