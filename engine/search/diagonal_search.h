#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "base/abort_flag.h"
#include "engine/search/box.h"
#include "engine/search/work_space.h"

namespace merivane {

/// The plain search: finds the split of a box diagonal by diagonal, from both ends at once (E. W. Myers, "An
/// O(ND) Difference Algorithm and Its Variations", Algorithmica 1, 1986). It defines which of several splits
/// is meant: that of the first round in which the two searches meet, and in it of the highest diagonal.
///
/// Time: D * D / 4 steps for a box with D edits, twice that where D is not known. Memory: 8 bytes per element
/// of the largest box so far.
template <typename Element>
class DiagonalSearch {
 public:
  DiagonalSearch(const Element* left, const Element* right, WorkSpace& space, const AbortFlag* abort)
      : a_(left), b_(right), space_(space), abort_(abort) {}

  /// `edits`: those of the box's shortest script, or kUnknown. If they are unknown, the search gives up after
  /// `budget` steps, or earlier if it is likely to need many times as many. The box is not empty and does not
  /// begin or end with equal elements. Throws std::bad_alloc.
  SearchEnd find(const Box& box, int32_t edits, int64_t budget, BoxSplit& split) {
    const size_t diagonals = static_cast<size_t>(box.size()) + 3;
    // The diagonals d = x - y are those from xlo - yhi to xhi - ylo, with a guard cell on each side.
    int32_t* const fd = space_.cells(2 * diagonals) + (ptrdiff_t{box.yhi} - box.xlo + 1);
    int32_t* const bd = fd + static_cast<ptrdiff_t>(diagonals);
    const int32_t dmin = box.xlo - box.yhi, dmax = box.xhi - box.ylo;
    const int32_t fmid = box.xlo - box.ylo, bmid = box.xhi - box.yhi;
    const bool odd = ((fmid - bmid) & 1) != 0;
    const bool known = edits != kUnknown;
    if (!known) edits = static_cast<int32_t>(box.size());
    int32_t fmin = fmid, fmax = fmid;
    int32_t bmin = bmid, bmax = bmid;
    int32_t nextLook = 32;
    fd[fmid] = box.xlo;
    bd[bmid] = box.xhi;
    for (int32_t round = 1;; ++round) {
      if (isRaised(abort_)) return SearchEnd::aborted;
      if (!known) {
        if (round == nextLook) {
          nextLook *= 2;
          if (stepsAtThisPace(box, fd, fmin, fmax, round) > kManyTimes * (budget + int64_t{round} * round))
            return SearchEnd::overBudget;
        }
        budget -= int64_t{fmax} - fmin + 2;
        if (budget < 0) return SearchEnd::overBudget;
      }
      // No shortest script passes a diagonal from which the edits left do not lead to the other end.
      const int32_t left = edits - round;
      if (fmin > std::max(dmin, bmid - left)) {
        fd[--fmin - 1] = -1;
      } else {
        ++fmin;
      }
      if (fmax < std::min(dmax, bmid + left)) {
        fd[++fmax + 1] = -1;
      } else {
        --fmax;
      }
      // The searches can meet only on diagonals that both have, and in rounds of the right parity.
      if (odd && (!known || 2 * round > edits)) {
        for (int32_t d = fmax; d >= fmin; d -= 2) {
          const int32_t x = goForward(box, fd, d);
          if (d >= bmin && d <= bmax && bd[d] <= x) {
            split = {{x, x - d}, 2 * round - 1};
            return SearchEnd::found;
          }
        }
      } else {
        for (int32_t d = fmax; d >= fmin; d -= 2) goForward(box, fd, d);
      }
      if (bmin > std::max(dmin, fmid - left)) {
        bd[--bmin - 1] = std::numeric_limits<int32_t>::max();
      } else {
        ++bmin;
      }
      if (bmax < std::min(dmax, fmid + left)) {
        bd[++bmax + 1] = std::numeric_limits<int32_t>::max();
      } else {
        --bmax;
      }
      if (!odd && (!known || 2 * round == edits)) {
        for (int32_t d = bmax; d >= bmin; d -= 2) {
          const int32_t x = goBackward(box, bd, d);
          if (d >= fmin && d <= fmax && x <= fd[d]) {
            split = {{x, x - d}, 2 * round};
            return SearchEnd::found;
          }
        }
      } else {
        for (int32_t d = bmax; d >= bmin; d -= 2) goBackward(box, bd, d);
      }
    }
  }

 private:
  static constexpr int64_t kManyTimes = 2;

  /// Estimates the steps of the whole search from how far it has come: each end has half the way to go.
  static int64_t stepsAtThisPace(const Box& box, const int32_t* fd, int32_t fmin, int32_t fmax,
                                 int32_t round) {
    int32_t furthest = 0;
    for (int32_t d = fmin; d <= fmax; d += 2)
      furthest = std::max(furthest, 2 * fd[d] - d - box.xlo - box.ylo);
    const int64_t rounds = round * (box.size() / 2) / std::max(furthest, 1);
    return rounds * rounds;
  }

  int32_t goForward(const Box& box, int32_t* fd, int32_t d) const {
    int32_t x = fd[d - 1] < fd[d + 1] ? fd[d + 1] : fd[d - 1] + 1;
    for (const int32_t end = std::min(box.xhi, box.yhi + d); x < end && a_[x] == b_[x - d];) ++x;
    return fd[d] = x;
  }

  int32_t goBackward(const Box& box, int32_t* bd, int32_t d) const {
    int32_t x = bd[d - 1] < bd[d + 1] ? bd[d - 1] : bd[d + 1] - 1;
    for (const int32_t end = std::max(box.xlo, box.ylo + d); x > end && a_[x - 1] == b_[x - 1 - d];) --x;
    return bd[d] = x;
  }

  const Element* a_;
  const Element* b_;
  WorkSpace& space_;  // both searches' furthest x on every diagonal
  const AbortFlag* abort_;
};

}  // namespace merivane
