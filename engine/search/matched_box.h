#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/search/box.h"

namespace merivane {

/// A box without the elements that occur on one of its sides only. These never match, so they are edits in
/// every script; what remains is smaller and has fewer edits to find.
///
/// A *grid point* (i, j) stands after i matched elements on the left and j on the right. In the box itself it
/// is a rectangle of points, from (low(0, i), low(1, j)) to (high(0, i), high(1, j)): the runs of unmatched
/// elements there may be deleted and inserted in any order.
///
/// A box whose two sizes add up to an even number is *turned*: it is read from its end with its sides
/// exchanged, so that its split, too, is the furthest of the points in question (see edit_script.cpp).
struct MatchedBox {
  std::vector<uint32_t> classes[2];  // of the matched elements; dense, below classCount
  std::vector<int32_t>
      positions[2];           // of the matched elements in the box, with -1 before and the size after them
  int32_t sizes[2] = {0, 0};  // of the box with its unmatched elements
  uint32_t classCount = 0;
  int64_t matches = 0;  // pairs of equal elements
  bool turned = false;

  int32_t matched(int side) const { return static_cast<int32_t>(classes[side].size()); }
  int32_t unmatched() const { return sizes[0] - matched(0) + sizes[1] - matched(1); }

  int32_t low(int side, int32_t i) const { return positions[side][static_cast<size_t>(i)] + 1; }
  int32_t high(int side, int32_t i) const { return positions[side][static_cast<size_t>(i) + 1]; }

  /// Where a point of this box is in the box that was matched.
  Point turnedBack(Point at) const { return turned ? Point{sizes[1] - at.y, sizes[0] - at.x} : at; }
};

}  // namespace merivane
