#pragma once

#include <windows.h>

#include "base/win/gdi.h"

namespace merivane {

/// Paints without showing anything half-drawn: between construction and destruction a WM_PAINT draws into
/// memory, which then goes to the screen at once. If there is no memory for that, it draws directly.
class BufferedPaint {
 public:
  explicit BufferedPaint(HWND window);
  ~BufferedPaint();
  BufferedPaint(const BufferedPaint&) = delete;
  BufferedPaint& operator=(const BufferedPaint&) = delete;

  HDC dc() const { return memory_ != nullptr ? memory_ : paint_.hdc; }

  /// The area that has to be painted, in client coordinates. Nothing else reaches the screen.
  const RECT& area() const { return paint_.rcPaint; }

 private:
  HWND window_;
  PAINTSTRUCT paint_;
  HDC memory_ = nullptr;
  Bitmap bitmap_;
  HGDIOBJ previous_ = nullptr;
};

}  // namespace merivane
