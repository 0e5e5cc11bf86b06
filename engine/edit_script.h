#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/abort_flag.h"

namespace merivane {

/// A shortest edit script of two sequences: one flag an element, 1 where it is deleted (left) or inserted
/// (right). The unflagged elements of both sides, in order, are the equal pairs.
struct EditScript {
  std::vector<uint8_t> changed[2];  // one longer than the sequence; the last flag is always 0
};

/// Finds the shortest edit script by divide and conquer on the middle snake, in linear space
/// (E. W. Myers, "An O(ND) Difference Algorithm and Its Variations", Algorithmica 1, 1986). Of several
/// shortest scripts it gives always the same one: the split is the first meeting of the two searches, on
/// the highest diagonal where the forward one finds it. There is no cost limit and no heuristic.
///
/// Time O((N + M) D), with D flagged elements; memory 8 bytes for each element that differs from the other
/// side's after the common start and end are taken off, besides the flags. Throws std::bad_alloc; a run of
/// 2^31 elements or more on both sides together is refused in the same way. A null flag never aborts.
/// False when the flag was raised; the script then means nothing.
template <typename Element>
bool findEditScript(std::span<const Element> left, std::span<const Element> right, const AbortFlag* abort,
                    EditScript& script);

extern template bool findEditScript(std::span<const uint32_t>, std::span<const uint32_t>, const AbortFlag*,
                                    EditScript&);
extern template bool findEditScript(std::span<const char>, std::span<const char>, const AbortFlag*,
                                    EditScript&);

}  // namespace merivane
