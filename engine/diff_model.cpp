#include "engine/diff_model.h"

#include <algorithm>
#include <utility>

#include "base/message_format.h"

namespace merivane {

void DiffModel::addRow(RowStatus status, uint32_t leftPosition, uint32_t rightPosition, RowMarks marks) {
  DiffRow row;
  row.status = status;
  row.position[0] = leftPosition;
  row.position[1] = rightPosition;
  row.marks = std::move(marks);
  rows_.append(std::move(row));
}

void DiffModel::clear() { *this = {}; }

RowRange DiffModel::blockAround(uint32_t row) const {
  RowRange block{row, row + 1};
  while (block.begin > 0 && status(block.begin - 1) == status(row)) --block.begin;
  while (block.end < rowCount() && status(block.end) == status(row)) ++block.end;
  return block;
}

/// Returns the first row for which the predicate holds; it holds for all rows from some row on.
uint32_t DiffModel::firstRowWhere(auto predicate) const {
  uint32_t begin = 0, end = rowCount();
  while (begin < end) {
    const uint32_t middle = begin + (end - begin) / 2;
    if (predicate(middle)) {
      end = middle;
    } else {
      begin = middle + 1;
    }
  }
  return begin;
}

int64_t DiffModel::rowAtPosition(int side, uint32_t position) const {
  if (rowCount() == 0) return -1;
  const uint32_t after = firstRowWhere([&](uint32_t row) { return this->position(side, row) > position; });
  return std::max<int64_t>(int64_t{after} - 1, 0);
}

int64_t DiffModel::rowAtPositionFromTop(int side, uint32_t position) const {
  const uint32_t first = firstRowWhere([&](uint32_t row) { return this->position(side, row) >= position; });
  if (first < rowCount() && this->position(side, first) == position) return first;
  return rowAtPosition(side, position);
}

bool DiffModel::numberLines(const AbortFlag* abort) {
  uint32_t lines[2] = {0, 0};
  return forEachRange(abort, [&](RowRange range) { numberLines(range, lines); });
}

/// Numbers a range of rows that has `lines` before it, and moves `lines` on to its end.
void DiffModel::numberLines(RowRange range, uint32_t (&lines)[2]) {
  for (uint32_t row = range.begin; row < range.end; ++row) {
    for (const int side : {0, 1}) {
      rows_.setLinesBefore(side, row, lines[side]);
      if (fillerSide(status(row)) != side) ++lines[side];
    }
  }
}

bool DiffModel::countDifferences(const AbortFlag* abort) {
  differenceBlocks_ = differingRows_ = 0;
  return forEachRange(abort, [&](RowRange range) {
    differenceBlocks_ += blockStarts(range);
    differingRows_ += differing(range);
  });
}

/// Visits all rows in ranges, with a look at the flag before each. Returns false when aborted.
bool DiffModel::forEachRange(const AbortFlag* abort, auto visit) const {
  constexpr uint32_t atOnce = 1 << 16;
  for (uint32_t row = 0; row < rowCount(); row += atOnce) {
    if (isRaised(abort)) return false;
    visit(RowRange{row, row + std::min(rowCount() - row, atOnce)});
  }
  return true;
}

void DiffModel::shiftPositions(int side, uint32_t row, int64_t delta) {
  if (row < rowCount()) rows_.shiftPositions(side, row, static_cast<uint32_t>(delta));
}

void DiffModel::setMarks(uint32_t row, RowMarks marks) {
  const uint32_t before = provisional({row, row + 1});
  rows_.setMarks(row, std::move(marks));
  provisionalRows_ += provisional({row, row + 1}) - before;
}

DiffModel DiffModel::replaceRows(RowRange range, DiffModel&& replacement, RowRange taken) {
  const RowRange fresh{range.begin, range.begin + taken.size()};
  uint32_t lines[2] = {linesBefore(0, range.begin), linesBefore(1, range.begin)};
  const uint32_t oldLines[2] = {linesBefore(0, range.end), linesBefore(1, range.end)};
  // The row after the range may start a block where it did not, or no longer.
  const uint32_t oldBlocks = blockStarts({range.begin, std::min(range.end + 1, rowCount())});
  const uint32_t oldRows = differing(range), oldProvisional = provisional(range);

  DiffModel replaced;
  replaced.rows_ = rows_.replace(range, std::move(replacement.rows_), taken);
  replacement.clear();

  numberLines(fresh, lines);
  for (const int side : {0, 1}) rows_.shiftLines(side, fresh.end, lines[side] - oldLines[side]);
  differenceBlocks_ += blockStarts({fresh.begin, std::min(fresh.end + 1, rowCount())}) - oldBlocks;
  differingRows_ += differing(fresh) - oldRows;
  provisionalRows_ += provisional(fresh) - oldProvisional;
  return replaced;
}

/// Returns how many lines of a side come before a row; `row` may be the row count.
uint32_t DiffModel::linesBefore(int side, uint32_t row) const {
  if (row < rowCount()) return rows_.linesBefore(side, row);
  if (row == 0) return 0;
  return rows_.linesBefore(side, row - 1) + (fillerSide(status(row - 1)) != side ? 1 : 0);
}

uint32_t DiffModel::blockStarts(RowRange range) const {
  uint32_t starts = 0;
  RowStatus previous = range.begin > 0 ? status(range.begin - 1) : RowStatus::same;
  for (uint32_t row = range.begin; row < range.end; ++row) {
    if (status(row) != RowStatus::same && status(row) != previous) ++starts;
    previous = status(row);
  }
  return starts;
}

uint32_t DiffModel::differing(RowRange range) const {
  uint32_t rows = 0;
  for (uint32_t row = range.begin; row < range.end; ++row) rows += status(row) != RowStatus::same ? 1 : 0;
  return rows;
}

uint32_t DiffModel::provisional(RowRange range) const {
  uint32_t rows = 0;
  for (uint32_t row = range.begin; row < range.end; ++row) rows += marks(row).provisional() ? 1 : 0;
  return rows;
}

std::string summaryText(const DiffModel& model) {
  if (model.differenceBlocks() == 0) return text(TextId::noDifferences);
  return formatMessage(TextId::differenceCounts,
                       {int64_t{model.differenceBlocks()}, int64_t{model.differingRows()}});
}

}  // namespace merivane
