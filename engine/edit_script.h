#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/abort_flag.h"
#include "engine/search/box.h"
#include "engine/search/work_space.h"

namespace merivane {

/// A shortest edit script of two sequences: one flag an element, 1 where it is deleted (left) or inserted
/// (right). The unflagged elements of both sides, in order, are the equal pairs.
struct EditScript {
  std::vector<uint8_t> changed[2];  // one longer than the sequence; the last flag is always 0
  WorkSpace space;                  // of the search, kept for the next one
};

/// When findEditScript() takes which way through a box; none of it changes the script. The defaults are
/// fitted to measured times, in steps of the plain search.
struct SearchCosts {
  // What the plain search may take before anything else is thought of is the larger of these two.
  double leastPlainSteps = 1000;
  double plainStepsPerElement = 1;
  double unclassifiedFactor = 8;  // more as long as the other ways have not been made ready
  double perCell = 2;             // of a search diagonal by diagonal
  double perMatch = 20;           // of a sparse search, besides the logarithm
  double perRow = 20;             // of a search through the banded table,
  double perBlock = 2;            // and for each block of the row
};

/// Finds the shortest edit script by divide and conquer, in linear space. Of several shortest scripts it
/// gives always the same one: the one that the middle snakes of Myers' search lead to, see DiagonalSearch.
/// There is no cost limit and no heuristic; where that search would take long, the same splits are found in
/// another way, whichever costs least for the box at hand.
///
/// Large parts are searched side by side. Memory: at most 150 bytes an element and 4 MB. Throws
/// std::bad_alloc; 2^31 elements or more on both sides together are refused in the same way. `edits` may say
/// how many there are, where that is known. A null flag never aborts. False when the flag was raised; the
/// script then means nothing.
template <typename Element>
bool findEditScript(std::span<const Element> left, std::span<const Element> right, const AbortFlag* abort,
                    EditScript& script, const SearchCosts& costs = {}, int32_t edits = kUnknown);

extern template bool findEditScript(std::span<const uint32_t>, std::span<const uint32_t>, const AbortFlag*,
                                    EditScript&, const SearchCosts&, int32_t);
extern template bool findEditScript(std::span<const char>, std::span<const char>, const AbortFlag*,
                                    EditScript&, const SearchCosts&, int32_t);

}  // namespace merivane
