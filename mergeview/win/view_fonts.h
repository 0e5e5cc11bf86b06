#pragma once

#include <windows.h>

#include <string>

#include "base/win/gdi.h"
#include "mergeview/font_metrics.h"

namespace merivane {

/// The fonts that rows are drawn in on one device, and what the layout has to know of them.
struct ViewFonts {
  Font text;
  Font numbers;  // the same face, a tenth smaller
  FontMetrics metrics;
  int32_t characterHeight = 0;  // without the space that the font wants between lines
};

/// `dc` is the device's, `resolution` how many pixels an inch has there. `height` is that of the characters
/// in its pixels.
ViewFonts makeViewFonts(HDC dc, SIZE resolution, const std::string& face, int height);

/// The height of a font of this many points, in pixels of which an inch has so many.
inline int fontHeight(int points, int dpi) { return MulDiv(points, dpi, 72); }

}  // namespace merivane
