#pragma once

#include <functional>

#include "base/win/dialog.h"

namespace merivane {

/// "Please wait while comparing..." over a window that takes no input meanwhile. It shows itself only when
/// the wait lasts long enough to be noticed.
class WaitDialog final : public Dialog {
 public:
  /// `onCancel` is called once for the Cancel button; closing the dialog is up to it.
  explicit WaitDialog(std::function<void()> onCancel);
  ~WaitDialog() override;

  /// Opens over `owner`, which gets no input until close(). It is not disabled until the dialog shows, so
  /// that after a short wait it is still active and nothing has flickered.
  void open(HWND owner);
  void close();

  /// While it is open: whether a message is the dialog's, or input that the owner must not get.
  bool takes(const MSG& message) const;

  bool isOpen() const { return owner_ != nullptr; }

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL onInitDialog();
  BOOL onTimer();
  BOOL onCommand(int id);

  std::function<void()> onCancel_;
  HWND owner_ = nullptr;
  HWND focus_ = nullptr;  // the owner's, to be given back; null until the dialog shows
};

}  // namespace merivane
