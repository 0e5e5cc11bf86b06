#include "tests/win/support/picture.h"

#include <fstream>

namespace merivane {
namespace {

BITMAPINFOHEADER headerFor(int width, int height) {
  BITMAPINFOHEADER header = {};
  header.biSize = sizeof header;
  header.biWidth = width;
  header.biHeight = -height;  // from the top
  header.biPlanes = 1;
  header.biBitCount = 32;
  return header;
}

}  // namespace

Picture::Picture(const RECT& screenArea) {
  // A maximized window's edges are not on the screen, and nothing at all can be read across the screen's
  // edge.
  const RECT whole = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  RECT area = {};
  IntersectRect(&area, &screenArea, &whole);
  width_ = area.right - area.left;
  height_ = area.bottom - area.top;
  pixels_.resize(static_cast<size_t>(width_ * height_));
  BITMAPINFO info = {};
  info.bmiHeader = headerFor(width_, height_);
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, width_, height_);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width_, height_, screen, area.left, area.top, SRCCOPY);
  SelectObject(memory, before);
  GetDIBits(screen, bitmap, 0, static_cast<UINT>(height_), pixels_.data(), &info, DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  for (uint32_t& pixel : pixels_) pixel &= 0xFFFFFF;
}

COLORREF Picture::at(int x, int y) const {
  if (x < 0 || x >= width_ || y < 0 || y >= height_) return CLR_INVALID;
  const uint32_t pixel = pixels_[static_cast<size_t>(y * width_ + x)];
  return RGB(pixel >> 16, pixel >> 8 & 0xFF, pixel & 0xFF);
}

bool Picture::shows(COLORREF colour, int top, int bottom) const {
  for (int y = top; y < bottom; ++y) {
    for (int x = 0; x < width_; ++x) {
      if (at(x, y) == colour) return true;
    }
  }
  return false;
}

void Picture::save(const std::string& path) const {
  const auto size = static_cast<DWORD>(pixels_.size() * sizeof pixels_[0]);
  const BITMAPINFOHEADER header = headerFor(width_, height_);
  BITMAPFILEHEADER file = {};
  file.bfType = 0x4D42;
  file.bfOffBits = sizeof file + sizeof header;
  file.bfSize = file.bfOffBits + size;
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(&file), sizeof file);
  out.write(reinterpret_cast<const char*>(&header), sizeof header);
  out.write(reinterpret_cast<const char*>(pixels_.data()), static_cast<std::streamsize>(size));
}

Picture pictureOfClient(HWND window) {
  RECT area = {};
  GetClientRect(window, &area);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
  return Picture(area);
}

}  // namespace merivane
