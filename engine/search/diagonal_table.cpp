#include "engine/search/diagonal_table.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "engine/search/split_trace.h"

namespace merivane {
namespace {

/// For every number of edits of matched elements, the furthest i that so many lead to on each diagonal i - j
/// of the grid. Diagonals that take more deletions or insertions than the whole script has are left out: no
/// point of theirs lies on a shortest path.
class DiagonalTable {
 public:
  DiagonalTable(const MatchedBox& box, int32_t edits)
      : a_(box.classes[0].data()),
        b_(box.classes[1].data()),
        rows_(box.matched(0)),
        columns_(box.matched(1)),
        edits_(edits) {
    rounds_.reserve(static_cast<size_t>(edits) + 1);
    size_t cells = 0;
    for (int32_t round = 0; round <= edits; ++round) {
      const int32_t more = rows_ - columns_, left = edits - round;
      int32_t lowest = std::max(-round, more - left);
      int32_t highest = std::min(round, more + left);
      // Beyond the grid there are no points; the parity stays that of the round.
      if (lowest < -columns_) lowest = -columns_ + ((columns_ ^ round) & 1);
      if (highest > rows_) highest = rows_ - ((rows_ ^ round) & 1);
      rounds_.push_back({lowest, highest, cells + 1});
      cells += static_cast<size_t>((highest - lowest) / 2 + 3);
    }
    furthest_ = std::make_unique_for_overwrite<int32_t[]>(cells);
  }

  bool fill(const AbortFlag* abort) {
    for (int32_t round = 0; round <= edits_; ++round) {
      if (isRaised(abort)) return false;
      fillRound(round);
    }
    return true;
  }

  /// Returns whether so many edits lead to a grid point.
  bool leadTo(int32_t edits, int32_t i, int32_t j) const {
    if (edits < 0 || edits > edits_) return false;
    const Round& round = rounds_[static_cast<size_t>(edits)];
    const int32_t d = i - j;
    return d >= round.lowest && d <= round.highest && furthestOf(round)[(d - round.lowest) / 2] >= i;
  }

 private:
  struct Round {
    int32_t lowest, highest;  // diagonals; every second one between them has a cell
    size_t cells;             // where they begin; there is one more on either side
  };

  int32_t* furthestOf(const Round& round) { return furthest_.get() + round.cells; }
  const int32_t* furthestOf(const Round& round) const { return furthest_.get() + round.cells; }

  void fillRound(int32_t number) {
    const Round& round = rounds_[static_cast<size_t>(number)];
    int32_t* cell = furthestOf(round);
    cell[-1] = kNowhere;
    const int32_t* before = nullptr;  // the previous round's cell on the diagonal below this one's
    if (number > 0) {
      const Round& last = rounds_[static_cast<size_t>(number) - 1];
      before = furthestOf(last) + (round.lowest - 1 - last.lowest) / 2;
    }
    for (int32_t d = round.lowest; d <= round.highest; d += 2, ++cell) {
      int32_t i = 0;
      if (before != nullptr) {
        i = std::max(before[0] + 1, before[1]);
        ++before;
      }
      // A neighbour that has left the grid leads to its edge.
      const int32_t limit = std::min(rows_, columns_ + d);
      i = std::min(i, limit);
      if (i >= std::max(d, 0)) {
        while (i < limit && a_[i] == b_[i - d]) ++i;
      } else {
        i = kNowhere;
      }
      *cell = i;
    }
    *cell = kNowhere;
  }

  static constexpr int32_t kNowhere = -2;  // one edit further is not on the grid either

  const uint32_t* const a_;
  const uint32_t* const b_;
  const int32_t rows_, columns_;
  const int32_t edits_;
  std::vector<Round> rounds_;
  std::unique_ptr<int32_t[]> furthest_;
};

}  // namespace

bool splitByDiagonals(const MatchedBox& box, int32_t matchedEdits, const AbortFlag* abort, Point& split) {
  DiagonalTable table(box, matchedEdits);
  if (!table.fill(abort)) return false;
  const auto edits = [](int32_t i, int32_t j, int32_t length) { return i + j - 2 * length; };
  SplitTrace trace(box, matchedEdits + box.unmatched());
  for (;;) {
    const int32_t i = trace.row();
    int32_t j = trace.column();
    while (j > 0 && table.leadTo(edits(i, j - 1, trace.length()), i, j - 1)) --j;
    if (trace.insertFrom(j) || trace.leaveRow()) break;
  }
  trace.extend([&](int32_t i, int32_t j, int32_t length) { return table.leadTo(edits(i, j, length), i, j); });
  split = trace.at();
  return true;
}

}  // namespace merivane
