#include "shell/win/control_look.h"

#include "base/win/window.h"

namespace merivane {
namespace {

constexpr int iconNumber = 100;

// Not shared: the second of two sizes would be the first one again.
Icon programIcon(int width, int height) {
  return Icon(static_cast<HICON>(
      LoadImageW(programInstance(), MAKEINTRESOURCEW(iconNumber), IMAGE_ICON, width, height, 0)));
}

}  // namespace

ControlLook::ControlLook(int resolution)
    : dpi(resolution),
      fonts(dpi),
      icons(dpi),
      largeIcon(programIcon(systemMetric(SM_CXICON, dpi), systemMetric(SM_CYICON, dpi))),
      smallIcon(programIcon(systemMetric(SM_CXSMICON, dpi), systemMetric(SM_CYSMICON, dpi))) {}

}  // namespace merivane
