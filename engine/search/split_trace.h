#pragma once

#include <algorithm>
#include <cstdint>

#include "engine/search/box.h"
#include "engine/search/matched_box.h"

namespace merivane {

/// Walks a shortest script of a box back from its end, on the highest diagonals x - y that any shortest
/// script takes, up to where the box is to be split. A table of the lengths of longest common subsequences
/// tells it where it may insert; it asks for nothing behind the row it has come to.
///
/// Why this finds the split: paths in the grid cross at points only, so of all shortest ones there is a
/// highest, and it is found by turning as far to that side as a shortest path may, at every point. With half
/// the edits behind it it stands on the diagonal of the split. Further along that diagonal the edits behind a
/// point never fall and those ahead of it never grow, so the points there that shortest scripts pass with
/// half their edits done are just those that still have no more edits behind them.
class SplitTrace {
 public:
  /// `edits` are those of the box's shortest script, `box` must outlive this. Stands on the last grid point.
  SplitTrace(const MatchedBox& box, int32_t edits)
      : box_(box),
        before_((edits + 1) / 2),
        i_(box.matched(0)),
        j_(box.matched(1)),
        x_(box.sizes[0]),
        y_(box.sizes[1]),
        length_((box.sizes[0] + box.sizes[1] - edits) / 2) {}

  /// The grid point it stands on, and the length there.
  int32_t row() const { return i_; }
  int32_t column() const { return j_; }
  int32_t length() const { return length_; }

  /// Goes back within the row to `column`, the least one with the same length, and over the unmatched
  /// elements before it. True when it has come to where half the edits are done; nothing is to be called then
  /// but extend().
  bool insertFrom(int32_t column) {
    const int32_t y = box_.low(1, column);
    if (yAtHalf() >= y) {
      y_ = yAtHalf();
      const auto begin = box_.positions[1].begin() + 1;
      j_ = static_cast<int32_t>(std::lower_bound(begin + column, begin + j_, y_) - begin);
      return true;
    }
    y_ = y;
    j_ = column;
    return false;
  }

  /// Leaves the row for the one before: by a match if there is one, else by a deletion. True as for
  /// insertFrom(), and on the first row, at whose low corner no edits are done, always.
  bool leaveRow() {
    const int32_t x = box_.low(0, i_);
    const int32_t xAtHalf = before_ + 2 * length_ - y_;
    if (xAtHalf >= x) {
      x_ = xAtHalf;
      return true;
    }
    --i_;
    x_ = x - 1;
    if (j_ > 0 && box_.classes[0][static_cast<size_t>(i_)] == box_.classes[1][static_cast<size_t>(j_) - 1]) {
      --j_;
      --y_;
      --length_;
    }
    return false;
  }

  /// Goes on along the diagonal as far as the edits stay the same. `reaches(i, j, length)` tells whether a
  /// grid point has that length; i and j never fall from call to call.
  template <typename Reaches>
  void extend(Reaches reaches) {
    while (x_ < box_.sizes[0] && y_ < box_.sizes[1]) {
      const int32_t i = i_ + (x_ == box_.high(0, i_));
      const int32_t j = j_ + (y_ == box_.high(1, j_));
      if (!reaches(i, j, length_ + 1)) break;
      i_ = i;
      j_ = j;
      ++x_;
      ++y_;
      ++length_;
    }
  }

  Point at() const { return {x_, y_}; }

 private:
  int32_t yAtHalf() const { return before_ + 2 * length_ - x_; }

  const MatchedBox& box_;
  const int32_t before_;  // the edits behind the split; x + y - 2 * length are those behind a point
  int32_t i_, j_;         // the grid point
  int32_t x_, y_;         // the point of its rectangle
  int32_t length_;
};

}  // namespace merivane
