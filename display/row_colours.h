#pragma once

#include <cstdint>

#include "engine/diff_model.h"

namespace merivane {

/// A colour as the platform keeps it: 0x00BBGGRR.
using Colour = uint32_t;

struct RowColours {
  Colour same = 0xFFFFFF;
  Colour empty = 0xF4F4F4;
  Colour left = 0xC0DCC0;
  Colour right = 0xF0CAA6;
  Colour changed = 0xA6CAF0;
  bool drawArrows = true;  // off: every differing row has the empty colour

  bool operator==(const RowColours&) const = default;
};

/// The background of a row on a side.
constexpr Colour rowColour(const RowColours& colours, RowStatus status, int side) {
  if (status == RowStatus::same) return colours.same;
  if (!colours.drawArrows || fillerSide(status) == side) return colours.empty;
  if (status == RowStatus::changed) return colours.changed;
  return side == 0 ? colours.left : colours.right;
}

}  // namespace merivane
