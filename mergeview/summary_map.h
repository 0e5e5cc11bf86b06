#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "display/row_colours.h"
#include "engine/diff_model.h"

namespace merivane {

/// A half-open run of pixel lines.
struct PixelRange {
  int32_t begin = 0;
  int32_t end = 0;
  bool operator==(const PixelRange&) const = default;
};

/// One pixel line of the summary bar between its margins: its first and last pixel, and those in between.
struct SummaryLine {
  Colour edge;
  Colour fill;
  bool operator==(const SummaryLine&) const = default;
};

/// How all rows of a comparison map onto a stretch of the summary bar. Pixel lines of the mapped stretch
/// count from its top; what a row or a click means is asked in those of the bar where it says so.
class SummaryMap {
 public:
  /// The margin left and right of the bands, in pixels.
  static constexpr int32_t kMargin = 4;

  /// The bar beside a scroll bar with arrows of this height. When all rows are in view, each gets its own
  /// line's height and the stretch starts at the top.
  struct Geometry {
    int32_t barHeight = 0;
    int32_t arrowHeight = 0;
    int32_t lineHeight = 0;
    uint32_t visibleRows = 0;
    bool operator==(const Geometry&) const = default;
  };

  /// Maps the rows anew when the geometry or their number changed since the last call, or when
  /// rowsChanged() was called. Throws std::bad_alloc.
  void update(const DiffModel& model, const Geometry& geometry);

  /// The rows are others, though perhaps as many.
  void rowsChanged() { stale_ = true; }

  int32_t mapTop() const { return mapTop_; }  // in pixels of the bar
  int32_t mapHeight() const { return static_cast<int32_t>(pixels_.size()); }

  /// The status of every pixel line's band; of rows that share a line the last that differs.
  std::span<const RowStatus> pixels() const { return pixels_; }

  /// The lines that a row covers, at least one.
  PixelRange pixelsOf(uint32_t row) const;

  /// The frame that marks the caret's row, at least 5 lines high where there is room.
  PixelRange caretMarker(uint32_t caretRow) const;

  /// The row at a pixel line of the bar, the first and last beyond the stretch.
  uint32_t rowAt(int32_t y) const;

 private:
  Geometry geometry_;
  uint32_t rows_ = 0;
  int32_t mapTop_ = 0;
  std::vector<RowStatus> pixels_;
  bool stale_ = true;
};

/// The colours of the mapped stretch's pixel lines on a bar with this face, edges of the bands included.
std::vector<SummaryLine> summaryLines(std::span<const RowStatus> pixels, const RowColours& colours,
                                      Colour face);

/// The colour of the frame around the caret's row, which shows on the lines that it frames: black, or white
/// on dark ones.
Colour markerColour(std::span<const SummaryLine> framed);

}  // namespace merivane
