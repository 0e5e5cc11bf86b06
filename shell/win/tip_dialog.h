#pragma once

#include <optional>

#include "base/win/dialog.h"
#include "shell/tips.h"
#include "shell/win/button_icons.h"

namespace merivane {

/// The tip of the day, one dialog for the whole program.
class TipDialog final : public Dialog {
 public:
  explicit TipDialog(SettingsStore& store) : store_(store) {}
  ~TipDialog() override { destroy(); }

  /// Shows the next tip until the user closes the dialog, or gives it the focus where it is open already.
  void show(HWND owner);

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL onInitDialog();
  BOOL onCommand(int id);
  BOOL onEraseBackground(HDC dc);
  BOOL onDrawItem(const DRAWITEMSTRUCT& item);
  LRESULT onColour(HDC dc, HWND control);
  void showNext();

  SettingsStore& store_;
  std::optional<TipsOfTheDay> tips_;
  IconId picture_ = {};
  std::optional<ButtonIcons> pictures_;
  Font headerFont_;
};

}  // namespace merivane
