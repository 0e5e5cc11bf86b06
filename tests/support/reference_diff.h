#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace merivane {

/// The search for the middle snake in its plainest form, the judge of the engine's own: whatever that does
/// to be quick, its flags are these. Every access is checked.
template <typename Element>
class ReferenceDiff {
 public:
  ReferenceDiff(std::span<const Element> left, std::span<const Element> right)
      : a_(left.begin(), left.end()), b_(right.begin(), right.end()) {
    const int n = static_cast<int>(a_.size()), m = static_cast<int>(b_.size());
    changed[0].assign(a_.size() + 1, 0);
    changed[1].assign(b_.size() + 1, 0);
    origin_ = m + 1;
    forward_.resize(a_.size() + b_.size() + 3);
    backward_ = forward_;
    compare(0, 0, n, m);
  }

  std::vector<uint8_t> changed[2];

 private:
  void compare(int xlo, int ylo, int xhi, int yhi) {
    while (xlo < xhi && ylo < yhi && a(xlo) == b(ylo)) ++xlo, ++ylo;
    while (xlo < xhi && ylo < yhi && a(xhi - 1) == b(yhi - 1)) --xhi, --yhi;
    if (xlo == xhi || ylo == yhi) {
      for (int x = xlo; x < xhi; ++x) changed[0].at(x) = 1;
      for (int y = ylo; y < yhi; ++y) changed[1].at(y) = 1;
      return;
    }
    const auto [x, y] = middleSnake(xlo, ylo, xhi, yhi);
    compare(xlo, ylo, x, y);
    compare(x, y, xhi, yhi);
  }

  std::pair<int, int> middleSnake(int xlo, int ylo, int xhi, int yhi) {
    const int dmin = xlo - yhi, dmax = xhi - ylo;
    const int fmid = xlo - ylo, bmid = xhi - yhi;
    const bool odd = (fmid - bmid) % 2 != 0;
    int fmin = fmid, fmax = fmid, bmin = bmid, bmax = bmid;
    std::fill(forward_.begin(), forward_.end(), -1);
    std::fill(backward_.begin(), backward_.end(), INT_MAX);
    fd(fmid) = xlo;
    bd(bmid) = xhi;
    for (;;) {
      fmin += fmin > dmin ? -1 : 1;
      fmax += fmax < dmax ? 1 : -1;
      for (int d = fmax; d >= fmin; d -= 2) {
        int x = fd(d - 1) < fd(d + 1) ? fd(d + 1) : fd(d - 1) + 1;
        while (x < xhi && x - d < yhi && a(x) == b(x - d)) ++x;
        fd(d) = x;
        if (odd && bmin <= d && d <= bmax && bd(d) <= x) return {x, x - d};
      }
      bmin += bmin > dmin ? -1 : 1;
      bmax += bmax < dmax ? 1 : -1;
      for (int d = bmax; d >= bmin; d -= 2) {
        int x = bd(d - 1) < bd(d + 1) ? bd(d - 1) : bd(d + 1) - 1;
        while (x > xlo && x - d > ylo && a(x - 1) == b(x - d - 1)) --x;
        bd(d) = x;
        if (!odd && fmin <= d && d <= fmax && x <= fd(d)) return {x, x - d};
      }
    }
  }

  Element a(int x) const { return a_.at(x); }
  Element b(int y) const { return b_.at(y); }
  int& fd(int diagonal) { return forward_.at(diagonal + origin_); }
  int& bd(int diagonal) { return backward_.at(diagonal + origin_); }

  const std::vector<Element> a_, b_;
  std::vector<int> forward_, backward_;
  int origin_;
};

}  // namespace merivane
