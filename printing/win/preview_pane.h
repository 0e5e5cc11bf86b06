#pragma once

#include <windows.h>

#include <functional>
#include <memory>

#include "base/win/window.h"
#include "printing/preview_view.h"
#include "printing/win/printout.h"

namespace merivane {

/// The window that shows a page of a printout as it will be on paper.
class PreviewPane final : public Window {
 public:
  /// `whenMoved` is told whenever another page is shown, or another part or size of it.
  explicit PreviewPane(std::function<void()> whenMoved) : whenMoved_(std::move(whenMoved)) {}
  ~PreviewPane() override { destroy(); }

  /// A child below its siblings, without a place yet.
  bool create(HWND parent);

  /// Shows the page of another printout that has the number of the one before; null for none.
  void show(std::unique_ptr<Printout> printout);

  const PreviewView& view() const { return view_; }
  void goTo(int64_t page);
  void setZoom(const Zoom& zoom);

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void onPaint();
  bool onKeyDown(WPARAM key);
  void onChar(WPARAM character);
  void onScroll(int bar, int request);
  void onMouseWheel(int delta, WORD keys);
  void moved();
  int line() const;

  std::function<void()> whenMoved_;
  std::unique_ptr<Printout> printout_;
  PreviewView view_;
  int wheelRest_ = 0;
};

}  // namespace merivane
