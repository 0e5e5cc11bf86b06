#pragma once

#include "engine/abort_flag.h"
#include "engine/crossings.h"
#include "engine/matched_box.h"

namespace merivane {

/// Searches of a box with the BandedTable of its lengths: right where matches are dense. Both answer false
/// when aborted and throw std::bad_alloc.
///
/// Time: of the order of matched elements * (1 + edits of matched elements / 256).

/// The edits of matched elements in the box's shortest script.
bool countEditsBitParallel(const MatchedBox& box, const AbortFlag* abort, int32_t& matchedEdits);

/// The same as crossDiagonals(), save that crossings through which no shortest script leads may be missing.
/// `matchedEdits` are those of the whole box.
bool crossDiagonalsBitParallel(const MatchedBox& box, int32_t edits, int32_t matchedEdits,
                               const AbortFlag* abort, Crossings& crossings);

}  // namespace merivane
