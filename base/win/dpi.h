#pragma once

#include <windows.h>

#include "base/win/gdi.h"

namespace merivane {

// Resolutions are in pixels an inch. A window has that of the monitor it is on; before Windows 10 all
// monitors have one.

/// Returns the resolution that a window is drawn at.
int dpiOf(HWND window);

/// Converts pixels at 96 to the inch.
inline int scaled(int pixels, int dpi) { return MulDiv(pixels, dpi, 96); }

/// Returns one of the system's metrics (a SM_ number) for a window of a resolution.
int systemMetric(int metric, int dpi);

/// The fonts that the user chose for parts of a window.
struct ControlFonts {
  explicit ControlFonts(int dpi);

  Font message;  // of messages, dialogs and boxes
  Font status;   // of status bars and tips
};

}  // namespace merivane
