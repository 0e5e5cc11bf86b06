#include "base/win/back_buffer.h"

namespace merivane {

BufferedPaint::BufferedPaint(HWND window) : window_(window) {
  BeginPaint(window, &paint_);
  const RECT& area = paint_.rcPaint;
  bitmap_ = Bitmap(CreateCompatibleBitmap(paint_.hdc, area.right - area.left, area.bottom - area.top));
  if (!bitmap_) return;
  memory_ = CreateCompatibleDC(paint_.hdc);
  if (memory_ == nullptr) return;
  previous_ = SelectObject(memory_, bitmap_.get());
  SetViewportOrgEx(memory_, -area.left, -area.top, nullptr);
}

BufferedPaint::~BufferedPaint() {
  if (memory_ != nullptr) {
    const RECT& area = paint_.rcPaint;
    BitBlt(paint_.hdc, area.left, area.top, area.right - area.left, area.bottom - area.top, memory_,
           area.left, area.top, SRCCOPY);
    SelectObject(memory_, previous_);
    DeleteDC(memory_);
  }
  EndPaint(window_, &paint_);
}

}  // namespace merivane
