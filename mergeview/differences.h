#pragma once

#include <cstdint>
#include <optional>

#include "engine/diff_model.h"

namespace merivane {

/// The difference before, or behind, the block around a row; with `wrap` from the other end when there is
/// none. If the row's own block is all that is left, that; else none.
std::optional<RowRange> previousDifference(const DiffModel& model, uint32_t row, bool wrap);
std::optional<RowRange> nextDifference(const DiffModel& model, uint32_t row, bool wrap);

/// The difference that a row is in, else the nearer of those around it; of two as near the one before.
std::optional<RowRange> nearestDifference(const DiffModel& model, uint32_t row);

}  // namespace merivane
