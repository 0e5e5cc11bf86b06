#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace merivane {

/// What a part of the screen shows.
class Picture {
 public:
  /// Takes a picture of what of an area is on the screen.
  explicit Picture(const RECT& screenArea);

  bool operator==(const Picture&) const = default;

  int width() const { return width_; }
  int height() const { return height_; }
  COLORREF at(int x, int y) const;

  /// Whether a colour is to be seen between these lines.
  bool shows(COLORREF colour, int top, int bottom) const;

  /// Writes it as a BMP file.
  void save(const std::string& path) const;

 private:
  int width_ = 0;
  int height_ = 0;
  std::vector<uint32_t> pixels_;  // 0x00RRGGBB, from the top
};

/// A picture of a window's client area, with whatever stands in front of it.
Picture pictureOfClient(HWND window);

}  // namespace merivane
