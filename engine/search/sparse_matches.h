#pragma once

#include "base/abort_flag.h"
#include "engine/search/box.h"
#include "engine/search/matched_box.h"

namespace merivane {

/// Finds the split of a box from its matches alone: the way where most elements are rare. Every match gets
/// its rank, the length of the longest chain of matches that ends with it, by one binary search (J. W. Hunt
/// and T. G. Szymanski, "A Fast Algorithm for Computing Longest Common Subsequences", CACM 20, 1977), from
/// the start and from the end. Matches of neighbouring ranks that lie on longest chains enclose the points at
/// which half the edits are done. Sets `matchedEdits` to the edits of matched elements in the box's shortest
/// script.
///
/// Time: O(matches * log(matched elements)). Memory: 28 bytes per match. Returns false when aborted. Throws
/// std::bad_alloc.
bool splitBySparseMatches(const MatchedBox& box, const AbortFlag* abort, int32_t& matchedEdits, Point& split);

}  // namespace merivane
