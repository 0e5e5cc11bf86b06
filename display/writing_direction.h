#pragma once

#include <cstdint>
#include <vector>

#include "display/characters.h"

namespace merivane {

/// Characters of a row that show one after the other, from left to right or from right to left.
struct DirectionRun {
  uint32_t begin;  // in bytes, at boundaries
  uint32_t end;
  bool rightToLeft;
  bool operator==(const DirectionRun&) const = default;
};

/// The runs of a row in the order in which they show from its left; empty when all goes from left to right,
/// as nearly every row does. That is the Unicode bidirectional algorithm (Unicode Standard Annex 9) for a row
/// that begins at the left, without pairs of brackets and without the characters that embed or isolate: these
/// shall not make a text show as another one. A tab starts anew at the left.
std::vector<DirectionRun> directionRuns(const RowCharacters& row);

}  // namespace merivane
