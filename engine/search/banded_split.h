#pragma once

#include <cstdint>

#include "base/abort_flag.h"
#include "engine/search/box.h"
#include "engine/search/matched_box.h"

namespace merivane {

/// The split of a box, from the BandedTable of its lengths: right where matches are dense. The table is gone
/// through once and traced back from its end. What is to be traced is kept a part at a time, and found again
/// from marks that are kept of the rows between; parts have marks of their own where even these would be
/// many.
///
/// Time: of the order of matched elements * (1 + edits of matched elements / 256). Memory: 72 bytes a right
/// element, 2 for each level of marks, of which there are at most 8, and 1 MB. False when aborted. Throws
/// std::bad_alloc.
///
/// `matchedEdits`: the edits of matched elements in the box's shortest script, or kUnknown if they are to be
/// found.
bool splitByBandedTable(const MatchedBox& box, int32_t& matchedEdits, const AbortFlag* abort, Point& split);

}  // namespace merivane
