#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "engine/abort_flag.h"
#include "engine/box.h"

namespace merivane {

/// The middle snake of a box, diagonal by diagonal, from both ends at once (E. W. Myers, "An O(ND)
/// Difference Algorithm and Its Variations", Algorithmica 1, 1986). It fixes which of several splits is
/// meant: the first round in which the two searches meet, and in it the highest diagonal.
///
/// Time: about D * D / 2 steps for a box with D edits. Memory: 8 bytes an element of the largest box so far.
template <typename Element>
class DiagonalSearch {
 public:
  DiagonalSearch(const Element* left, const Element* right, const AbortFlag* abort)
      : a_(left), b_(right), abort_(abort) {}

  /// Gives up when more than `budget` steps would be needed. The box is not empty and does not begin or end
  /// with equal elements. Throws std::bad_alloc.
  SearchEnd find(const Box& box, int64_t budget, Split& split) {
    const size_t diagonals = static_cast<size_t>(box.size()) + 3;
    if (furthest_.size() < 2 * diagonals) furthest_.resize(2 * diagonals);
    // A diagonal d = x - y runs from xlo - yhi to xhi - ylo, with one guard cell on each side.
    int32_t* const fd = furthest_.data() + (ptrdiff_t{box.yhi} - box.xlo + 1);
    int32_t* const bd = fd + static_cast<ptrdiff_t>(diagonals);
    const int32_t dmin = box.xlo - box.yhi, dmax = box.xhi - box.ylo;
    const int32_t fmid = box.xlo - box.ylo, bmid = box.xhi - box.yhi;
    const bool odd = ((fmid - bmid) & 1) != 0;
    int32_t fmin = fmid, fmax = fmid;
    int32_t bmin = bmid, bmax = bmid;
    fd[fmid] = box.xlo;
    bd[bmid] = box.xhi;
    for (int32_t round = 1;; ++round) {
      if (isRaised(abort_)) return SearchEnd::aborted;
      budget -= int64_t{fmax} - fmin + 2;
      if (budget < 0) return SearchEnd::overBudget;
      if (fmin > dmin) {
        fd[--fmin - 1] = -1;
      } else {
        ++fmin;
      }
      if (fmax < dmax) {
        fd[++fmax + 1] = -1;
      } else {
        --fmax;
      }
      // Where the searches can meet: on diagonals that both have, in rounds of the right parity.
      const uint32_t met = odd ? static_cast<uint32_t>(bmax - bmin + 1) : 0;
      for (int32_t d = fmax; d >= fmin; d -= 2) {
        int32_t x = fd[d - 1] < fd[d + 1] ? fd[d + 1] : fd[d - 1] + 1;
        for (const int32_t end = std::min(box.xhi, box.yhi + d); x < end && a_[x] == b_[x - d];) ++x;
        fd[d] = x;
        if (static_cast<uint32_t>(d - bmin) < met && bd[d] <= x) {
          split = {{x, x - d}, 2 * round - 1};
          return SearchEnd::found;
        }
      }
      if (bmin > dmin) {
        bd[--bmin - 1] = std::numeric_limits<int32_t>::max();
      } else {
        ++bmin;
      }
      if (bmax < dmax) {
        bd[++bmax + 1] = std::numeric_limits<int32_t>::max();
      } else {
        --bmax;
      }
      const uint32_t metBehind = odd ? 0 : static_cast<uint32_t>(fmax - fmin + 1);
      for (int32_t d = bmax; d >= bmin; d -= 2) {
        int32_t x = bd[d - 1] < bd[d + 1] ? bd[d - 1] : bd[d + 1] - 1;
        for (const int32_t end = std::max(box.xlo, box.ylo + d); x > end && a_[x - 1] == b_[x - 1 - d];) --x;
        bd[d] = x;
        if (static_cast<uint32_t>(d - fmin) < metBehind && x <= fd[d]) {
          split = {{x, x - d}, 2 * round};
          return SearchEnd::found;
        }
      }
    }
  }

 private:
  const Element* a_;
  const Element* b_;
  const AbortFlag* abort_;
  std::vector<int32_t> furthest_;  // both searches' furthest x on every diagonal
};

}  // namespace merivane
