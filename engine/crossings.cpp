#include "engine/crossings.h"

#include <algorithm>

namespace merivane {

Split splitAtCrossings(const MatchedBox& box, int32_t edits, const Crossings& fromStart,
                       const Crossings& fromEnd) {
  const int32_t matchedEdits = edits - box.unmatched();
  const int32_t before = (edits + 1) / 2;
  const bool odd = (edits & 1) != 0;
  const int32_t rows = box.matched(0), columns = box.matched(1);
  Split best{{-1, -1}, edits};
  for (int32_t diagonal = -columns; diagonal <= rows; ++diagonal) {
    const Crossing& start = fromStart[static_cast<size_t>(diagonal + columns)];
    // The reversed grid has the diagonal (rows - i) - (columns - j).
    const Crossing& end = fromEnd[static_cast<size_t>(rows - diagonal)];
    if (start.none() || end.none() || start.matchedEdits + end.matchedEdits != matchedEdits) continue;
    const int32_t first = std::max(start.first, rows - end.last);
    const int32_t last = std::min(start.last, rows - end.first);
    if (first > last) continue;
    const int32_t i = odd ? last : first;
    const int32_t j = i - diagonal;
    const int32_t sum = before + (i + j - start.matchedEdits);  // of x and y: an edit moves one, a match two
    const int32_t x = std::min(box.high(0, i), sum - box.low(1, j));
    const int32_t y = sum - x;
    const int32_t bestDiagonal = best.at.x - best.at.y;
    if (best.at.x < 0 || x - y > bestDiagonal || (x - y == bestDiagonal && (x > best.at.x) == odd))
      best.at = {x, y};
  }
  return best;
}

namespace {

/// The edits at the low and the high corner of the grid points of one diagonal that are behind
/// `matchedEdits`. Along the diagonal both only grow.
struct EditsAlong {
  const MatchedBox& box;
  int32_t diagonal;
  int32_t matchedEdits;

  int32_t low(int32_t i) const {
    const int32_t j = i - diagonal;
    return matchedEdits + box.low(0, i) - i + box.low(1, j) - j;
  }
  int32_t high(int32_t i) const {
    const int32_t j = i - diagonal;
    return matchedEdits + box.high(0, i) - i + box.high(1, j) - j;
  }
};

/// The first i in [from, to) for which `test` holds; it holds from some i on.
template <typename Test>
int32_t firstWhere(int32_t from, int32_t to, Test test) {
  while (from < to) {
    const int32_t middle = from + (to - from) / 2;
    if (test(middle)) {
      to = middle;
    } else {
      from = middle + 1;
    }
  }
  return from;
}

}  // namespace

bool crossDiagonals(const MatchedBox& box, int32_t edits, int32_t matchedEdits, const AbortFlag* abort,
                    Crossings& crossings) {
  const uint32_t* const a = box.classes[0].data();
  const uint32_t* const b = box.classes[1].data();
  const int32_t rows = box.matched(0), columns = box.matched(1);
  crossings.assign(static_cast<size_t>(rows) + static_cast<size_t>(columns) + 1, {});
  std::vector<int32_t> cells(crossings.size() + 2, -1);
  int32_t* const furthest = cells.data() + columns + 1;
  for (int32_t round = 0; round <= matchedEdits; ++round) {
    if (isRaised(abort)) return false;
    bool reached = false;
    // A diagonal on which there would be more deletions or insertions than in the whole script leads nowhere,
    // and one beyond the grid has no points; the parity stays that of the round.
    int32_t lowest = std::max(-round, rows - columns - (matchedEdits - round));
    int32_t highest = std::min(round, rows - columns + (matchedEdits - round));
    if (lowest < -columns) lowest = -columns + ((columns ^ round) & 1);
    if (highest > rows) highest = rows - ((rows ^ round) & 1);
    for (int32_t d = lowest; d <= highest; d += 2) {
      const int32_t begin = std::max(d, 0);
      const int32_t limit = std::min(rows, columns + d);
      const int32_t before = std::max(furthest[d], begin - 1);
      int32_t i = round == 0 ? 0 : std::max(furthest[d - 1] + 1, furthest[d + 1]);
      // A neighbour that has left the grid leads nowhere.
      if (i > limit) i = limit;
      if (i < begin) continue;
      while (i < limit && a[i] == b[i - d]) ++i;
      furthest[d] = i;
      if (before >= i) continue;
      const EditsAlong along{box, d, round};
      if (along.low(before + 1) > edits) continue;
      reached = true;
      if (along.high(i) < edits) continue;
      Crossing& crossing = crossings[static_cast<size_t>(d + columns)];
      crossing.first = firstWhere(before + 1, i, [&](int32_t at) { return along.high(at) >= edits; });
      crossing.last =
          firstWhere(crossing.first, i + 1, [&](int32_t at) { return along.low(at) > edits; }) - 1;
      crossing.matchedEdits = round;
    }
    // Every point with one edit more is behind a point of this round, and so behind more edits in all.
    if (!reached) break;
  }
  return true;
}

}  // namespace merivane
