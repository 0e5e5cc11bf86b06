#pragma once

#include <windows.h>

#include "base/win/dialog.h"

namespace merivane {

/// A box over a window that gets no input while something is done for it. There is no message loop of the
/// box's own: the window asks it about every message.
class BusyBox : public Dialog {
 public:
  /// Whether something is under way.
  virtual bool isBusy() const = 0;

  /// While isBusy(): whether a message is the box's, or input that the owner must not get. A drop is refused.
  bool takes(const MSG& message) const;

 protected:
  /// Shows the box, and disables its owner unless another dialog does already.
  void cover(HWND owner);

  /// Undoes that, and destroys the box.
  void uncover();

 private:
  HWND owner_ = nullptr;
  bool disablesOwner_ = false;
  HWND focus_ = nullptr;  // the owner's, to be given back; null until the box shows
};

}  // namespace merivane
