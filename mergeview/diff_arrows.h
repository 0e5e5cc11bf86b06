#pragma once

#include <cstdint>
#include <vector>

#include "display/row_colours.h"
#include "engine/diff_model.h"

namespace merivane {

struct GapPoint {
  int32_t x = 0;
  int32_t y = 0;
  bool operator==(const GapPoint&) const = default;
};

/// The figure that ties the two sides of a difference together across the gap between the panes: an arrow
/// from the side that has the lines, or a band where both have them. Corners in pixels of the view.
struct DiffArrow {
  std::vector<GapPoint> corners;
  Colour colour = 0;
};

/// What of the view the gap shows: pixels from `left` to `right`, rows from `topRow` down, which begins at
/// `top`.
struct GapWindow {
  int32_t left = 0;
  int32_t right = 0;
  int32_t height = 0;
  int32_t lineHeight = 1;
  uint32_t topRow = 0;
  int32_t top = 0;
};

/// The arrows of the differences that are in view, from the top; none with arrows turned off.
std::vector<DiffArrow> diffArrows(const DiffModel& model, const RowColours& colours, const GapWindow& window);

}  // namespace merivane
