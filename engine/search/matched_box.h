#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/search/box.h"

namespace merivane {

/// A box without the elements that occur on one of its sides only. These never match, so they are edits
/// whatever the script; what is left is smaller and has fewer edits to be found.
///
/// A *grid point* (i, j) stands behind i matched elements on the left and j on the right. In the box itself
/// it is a whole rectangle of points, from (low(0, i), low(1, j)) to (high(0, i), high(1, j)): the runs of
/// unmatched elements there may be deleted and inserted in any order.
///
/// A box whose two sizes add up to an even number is read *turned*: from its end, and with its sides
/// exchanged. Diagonals x - y keep their order by that, and the split of a box becomes one thing: the
/// *furthest* point on the highest diagonal that a shortest script passes with half its edits behind it.
struct MatchedBox {
  std::vector<uint32_t> classes[2];   // of the matched elements, dense: below classCount
  std::vector<int32_t> positions[2];  // of the matched elements in the box, between -1 and the box's size
  int32_t sizes[2] = {0, 0};          // of the box, unmatched elements included
  uint32_t classCount = 0;
  int64_t matches = 0;  // pairs of equal elements
  bool turned = false;

  int32_t matched(int side) const { return static_cast<int32_t>(classes[side].size()); }
  int32_t unmatched() const { return sizes[0] - matched(0) + sizes[1] - matched(1); }

  int32_t low(int side, int32_t i) const { return positions[side][static_cast<size_t>(i)] + 1; }
  int32_t high(int side, int32_t i) const { return positions[side][static_cast<size_t>(i) + 1]; }

  /// A point of this box, in the box as it was before it was turned.
  Point turnedBack(Point at) const { return turned ? Point{sizes[1] - at.y, sizes[0] - at.x} : at; }
};

}  // namespace merivane
