#pragma once

#include <string>
#include <vector>

#include "display/characters.h"

namespace merivane {

/// Walks through a row of any bytes, which lie in two pieces from `split` on, and tells what is wrong with
/// its characters; empty when nothing is.
inline std::string characterFault(std::string_view row, size_t split, bool utf8) {
  const RowCharacters characters(SplitText(row.substr(0, split), row.substr(split)), utf8);
  const auto fault = [](const char* what, uint32_t at) { return what + (" at " + std::to_string(at)); };
  std::vector<uint32_t> boundaries = {0};
  while (boundaries.back() < row.size()) {
    const uint32_t from = boundaries.back();
    const Character character = characters.at(from);
    const uint32_t to = from + character.length;
    if (character.length == 0 || to > row.size()) return fault("a wrong length", from);
    if (character.columns < 1 || character.columns > 2) return fault("wrong columns", from);
    const bool ascii = static_cast<uint8_t>(row[from]) < 0x80;
    if (ascii && character.base != static_cast<uint8_t>(row[from]))
      return fault("another ASCII character", from);
    if ((!utf8 || character.base == kNoCodePoint) && character.length != 1)
      return fault("not one byte", from);
    if (characters.next(from) != to || characters.previous(to) != from) return fault("another step", from);
    for (uint32_t inside = from + 1; inside < to; ++inside) {
      if (characters.isBoundary(inside) || characters.begin(inside) != from || characters.end(inside) != to)
        return fault("a boundary inside a character", inside);
      if (static_cast<uint8_t>(row[inside]) < 0x80) return fault("ASCII inside a character", inside);
    }
    boundaries.push_back(to);
    if (!characters.isBoundary(to)) return fault("no boundary", to);
  }
  return {};
}

}  // namespace merivane
