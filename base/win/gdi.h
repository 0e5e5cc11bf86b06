#pragma once

#include <windows.h>

#include <utility>

namespace merivane {

/// Owns a font, pen, brush, bitmap or region.
template <typename Handle>
class GdiObject {
 public:
  explicit GdiObject(Handle handle = nullptr) : handle_(handle) {}
  GdiObject(GdiObject&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  GdiObject& operator=(GdiObject&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~GdiObject() {
    if (handle_ != nullptr) DeleteObject(handle_);
  }

  Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }

 private:
  Handle handle_;
};

using Font = GdiObject<HFONT>;
using Brush = GdiObject<HBRUSH>;
using Pen = GdiObject<HPEN>;
using Bitmap = GdiObject<HBITMAP>;
using Region = GdiObject<HRGN>;

/// Keeps an object selected into a device context for as long as it lives.
class SelectedObject {
 public:
  SelectedObject(HDC dc, HGDIOBJ object) : dc_(dc), previous_(SelectObject(dc, object)) {}
  ~SelectedObject() { SelectObject(dc_, previous_); }
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;

 private:
  HDC dc_;
  HGDIOBJ previous_;
};

/// A window's own device context, for measuring.
class WindowDc {
 public:
  explicit WindowDc(HWND window) : window_(window), dc_(GetDC(window)) {}
  ~WindowDc() { ReleaseDC(window_, dc_); }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  operator HDC() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

}  // namespace merivane
