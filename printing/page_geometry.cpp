#include "printing/page_geometry.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace merivane {
namespace {

constexpr int32_t kRuleGap = 2;     // between a rule and its text, at 96 pixels an inch
constexpr int32_t kMarkGutter = 8;  // besides the mark, likewise
constexpr Colour kLightGrey = 0xE0E0E0;

/// A length given for 96 pixels an inch, rounded.
int32_t scaled(int32_t pixels, int32_t dpi) { return (pixels * dpi + 48) / 96; }

}  // namespace

PageGeometry pageGeometry(const PageDevice& device, int32_t lineHeight) {
  const int32_t height = device.height - 2 * (device.dpiY / 2);
  const int32_t gap = scaled(kRuleGap, device.dpiY);
  PageGeometry page = {};
  page.marginLeft = device.dpiX / 2;
  page.marginTop = device.dpiY / 2;
  page.width = std::max(device.width - 2 * page.marginLeft, 1);
  page.lineHeight = lineHeight;
  page.linesPerPage = std::max((device.height - 4 * lineHeight - device.dpiY) / lineHeight, 1);
  page.headerRule = lineHeight + gap;
  page.linesTop = 2 * lineHeight;
  page.footerTop = height - lineHeight;
  page.footerRule = page.footerTop - gap;
  page.penWidth = device.dpiX / 100;
  return page;
}

int32_t printedFontHeight(int32_t points, int32_t dpi, int32_t scale) {
  return (points * dpi + 36) / 72 * scale / 100;
}

int32_t typedScale(const char* text, int32_t before) {
  char* end = nullptr;
  const long typed = std::strtol(text, &end, 10);
  if (end == text) return before;
  while (*end == ' ' || *end == '%') ++end;
  if (*end != '\0') return before;
  return static_cast<int32_t>(std::clamp<long>(typed, kMinScale, kMaxScale));
}

uint32_t pageCount(uint32_t lines, const PageGeometry& geometry) {
  const auto perPage = static_cast<uint32_t>(geometry.linesPerPage);
  return std::max(lines / perPage + (lines % perPage != 0 ? 1 : 0), 1u);
}

PageRange clippedRange(PageRange wanted, uint32_t pages) {
  if (wanted.first > wanted.last) std::swap(wanted.first, wanted.last);
  return {std::clamp(wanted.first, 1u, pages), std::clamp(wanted.last, 1u, pages)};
}

PaneEdges printedPane(int side, int32_t width, float splitFraction, const ViewOptions& options,
                      uint32_t rowCount, const FontMetrics& font) {
  const int32_t margin = std::min(font.resolutionX, width / 2);
  const auto split = static_cast<int32_t>(static_cast<float>(width) * splitFraction);
  int32_t gutter = 0;
  if (options.lineNumbers != LineNumbers::none) {
    gutter = gutterWidth(options.lineNumbers, options.rowMarks, rowCount, font);
  } else if (options.rowMarks) {
    gutter = font.digitWidth + font.scaled(kMarkGutter);
  }
  return paneEdges(side, std::clamp(split, margin, width - margin), width, gutter, font);
}

ViewOptions paperOptions(const ViewOptions& options, bool colours) {
  ViewOptions paper = options;
  paper.highContrast.reset();
  paper.rowMarks = !colours;
  if (colours) return paper;
  constexpr Colour black = 0x000000, white = 0xFFFFFF;
  paper.textColour = paper.readOnlyColour = black;
  paper.colours = {white, white, kLightGrey, kLightGrey, kLightGrey, options.colours.drawArrows};
  paper.highContrast = {white, black, black, white};
  return paper;
}

}  // namespace merivane
