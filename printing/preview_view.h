#pragma once

#include <cstdint>
#include <span>

#include "printing/page_geometry.h"

namespace merivane {

/// How large the preview shows a page: whole, as wide as the pane, or at a percentage of its size on paper.
enum class ZoomKind { page, width, percent };

struct Zoom {
  ZoomKind kind = ZoomKind::page;
  int32_t percent = 100;  // read only where it is the kind
  bool operator==(const Zoom&) const = default;
};

/// The percentages that zooming goes through, ascending.
std::span<const int32_t> zoomPercentages();

/// A length along one of the preview pane's edges.
struct PreviewSpan {
  int32_t paneLength = 0;
  int32_t sheetLength = 0;
  int32_t position = 0;  // scrolled so far

  int32_t max() const { return sheetLength > paneLength ? sheetLength - paneLength : 0; }
  /// Where the sheet begins: in the middle of a pane that is longer.
  int32_t start() const { return sheetLength > paneLength ? -position : (paneLength - sheetLength) / 2; }
};

/// Which page the preview shows, how large, and what of it is in view; all lengths are pixels of the screen.
/// A border around the sheet counts as part of it.
class PreviewView {
 public:
  /// The pages, and with them the sheet, may have become others.
  void setPages(const PageDevice& device, uint32_t pages);

  /// The pane may have another size or resolution.
  void resize(int32_t width, int32_t height, int32_t dpi);

  uint32_t page() const { return page_; }  // one-based
  uint32_t pages() const { return pages_; }
  bool canGoBack() const { return page_ > 1; }
  bool canGoOn() const { return page_ < pages_; }

  /// Shows a page, the nearest there is, from its top.
  void goTo(int64_t page);

  /// Goes on by what is in view, and from the page's end to the next page; or back likewise.
  void pageDown();
  void pageUp();

  /// Scrolls, clamped to what there is.
  void scrollBy(int32_t x, int64_t y) { scrollTo(x_.position + x, y_.position + y); }
  void scrollTo(int64_t x, int64_t y);

  /// Scrolls down or up, and where that does not go any further turns the page.
  void wheel(int32_t pixels);

  const Zoom& zoom() const { return zoom_; }
  void setZoom(const Zoom& zoom);

  /// To the next larger or smaller one of the usual percentages.
  void zoomIn();
  void zoomOut();

  /// The percentage at which the page is shown, rounded.
  int32_t percent() const;

  const PreviewSpan& horizontal() const { return x_; }
  const PreviewSpan& vertical() const { return y_; }

  /// Where the sheet is in the pane, without its border.
  int32_t sheetLeft() const { return x_.start() + border(); }
  int32_t sheetTop() const { return y_.start() + border(); }
  int32_t sheetWidth() const { return x_.sheetLength - 2 * border(); }
  int32_t sheetHeight() const { return y_.sheetLength - 2 * border(); }

 private:
  int32_t border() const { return dpi_ / 12; }
  double zoomFactor() const;
  void layOut();

  PageDevice device_;
  uint32_t pages_ = 1;
  uint32_t page_ = 1;
  Zoom zoom_;
  int32_t dpi_ = 96;
  PreviewSpan x_;
  PreviewSpan y_;
};

}  // namespace merivane
