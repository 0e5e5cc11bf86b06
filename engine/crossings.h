#pragma once

#include <cstdint>
#include <vector>

#include "engine/abort_flag.h"
#include "engine/box.h"
#include "engine/matched_box.h"

namespace merivane {

/// Where a diagonal of the grid passes from fewer than a given number of edits, counted from the box's
/// start, to more: the grid points (i, j) with first <= i <= last whose rectangle has points at just that
/// number. All of them are behind the same number of matches and of edits of matched elements.
struct Crossing {
  int32_t first = 0;
  int32_t last = -1;
  int32_t matchedEdits = 0;

  bool none() const { return last < first; }
};

/// The crossings of all diagonals i - j of a grid, from -matched(1) to matched(0), in this order.
using Crossings = std::vector<Crossing>;

/// The split of a box with `edits` edits, from the crossings of (edits + 1) / 2 edits counted from its start
/// and of edits / 2 counted from its end, these in the coordinates of the reversed box.
///
/// The points of a shortest path that have the larger half of the edits behind them are where both agree; of
/// these the split is the one on the highest diagonal x - y, furthest along it if the edits are odd and
/// nearest if they are even: just the point at which the two searches of DiagonalSearch meet first.
Split splitAtCrossings(const MatchedBox& box, int32_t edits, const Crossings& fromStart,
                       const Crossings& fromEnd);

/// Finds crossings diagonal by diagonal, with the greedy forward search (E. W. Myers, "An O(ND) Difference
/// Algorithm and Its Variations", Algorithmica 1, 1986). `matchedEdits` are those of the whole box; crossings
/// through which no shortest script leads may be missing. Time: at most half the square of matchedEdits;
/// memory: 16 bytes a matched element. False when aborted. Throws std::bad_alloc.
bool crossDiagonals(const MatchedBox& box, int32_t edits, int32_t matchedEdits, const AbortFlag* abort,
                    Crossings& crossings);

}  // namespace merivane
