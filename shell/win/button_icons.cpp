#include "shell/win/button_icons.h"

#include <cstdint>
#include <cstring>
#include <vector>

#include "base/win/dpi.h"

namespace merivane {
namespace {

Bitmap iconBitmap(IconId icon, int size, bool greyed) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size;
  info.bmiHeader.biHeight = -size;  // rows from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  Bitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!bitmap) return bitmap;
  const std::vector<uint32_t> pixels = drawIcon(icon, size, greyed);
  std::memcpy(bits, pixels.data(), pixels.size() * sizeof pixels[0]);
  return bitmap;
}

HIMAGELIST makeList(int size, bool greyed) {
  const HIMAGELIST list = ImageList_Create(size, size, ILC_COLOR32, kIconCount, 0);
  if (list == nullptr) return nullptr;
  for (int icon = 0; icon < kIconCount; ++icon) {
    ImageList_Add(list, iconBitmap(static_cast<IconId>(icon), size, greyed).get(), nullptr);
  }
  return list;
}

}  // namespace

ButtonIcons::ButtonIcons(int dpi)
    : list_(makeList(scaled(16, dpi), false)), greyedList_(makeList(scaled(16, dpi), true)) {}

}  // namespace merivane
