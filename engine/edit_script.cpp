#include "engine/edit_script.h"

#include <algorithm>
#include <limits>
#include <new>

namespace merivane {
namespace {

/// A rectangle of the edit graph: left elements [xlo, xhi) against right elements [ylo, yhi).
struct Box {
  int32_t xlo, ylo, xhi, yhi;
};

struct Point {
  int32_t x, y;
};

template <typename Element>
class Search {
 public:
  Search(std::span<const Element> left, std::span<const Element> right, const AbortFlag* abort,
         EditScript& script)
      : a_(left.data()),
        b_(right.data()),
        changedA_(script.changed[0].data()),
        changedB_(script.changed[1].data()),
        abort_(abort) {}

  void run(Box box) {
    if (pollAbort()) return;
    trim(box);
    if (box.xlo == box.xhi || box.ylo == box.yhi) {
      mark(box);
      return;
    }
    const size_t diagonals =
        static_cast<size_t>(box.xhi - box.xlo) + static_cast<size_t>(box.yhi - box.ylo) + 3;
    furthest_.resize(2 * diagonals);
    // A diagonal k = x - y runs from xlo - yhi to xhi - ylo, with one guard cell on each side.
    const ptrdiff_t origin = static_cast<ptrdiff_t>(box.yhi) - box.xlo + 1;
    forward_ = furthest_.data() + origin;
    backward_ = furthest_.data() + static_cast<ptrdiff_t>(diagonals) + origin;
    divide(box);
  }

  bool aborted() const { return aborted_; }

 private:
  bool pollAbort() {
    if (abort_ != nullptr && abort_->isRaised()) aborted_ = true;
    return aborted_;
  }

  void trim(Box& box) const {
    while (box.xlo < box.xhi && box.ylo < box.yhi && a_[box.xlo] == b_[box.ylo]) ++box.xlo, ++box.ylo;
    while (box.xlo < box.xhi && box.ylo < box.yhi && a_[box.xhi - 1] == b_[box.yhi - 1]) --box.xhi, --box.yhi;
  }

  void mark(const Box& box) const {
    std::fill(changedA_ + box.xlo, changedA_ + box.xhi, uint8_t{1});
    std::fill(changedB_ + box.ylo, changedB_ + box.yhi, uint8_t{1});
  }

  /// Recurses on the part before the split and goes on with the part behind it. A split halves the number
  /// of edits, so the recursion is no deeper than the logarithm of it.
  void divide(Box box) {
    while (!pollAbort()) {
      trim(box);
      if (box.xlo == box.xhi || box.ylo == box.yhi) {
        mark(box);
        return;
      }
      const Point split = middleSnake(box);
      if (aborted_) return;
      divide({box.xlo, box.ylo, split.x, split.y});
      box = {split.x, split.y, box.xhi, box.yhi};
    }
  }

  Point middleSnake(const Box& box) {
    int32_t* const fd = forward_;
    int32_t* const bd = backward_;
    const int32_t dmin = box.xlo - box.yhi, dmax = box.xhi - box.ylo;
    const int32_t fmid = box.xlo - box.ylo, bmid = box.xhi - box.yhi;
    const bool odd = ((fmid - bmid) & 1) != 0;
    int32_t fmin = fmid, fmax = fmid;
    int32_t bmin = bmid, bmax = bmid;
    fd[fmid] = box.xlo;
    bd[bmid] = box.xhi;
    while (!pollAbort()) {
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
      for (int32_t d = fmax; d >= fmin; d -= 2) {
        int32_t x = fd[d - 1] < fd[d + 1] ? fd[d + 1] : fd[d - 1] + 1;
        int32_t y = x - d;
        while (x < box.xhi && y < box.yhi && a_[x] == b_[y]) ++x, ++y;
        fd[d] = x;
        if (odd && bmin <= d && d <= bmax && bd[d] <= x) return {x, y};
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
      for (int32_t d = bmax; d >= bmin; d -= 2) {
        int32_t x = bd[d - 1] < bd[d + 1] ? bd[d - 1] : bd[d + 1] - 1;
        int32_t y = x - d;
        while (x > box.xlo && y > box.ylo && a_[x - 1] == b_[y - 1]) --x, --y;
        bd[d] = x;
        if (!odd && fmin <= d && d <= fmax && x <= fd[d]) return {x, y};
      }
    }
    return {box.xlo, box.ylo};
  }

  const Element* a_;
  const Element* b_;
  uint8_t* changedA_;
  uint8_t* changedB_;
  const AbortFlag* abort_;
  bool aborted_ = false;
  std::vector<int32_t> furthest_;  // both searches' furthest x on every diagonal
  int32_t* forward_ = nullptr;
  int32_t* backward_ = nullptr;
};

}  // namespace

template <typename Element>
bool findEditScript(std::span<const Element> left, std::span<const Element> right, const AbortFlag* abort,
                    EditScript& script) {
  if (uint64_t{left.size()} + right.size() > std::numeric_limits<int32_t>::max() - 3) throw std::bad_alloc();
  script.changed[0].assign(left.size() + 1, 0);
  script.changed[1].assign(right.size() + 1, 0);
  Search<Element> search(left, right, abort, script);
  search.run({0, 0, static_cast<int32_t>(left.size()), static_cast<int32_t>(right.size())});
  return !search.aborted();
}

template bool findEditScript(std::span<const uint32_t>, std::span<const uint32_t>, const AbortFlag*,
                             EditScript&);
template bool findEditScript(std::span<const char>, std::span<const char>, const AbortFlag*, EditScript&);

}  // namespace merivane
