#include "mergeview/split.h"

namespace merivane {
namespace {

constexpr int32_t kHalfSplitter = 10;  // at 96 pixels an inch
constexpr int32_t kNumberPadding = 6;  // on either side of a number, likewise
constexpr int32_t kPlainGutter = 8;
constexpr int32_t kMarkIndent = 2;

}  // namespace

void Split::setFromX(int32_t x, int32_t viewWidth) {
  if (viewWidth <= 0) return;
  splitFraction_ = (static_cast<float>(x) + 0.5f) / static_cast<float>(viewWidth);
  recompute(viewWidth);
}

void Split::centre(int32_t viewWidth) {
  splitFraction_ = 0.5f;
  recompute(viewWidth);
}

void Split::recompute(int32_t viewWidth) {
  if (viewWidth <= 0) return;
  const auto width = static_cast<float>(viewWidth);
  splitX_ = static_cast<int32_t>(width * splitFraction_);
  if (splitX_ > viewWidth - kMargin) {
    splitX_ = viewWidth - kMargin;
    splitFraction_ = (static_cast<float>(splitX_) + 0.5f) / width;
  }
  if (splitX_ < kMargin) {
    splitX_ = kMargin;
    splitFraction_ = (static_cast<float>(kMargin) + 0.5f) / width;
  }
}

int32_t gutterPadding(const FontMetrics& font) { return font.scaled(kNumberPadding); }

int32_t markIndent(const FontMetrics& font) { return font.scaled(kMarkIndent); }

int32_t gutterWidth(LineNumbers kind, bool marks, uint32_t rowCount, const FontMetrics& font) {
  const int32_t mark = marks ? font.digitWidth : 0;
  if (kind == LineNumbers::none) return kPlainGutter + mark;
  int32_t digits = 0;
  for (uint32_t rest = rowCount; rest > 0; rest /= 10) ++digits;
  return mark + digits * font.digitWidth + 2 * gutterPadding(font);
}

PaneEdges paneEdges(int side, int32_t splitX, int32_t viewWidth, int32_t gutter, const FontMetrics& font) {
  const int32_t half = font.scaled(kHalfSplitter);
  const int32_t left = side == 0 ? 0 : splitX + half;
  return {left, left + gutter, side == 0 ? splitX - half : viewWidth};
}

}  // namespace merivane
