#include "mergeview/win/view_fonts.h"

#include <algorithm>

#include "base/win/wide.h"

namespace merivane {
namespace {

Font makeFont(const std::string& face, int height) {
  LOGFONTW font = {};
  font.lfHeight = -std::max(height, 1);
  font.lfCharSet = DEFAULT_CHARSET;
  lstrcpynW(font.lfFaceName, wide(face).c_str(), LF_FACESIZE);
  return Font(CreateFontIndirectW(&font));
}

void characterWidths(HDC dc, char first, char last, int* widths) {
  if (!GetCharWidth32A(dc, static_cast<BYTE>(first), static_cast<BYTE>(last), widths)) {
    std::fill_n(widths, static_cast<BYTE>(last) - static_cast<BYTE>(first) + 1, 0);
  }
}

}  // namespace

ViewFonts makeViewFonts(HDC dc, SIZE resolution, const std::string& face, int height) {
  ViewFonts fonts;
  fonts.text = makeFont(face, height);
  fonts.numbers = makeFont(face, height * 9 / 10);
  FontMetrics& metrics = fonts.metrics;
  metrics.resolutionX = resolution.cx;
  metrics.resolutionY = resolution.cy;
  {
    const SelectedObject selected(dc, fonts.text.get());
    TEXTMETRICW text = {};
    GetTextMetricsW(dc, &text);
    fonts.characterHeight = std::max<int32_t>(text.tmHeight, 1);
    metrics.lineHeight = std::max<int32_t>(text.tmHeight + text.tmExternalLeading, 1);
    metrics.charWidth = std::max<int32_t>(text.tmAveCharWidth, 1);
    metrics.fixedPitch = (text.tmPitchAndFamily & TMPF_FIXED_PITCH) == 0;  // the flag means the opposite
    int widths[256];
    characterWidths(dc, '\0', '\xFF', widths);
    std::copy(std::begin(widths), std::end(widths), metrics.widths.begin());
  }
  const SelectedObject selected(dc, fonts.numbers.get());
  int digits[10];
  characterWidths(dc, '0', '9', digits);
  metrics.digitWidth = *std::max_element(std::begin(digits), std::end(digits));
  return fonts;
}

}  // namespace merivane
