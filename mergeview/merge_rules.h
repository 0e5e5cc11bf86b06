#pragma once

#include <optional>

#include "engine/diff_model.h"

namespace merivane {

/// Whether the caret row, or the difference it stands in, can be copied to a side: that side is writable and
/// the other one has lines that it lacks. No row, for a caret outside the rows, has none.
constexpr bool canCopyTo(int side, bool readOnly, std::optional<RowStatus> row) {
  return !readOnly && row && *row != RowStatus::same && fillerSide(*row) != 1 - side;
}

/// Whether the caret row, or its block, can be deleted on a side: that side is writable and has the lines.
constexpr bool canDeleteOn(int side, bool readOnly, std::optional<RowStatus> row) {
  return !readOnly && !(row && fillerSide(*row) == side);
}

}  // namespace merivane
