#pragma once

#include <windows.h>

#include "base/win/window.h"
#include "mergeview/win/text_view.h"

namespace merivane {

/// The handle between the two panes' scroll bars. Dragging it moves the split, a double click centres it.
class SplitterThumb final : public Window {
 public:
  /// `view` must outlive the thumb. Its window's left edge is that of the thumb's parent.
  explicit SplitterThumb(TextView& view) : view_(view) {}
  ~SplitterThumb() override;

  bool create(HWND parent);

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void onPaint();
  void onButtonDown();
  void onMouseMove(int x);
  void onButtonUp();
  void centre();

  TextView& view_;
  bool dragging_ = false;
};

}  // namespace merivane
