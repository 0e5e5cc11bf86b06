#include "engine/search/sparse_matches.h"

#include <algorithm>
#include <vector>

namespace merivane {
namespace {

struct Match {
  int32_t x, y;  // in the box
};

/// Lists all matches by ascending x, and by descending y where x is the same. Returns false when aborted.
bool listMatches(const MatchedBox& box, const AbortFlag* abort, std::vector<Match>& matches) {
  const uint32_t* const classes[2] = {box.classes[0].data(), box.classes[1].data()};
  std::vector<uint32_t> starts(box.classCount + 1, 0);
  std::vector<int32_t> occurrences(box.classes[1].size());
  bool done = forEach(0, box.matched(1), abort, [&](int32_t j) { ++starts[classes[1][j] + 1]; });
  done = done && forEach(0u, box.classCount, abort, [&](uint32_t c) { starts[c + 1] += starts[c]; });
  std::vector<uint32_t> next(starts.begin(), starts.end() - 1);
  done = done && forEach(0, box.matched(1), abort,
                         [&](int32_t j) { occurrences[next[classes[1][j]]++] = box.high(1, j); });
  matches.reserve(static_cast<size_t>(box.matches));
  return done && forEach(0, box.matched(0), abort, [&](int32_t i) {
           const uint32_t c = classes[0][i];
           for (uint32_t at = starts[c + 1]; at > starts[c]; --at)
             matches.push_back({box.high(0, i), occurrences[at - 1]});
         });
}

/// Finds for each match the length of the longest chain that ends with it. The matches of a chain ascend in
/// both x and y. In the order of `matches` whatever may follow a match in a chain comes after it, and no two
/// matches of one x are in order for a chain. With `Mirror` the box is read from its end. Returns false when
/// aborted.
template <bool Mirror>
bool rankMatches(const std::vector<Match>& matches, const AbortFlag* abort, std::vector<int32_t>& ranks,
                 int32_t& longest) {
  std::vector<int32_t> ends;  // at r: the min y that a chain of length r + 1 found so far ends with
  ranks.resize(matches.size());
  const size_t count = matches.size();
  for (size_t n = 0; n < count; ++n) {
    if ((n & 0xFFFF) == 0 && isRaised(abort)) return false;
    const size_t at = Mirror ? count - 1 - n : n;
    const int32_t y = Mirror ? -matches[at].y : matches[at].y;
    const auto place = std::lower_bound(ends.begin(), ends.end(), y);
    ranks[at] = static_cast<int32_t>(place - ends.begin()) + 1;
    if (place == ends.end()) {
      ends.push_back(y);
    } else {
      *place = y;
    }
  }
  longest = static_cast<int32_t>(ends.size());
  return true;
}

/// Ranges of x, ascending at both ends.
struct Range {
  int32_t first, last;

  bool empty() const { return first > last; }
};

/// Returns the last x that lies in a range of each list; -1 if there is none.
int32_t lastInBoth(const std::vector<Range>& left, const std::vector<Range>& right) {
  auto l = left.rbegin();
  auto r = right.rbegin();
  while (l != left.rend() && r != right.rend()) {
    if (l->empty()) {
      ++l;
    } else if (r->empty()) {
      ++r;
    } else {
      const int32_t last = std::min(l->last, r->last);
      if (last >= l->first && last >= r->first) return last;
      if (l->last > last) {
        ++l;
      } else {
        ++r;
      }
    }
  }
  return -1;
}

}  // namespace

bool splitBySparseMatches(const MatchedBox& box, const AbortFlag* abort, int32_t& matchedEdits,
                          Point& split) {
  std::vector<Match> matches;
  if (!listMatches(box, abort, matches)) return false;
  std::vector<int32_t> fromStart, fromEnd;
  int32_t longest = 0;
  if (!rankMatches<false>(matches, abort, fromStart, longest)) return false;
  if (!rankMatches<true>(matches, abort, fromEnd, longest)) return false;

  // The matches of the longest chains, by rank; within a rank x ascends and y descends.
  const size_t ranks = static_cast<size_t>(longest) + 2;
  std::vector<uint32_t> starts(ranks + 1, 0);
  const auto onLongest = [&](size_t at) { return fromStart[at] + fromEnd[at] == longest + 1; };
  const bool counted = forEach<size_t>(0, matches.size(), abort, [&](size_t at) {
    if (onLongest(at)) ++starts[static_cast<size_t>(fromStart[at]) + 1];
  });
  if (!counted) return false;
  // The two corners of the box count as matches too: as rank 0 and as the rank after the last.
  starts[1] = 1;
  starts[ranks] = 1;
  for (size_t rank = 0; rank < ranks; ++rank) starts[rank + 1] += starts[rank];
  std::vector<Match> ranked(starts[ranks]);
  std::vector<uint32_t> next(starts.begin(), starts.end() - 1);
  ranked.front() = {-1, -1};
  ranked.back() = {box.sizes[0], box.sizes[1]};
  const bool sorted = forEach<size_t>(0, matches.size(), abort, [&](size_t at) {
    if (onLongest(at)) ranked[next[static_cast<size_t>(fromStart[at])]++] = matches[at];
  });
  if (!sorted) return false;

  matchedEdits = box.matched(0) + box.matched(1) - 2 * longest;
  const int32_t edits = matchedEdits + box.unmatched();
  const int32_t half = (edits + 1) / 2;
  split = {-1, -1};
  std::vector<Range> after, before;
  return forEach(0, longest + 1, abort, [&](int32_t rank) {
    // The points after a match of this rank and before one of the next that have half the edits before them.
    const int32_t sum = half + 2 * rank;
    after.clear();
    before.clear();
    const size_t r = static_cast<size_t>(rank);
    for (uint32_t at = starts[r]; at < starts[r + 1]; ++at) {
      after.push_back({ranked[at].x + 1, sum - ranked[at].y - 1});
    }
    for (uint32_t at = starts[r + 1]; at < starts[r + 2]; ++at) {
      before.push_back({sum - ranked[at].y, ranked[at].x});
    }
    const int32_t x = lastInBoth(after, before);
    if (x < 0) return;
    // On the same diagonal the further point counts.
    if (split.x < 0 || 2 * x - sum >= split.x - split.y) split = {x, sum - x};
  });
}

}  // namespace merivane
