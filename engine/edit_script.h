#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/abort_flag.h"
#include "engine/search/box.h"
#include "engine/search/work_space.h"

namespace merivane {

/// A shortest edit script of two sequences: a flag for each element, 1 if it is deleted (left) or inserted
/// (right). The unflagged elements of both sides, in order, are the equal pairs.
struct EditScript {
  std::vector<uint8_t> changed[2];  // one longer than the sequence; the last flag is always 0
  WorkSpace space;                  // kept for the next search
};

/// What findEditScript() expects the ways through a box to cost, in steps of the plain search; bench/fit fits
/// them to measured times. They decide which way is taken and never change the script.
struct SearchCosts {
  // The plain search is tried first if it takes no more steps than the larger of these two.
  double minPlainSteps = 1000;
  double plainStepsPerElement = 1;
  double unclassifiedFactor = 8;  // times as many before the elements are classified for the other ways
  double perCell = 2;             // of the table by diagonals
  double perMatch = 20;           // of the sparse search, besides the logarithm
  double perRow = 20;             // of the banded table,
  double perBlock = 2;            // and for each block of the row
};

/// Finds the shortest edit script by divide and conquer, in linear space. Of several shortest scripts it
/// always returns the same one: that of the splits which DiagonalSearch finds. There is no cost limit and no
/// heuristic; where that search would take long, the same splits are found in whichever other way costs less
/// for the box at hand.
///
/// Large parts are searched side by side. Memory: at most 150 bytes per element and 4 MB. Throws
/// std::bad_alloc, and std::length_error for sequences that have 2^31 elements or more together without what
/// is equal at their ends. `edits`: how many there are, or kUnknown. A null flag never aborts. Returns false
/// when the flag was raised; the script is then undefined.
template <typename Element>
bool findEditScript(std::span<const Element> left, std::span<const Element> right, const AbortFlag* abort,
                    EditScript& script, const SearchCosts& costs = {}, int32_t edits = kUnknown);

extern template bool findEditScript(std::span<const uint32_t>, std::span<const uint32_t>, const AbortFlag*,
                                    EditScript&, const SearchCosts&, int32_t);
extern template bool findEditScript(std::span<const char>, std::span<const char>, const AbortFlag*,
                                    EditScript&, const SearchCosts&, int32_t);

}  // namespace merivane
