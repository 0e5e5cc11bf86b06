#pragma once

#include <windows.h>

#include <utility>

#include "printing/page_geometry.h"

namespace merivane {

/// Owns the device context of a printer, or one that only tells of it.
class PrinterDc {
 public:
  PrinterDc() = default;
  explicit PrinterDc(HDC dc) : dc_(dc) {}
  PrinterDc(PrinterDc&& other) noexcept : dc_(std::exchange(other.dc_, nullptr)) {}
  PrinterDc& operator=(PrinterDc&& other) noexcept {
    std::swap(dc_, other.dc_);
    return *this;
  }
  ~PrinterDc() {
    if (dc_ != nullptr) DeleteDC(dc_);
  }

  HDC get() const { return dc_; }
  explicit operator bool() const { return dc_ != nullptr; }

  PageDevice page() const {
    const auto get = [this](int what) { return GetDeviceCaps(dc_, what); };
    return {get(HORZRES),       get(VERTRES),        get(LOGPIXELSX),      get(LOGPIXELSY),
            get(PHYSICALWIDTH), get(PHYSICALHEIGHT), get(PHYSICALOFFSETX), get(PHYSICALOFFSETY)};
  }

  bool hasColours() const { return GetDeviceCaps(dc_, BITSPIXEL) * GetDeviceCaps(dc_, PLANES) > 1; }

 private:
  HDC dc_ = nullptr;
};

}  // namespace merivane
