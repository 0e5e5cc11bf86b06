#pragma once

#include <windows.h>

#include "base/win/dpi.h"
#include "shell/win/button_icons.h"

namespace merivane {

/// What a window and its controls look like at one resolution.
struct ControlLook {
  explicit ControlLook(int resolution);

  int dpi;  // pixels an inch
  ControlFonts fonts;
  ButtonIcons icons;
  Icon largeIcon;  // the program's, for the window itself
  Icon smallIcon;
};

}  // namespace merivane
