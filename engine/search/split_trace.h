#pragma once

#include <algorithm>
#include <cstdint>

#include "engine/search/box.h"
#include "engine/search/matched_box.h"

namespace merivane {

/// Walks the highest of a box's shortest paths back from its end to where the box is to be split. A table of
/// the lengths of longest common subsequences tells it where it may insert; it never asks for a row after the
/// one that it has come to.
///
/// Why this finds the split, with before(), after() and h as in edit_script.cpp: paths that cross share a
/// point, so of all shortest paths there is a highest, T, and keeping to the highest diagonals that a
/// shortest path may take follows it. Let d be the highest diagonal on which a shortest path has a point p
/// with before(p) = h. T is nowhere lower, so where it passes p it is on d or higher. Suppose that T's points
/// with before() = h were on a lower diagonal. If T had passed them already, it would have come to d at a
/// point q not further than p with before(q) > h; if not, it would come back to d at a point q not nearer
/// than p with before(q) < h. Neither can be, as before() never falls along d. So they are on d, and from
/// there the split is as far along d as before() stays h, since after() never grows on the way.
class SplitTrace {
 public:
  /// Starts on the last grid point. `edits` are those of the box's shortest script; `box` must outlive this.
  SplitTrace(const MatchedBox& box, int32_t edits)
      : box_(box),
        half_((edits + 1) / 2),
        i_(box.matched(0)),
        j_(box.matched(1)),
        x_(box.sizes[0]),
        y_(box.sizes[1]),
        length_((box.sizes[0] + box.sizes[1] - edits) / 2) {}

  /// The grid point it stands on, and the length there.
  int32_t row() const { return i_; }
  int32_t column() const { return j_; }
  int32_t length() const { return length_; }

  /// Goes back within the row to `column`, the first one of the same length, and over the unmatched elements
  /// before it. Returns true when it has come to where half the edits are done; then only extend() may be
  /// called.
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

  /// Leaves the row for the one before: by a match if there is one, else by a deletion. Returns true as
  /// insertFrom(), and always on the first row, at whose low corner no edits are done.
  bool leaveRow() {
    const int32_t x = box_.low(0, i_);
    const int32_t xAtHalf = half_ + 2 * length_ - y_;
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

  /// Goes on along the diagonal as far as the edits stay the same. `reaches(i, j, length)` returns whether a
  /// grid point has at least that length; i and j never fall from call to call.
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
  int32_t yAtHalf() const { return half_ + 2 * length_ - x_; }

  const MatchedBox& box_;
  const int32_t half_;  // the edits before the split; before a point there are x + y - 2 * length
  int32_t i_, j_;       // the grid point
  int32_t x_, y_;       // the point of its rectangle
  int32_t length_;
};

}  // namespace merivane
