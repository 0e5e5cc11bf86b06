#pragma once

#include <windows.h>

#include <functional>
#include <map>

#include "base/win/dialog.h"
#include "base/win/gdi.h"
#include "shell/options.h"
#include "shell/win/name_box.h"

namespace merivane {

/// One page of the Options dialog, whichever it is: its controls show the settings, and the settings follow
/// them at once.
class OptionsPage final : public Dialog {
 public:
  /// `changed` is called after each change. All must outlive the page.
  OptionsPage(const OptionsPageRow& page, Settings& settings, const std::function<void()>& changed);
  ~OptionsPage() override { destroy(); }

  /// Opens it as a child. False when it cannot be created.
  bool open(HWND dialog) { return Dialog::open(page_.dialog, dialog); }

  /// Takes in the filter that is being typed, if one is.
  void takeTyped();

 private:
  /// A colour as its button shows it.
  struct Patch {
    Colour colour;
    Bitmap picture;
  };

  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void onInitDialog();
  void onCommand(int id, int code);
  void pickColour(const OptionRow& option);
  void setUp(const OptionRow& option, HWND control);
  void show();
  void show(const OptionRow& option, HWND control);
  void showColour(int id, HWND control, Colour colour);
  void sizeItems();
  void change(const OptionRow& option, const OptionState& shown);
  HWND control(const OptionRow& option) const { return GetDlgItem(handle(), option.control); }

  const OptionsPageRow& page_;
  Settings& settings_;
  const std::function<void()>& changed_;
  std::map<int, NameBox> filters_;
  std::map<int, Patch> patches_;  // in the buttons of colours
  bool showing_ = false;          // what the controls report is of the page's own doing
};

}  // namespace merivane
