#pragma once

#include <cstdint>

#include "mergeview/font_metrics.h"
#include "mergeview/split.h"
#include "mergeview/view_options.h"

namespace merivane {

/// What a printer's driver tells of a page, in the device's pixels.
struct PageDevice {
  int32_t width = 0;  // of what it can print on, whose corner is the device's origin
  int32_t height = 0;
  int32_t dpiX = 96;  // pixels an inch
  int32_t dpiY = 96;
  int32_t paperWidth = 0;  // of the sheet
  int32_t paperHeight = 0;
  int32_t paperLeft = 0;  // where on the sheet the origin is
  int32_t paperTop = 0;

  bool operator==(const PageDevice&) const = default;
};

/// Where everything stands on a page. Pixels of the device; but for the margins from where these meet. On a
/// page too small for it, a line at least and a pixel's width are printed all the same.
struct PageGeometry {
  int32_t marginLeft;  // half an inch, besides what the device leaves
  int32_t marginTop;
  int32_t width;  // between the margins
  int32_t lineHeight;
  int32_t linesPerPage;
  int32_t headerRule;  // below the header, which is at the top
  int32_t linesTop;
  int32_t footerRule;
  int32_t footerTop;
  int32_t penWidth;  // of the rules

  int32_t linesHeight() const { return linesPerPage * lineHeight; }
  bool operator==(const PageGeometry&) const = default;
};

PageGeometry pageGeometry(const PageDevice& device, int32_t lineHeight);

/// The height of the characters on a device, from a font's points and the scale in percent.
int32_t printedFontHeight(int32_t points, int32_t dpi, int32_t scale);

/// What a scale that the user typed stands for: a number of percent, with or without its sign, the nearest of
/// 25 to 100; `before` for what is no number.
int32_t typedScale(const char* text, int32_t before);
constexpr int32_t kOfferedScales[] = {100, 90, 80, 75, 70, 60, 50, 40, 30, 25};
constexpr int32_t kMinScale = 25;
constexpr int32_t kMaxScale = 100;

/// Pages from the first to the last, one-based.
struct PageRange {
  uint32_t first = 1;
  uint32_t last = 1;

  uint32_t size() const { return last - first + 1; }
  bool operator==(const PageRange&) const = default;
};

/// How many pages the lines take; a page at least.
uint32_t pageCount(uint32_t lines, const PageGeometry& geometry);

/// The part of a range that there is; ends that are the wrong way round are exchanged.
PageRange clippedRange(PageRange wanted, uint32_t pages);

/// The edges of a side's pane on a page this wide. The split is where it is on the screen, but leaves either
/// pane an inch if there is room. Without numbers and marks the text begins at the pane's very edge.
PaneEdges printedPane(int side, int32_t width, float splitFraction, const ViewOptions& options,
                      uint32_t rowCount, const FontMetrics& font);

/// How rows look on paper. What is looked at without colours is black on white, with marks before the rows;
/// differing characters are white on black.
ViewOptions paperOptions(const ViewOptions& options, bool colours);

}  // namespace merivane
