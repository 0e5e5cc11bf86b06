#include "mergeview/differences.h"

#include <algorithm>

namespace merivane {
namespace {

bool differs(const DiffModel& model, uint32_t row) { return model.status(row) != RowStatus::same; }

/// The first row of a range that differs, or its end.
uint32_t firstDiffering(const DiffModel& model, RowRange range) {
  uint32_t row = range.begin;
  while (row < range.end && !differs(model, row)) ++row;
  return row;
}

/// The row behind the last one of a range that differs, or its begin.
uint32_t lastDifferingEnd(const DiffModel& model, RowRange range) {
  uint32_t end = range.end;
  while (end > range.begin && !differs(model, end - 1)) --end;
  return end;
}

uint32_t blockBegin(const DiffModel& model, uint32_t row) {
  uint32_t begin = row;
  while (begin > 0 && model.status(begin - 1) == model.status(row)) --begin;
  return begin;
}

uint32_t blockEnd(const DiffModel& model, uint32_t row) {
  uint32_t end = row + 1;
  while (end < model.rowCount() && model.status(end) == model.status(row)) ++end;
  return end;
}

std::optional<RowRange> own(const DiffModel& model, uint32_t row) {
  if (!differs(model, row)) return std::nullopt;
  return model.blockAround(row);
}

}  // namespace

// Each looks at its own block on the one side it searches, so that stepping through all differences looks at
// every row once.

std::optional<RowRange> previousDifference(const DiffModel& model, uint32_t row, bool wrap) {
  if (const uint32_t end = lastDifferingEnd(model, {0, blockBegin(model, row)}); end > 0) {
    return model.blockAround(end - 1);
  }
  if (wrap) {
    const uint32_t last = blockEnd(model, row) - 1;
    const uint32_t end = lastDifferingEnd(model, {last, model.rowCount()});
    if (end > last) return model.blockAround(end - 1);
  }
  return own(model, row);
}

std::optional<RowRange> nextDifference(const DiffModel& model, uint32_t row, bool wrap) {
  const uint32_t rows = model.rowCount();
  if (const uint32_t next = firstDiffering(model, {blockEnd(model, row), rows}); next < rows) {
    return model.blockAround(next);
  }
  if (wrap) {
    const uint32_t begin = blockBegin(model, row);
    const uint32_t next = firstDiffering(model, {0, begin});
    if (next < begin) return model.blockAround(next);
  }
  return own(model, row);
}

std::optional<RowRange> nearestDifference(const DiffModel& model, uint32_t row) {
  if (differs(model, row)) return model.blockAround(row);
  const uint32_t previousEnd = lastDifferingEnd(model, {0, row});
  const uint32_t next = firstDiffering(model, {row, model.rowCount()});
  const bool hasPrevious = previousEnd > 0;
  const bool hasNext = next < model.rowCount();
  if (!hasPrevious && !hasNext) return std::nullopt;
  if (hasPrevious && (!hasNext || row - (previousEnd - 1) <= next - row))
    return model.blockAround(previousEnd - 1);
  return model.blockAround(next);
}

}  // namespace merivane
