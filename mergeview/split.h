#pragma once

#include <cstdint>

#include "display/row_look.h"
#include "mergeview/font_metrics.h"

namespace merivane {

/// Where the split between the two panes stands. It keeps its share of the width when that changes, but stays
/// 100 pixels from either side; in a narrower view from the left one.
class Split {
 public:
  static constexpr int32_t kMargin = 100;

  float splitFraction() const { return splitFraction_; }
  int32_t splitX() const { return splitX_; }

  /// Puts the split at a pixel, or back into the middle, of a view this wide.
  void setFromX(int32_t x, int32_t viewWidth);
  void centre(int32_t viewWidth);

  /// Finds the place in a view that has come to be this wide.
  void recompute(int32_t viewWidth);

 private:
  float splitFraction_ = 0.5f;
  int32_t splitX_ = 0;
};

/// A side's pane in pixels of the view: the gutter from `paneLeft`, the text from `textLeft` to `paneRight`.
struct PaneEdges {
  int32_t paneLeft = 0;
  int32_t textLeft = 0;
  int32_t paneRight = 0;

  /// At least 0, however narrow the view.
  int32_t textWidth() const { return paneRight > textLeft ? paneRight - textLeft : 0; }
  bool operator==(const PaneEdges&) const = default;
};

/// How wide the gutter is: as the largest row number needs, or 8 pixels without numbers; a digit wider with
/// marks before them.
int32_t gutterWidth(LineNumbers kind, bool marks, uint32_t rowCount, const FontMetrics& font);

/// How far a mark stands from the pane's left.
int32_t markIndent(const FontMetrics& font);

/// How far a number ends before the text.
int32_t gutterPadding(const FontMetrics& font);

PaneEdges paneEdges(int side, int32_t splitX, int32_t viewWidth, int32_t gutter, const FontMetrics& font);

}  // namespace merivane
