#pragma once

#include <functional>
#include <memory>

#include "base/win/dialog.h"
#include "shell/settings_store.h"
#include "shell/win/options_page.h"

namespace merivane {

/// The Options dialog, one for the whole program: a list of pages and one of them beside it. It stays open
/// beside the windows, which follow each change at once. Its place and its page are stored as it closes.
class OptionsDialog final : public Dialog {
 public:
  /// `changed` is called after each change of the settings, `help` with the name of a page's help when F1 is
  /// pressed there.
  OptionsDialog(Settings& settings, SettingsStore& store, std::function<void()> changed,
                std::function<void(const char* page)> help);
  ~OptionsDialog() override { destroy(); }

  /// Opens it over a window, or brings it to the front where it is open over that one; from any other window
  /// it comes over.
  void open(HWND owner);

  void close();

  /// Whether a message is the dialog's. F5 there does what the status bar of the window below promises.
  bool takes(MSG& message);

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void onDestroyed() override { page_.reset(); }
  void onInitDialog();
  void onCommand(int id, int code);
  void onDrawItem(const DRAWITEMSTRUCT& item) const;
  void remember();
  void showPage(size_t index);
  size_t selectedPage() const;
  HWND list() const;

  Settings& settings_;
  SettingsStore& store_;
  const std::function<void()> changed_;
  const std::function<void(const char* page)> help_;
  std::unique_ptr<OptionsPage> page_;
};

}  // namespace merivane
