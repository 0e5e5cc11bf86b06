#pragma once

#include <cstdint>

#include "base/abort_flag.h"
#include "engine/search/box.h"
#include "engine/search/matched_box.h"

namespace merivane {

/// Finds the split of a box from the BandedTable of its lengths: the way for dense matches. The table is
/// computed once and traced back from its end. There is room for a part of its rows only, so the rows of a
/// part are computed again when the trace comes to it, from check points kept the first time; a part that is
/// still too large has check points of its own (J. A. Grice, R. Hughey and D. Speck, "Reduced Space Sequence
/// Alignment", Computer Applications in the Biosciences 13, 1997).
///
/// Time: O(matched elements * (1 + edits of matched elements / 256)). Memory: 72 bytes per right element, 2
/// per level of check points, of which there are at most 8, and 1 MB. Returns false when aborted. Throws
/// std::bad_alloc.
///
/// `matchedEdits`: the edits of matched elements in the box's shortest script; if it is kUnknown, it is found
/// and set.
bool splitByBandedTable(const MatchedBox& box, int32_t& matchedEdits, const AbortFlag* abort, Point& split);

}  // namespace merivane
