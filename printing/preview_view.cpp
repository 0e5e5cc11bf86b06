#include "printing/preview_view.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace merivane {
namespace {

constexpr int32_t kPercentages[] = {10, 25, 33, 50, 67, 75, 100, 125, 150, 200, 300, 400};

int32_t clampedTo(const PreviewSpan& span, int64_t position) {
  return static_cast<int32_t>(std::clamp<int64_t>(position, 0, span.max()));
}

}  // namespace

std::span<const int32_t> zoomPercentages() { return kPercentages; }

void PreviewView::setPages(const PageDevice& device, uint32_t pages) {
  device_ = device;
  pages_ = pages;
  page_ = std::clamp(page_, 1u, pages_);
  layOut();
}

void PreviewView::resize(int32_t width, int32_t height, int32_t dpi) {
  x_.paneLength = width;
  y_.paneLength = height;
  dpi_ = dpi;
  layOut();
}

void PreviewView::goTo(int64_t page) {
  page_ = static_cast<uint32_t>(std::clamp<int64_t>(page, 1, pages_));
  y_.position = 0;
}

void PreviewView::pageDown() {
  if (y_.position < y_.max()) return scrollBy(0, y_.paneLength * 9 / 10);
  if (canGoOn()) goTo(int64_t{page_} + 1);
}

void PreviewView::pageUp() {
  if (y_.position > 0) return scrollBy(0, -(y_.paneLength * 9 / 10));
  if (!canGoBack()) return;
  goTo(int64_t{page_} - 1);
  y_.position = y_.max();
}

void PreviewView::scrollTo(int64_t x, int64_t y) {
  x_.position = clampedTo(x_, x);
  y_.position = clampedTo(y_, y);
}

void PreviewView::wheel(int32_t pixels) {
  if (pixels > 0 && y_.position == y_.max()) return pageDown();
  if (pixels < 0 && y_.position == 0) return pageUp();
  scrollBy(0, pixels);
}

void PreviewView::setZoom(const Zoom& zoom) {
  zoom_ = zoom;
  layOut();
}

void PreviewView::zoomIn() {
  const auto larger = std::upper_bound(std::begin(kPercentages), std::end(kPercentages), percent());
  if (larger != std::end(kPercentages)) setZoom({ZoomKind::percent, *larger});
}

void PreviewView::zoomOut() {
  const auto smaller = std::lower_bound(std::begin(kPercentages), std::end(kPercentages), percent());
  if (smaller != std::begin(kPercentages)) setZoom({ZoomKind::percent, *(smaller - 1)});
}

int32_t PreviewView::percent() const { return static_cast<int32_t>(std::lround(zoomFactor() * 100)); }

/// By which the sheet's inches are multiplied.
double PreviewView::zoomFactor() const {
  const double width = static_cast<double>(device_.paperWidth) * dpi_ / device_.dpiX;
  const double height = static_cast<double>(device_.paperHeight) * dpi_ / device_.dpiY;
  if (width <= 0 || height <= 0) return 1;
  const double across = std::max(x_.paneLength - 2 * border(), 1) / width;
  const double down = std::max(y_.paneLength - 2 * border(), 1) / height;
  switch (zoom_.kind) {
    case ZoomKind::page:
      return std::min(across, down);
    case ZoomKind::width:
      return across;
    case ZoomKind::percent:
      return zoom_.percent / 100.0;
  }
  return 1;
}

/// What was at the pane's top, and in its middle from left to right, stays there as far as there is a choice.
void PreviewView::layOut() {
  const double factor = zoomFactor() * dpi_;
  const auto resize = [&](PreviewSpan& span, int32_t paper, int32_t dpi, double anchor) {
    const double at = span.position + anchor * std::min(span.paneLength, span.sheetLength);
    const double share = span.sheetLength > 0 ? at / span.sheetLength : 0;
    span.sheetLength = static_cast<int32_t>(paper * factor / dpi) + 2 * border();
    span.position = clampedTo(span, std::llround(share * span.sheetLength - anchor * span.paneLength));
  };
  resize(x_, device_.paperWidth, device_.dpiX, 0.5);
  resize(y_, device_.paperHeight, device_.dpiY, 0);
}

}  // namespace merivane
