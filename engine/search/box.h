#pragma once

#include <algorithm>
#include <cstdint>

#include "engine/search/equal_ends.h"

namespace merivane {

/// A rectangle of the edit graph: left elements [xlo, xhi) against right elements [ylo, yhi).
struct Box {
  int32_t xlo, ylo, xhi, yhi;

  bool empty() const { return xlo == xhi || ylo == yhi; }
  int64_t size() const { return int64_t{xhi} - xlo + yhi - ylo; }
};

/// Takes the equal elements off both ends of a box; fewer when aborted.
template <typename Element>
void trimEqualEnds(const Element* left, const Element* right, const AbortFlag* abort, Box& box) {
  const auto shorter = [&box] { return static_cast<size_t>(std::min(box.xhi - box.xlo, box.yhi - box.ylo)); };
  const auto atStart = static_cast<int32_t>(equalAtStart(left + box.xlo, right + box.ylo, shorter(), abort));
  box.xlo += atStart;
  box.ylo += atStart;
  const auto atEnd = static_cast<int32_t>(equalAtEnd(left + box.xhi, right + box.yhi, shorter(), abort));
  box.xhi -= atEnd;
  box.yhi -= atEnd;
}

struct Point {
  int32_t x, y;
};

/// Stands for a number of edits that nobody has counted yet.
constexpr int32_t kUnknown = -1;

/// Where a search divides a box. `edits` are those of the box's shortest script; the part before the split
/// has the larger half of them, (edits + 1) / 2.
struct BoxSplit {
  Point at;
  int32_t edits;
};

enum class SearchEnd { found, overBudget, aborted };

}  // namespace merivane
