#pragma once

#include <cstdint>

#include "base/abort_flag.h"
#include "engine/search/box.h"
#include "engine/search/matched_box.h"

namespace merivane {

/// Finds the split of a box with `matchedEdits` > 0 edits of matched elements from how far each number of
/// them leads on every diagonal (E. W. Myers, "An O(ND) Difference Algorithm and Its Variations",
/// Algorithmica 1, 1986): the way for few such edits.
///
/// Time: matchedEdits * matchedEdits / 4 steps. Memory: 4 bytes per step. Returns false when aborted. Throws
/// std::bad_alloc.
bool splitByDiagonals(const MatchedBox& box, int32_t matchedEdits, const AbortFlag* abort, Point& split);

}  // namespace merivane
