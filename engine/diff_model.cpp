#include "engine/diff_model.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "base/message_format.h"

namespace merivane {

RowMarks RowMarks::allocate(uint32_t leftLength, uint32_t rightLength) {
  RowMarks marks;
  const uint64_t size = 2 * sizeof(uint32_t) + uint64_t{leftLength} + rightLength;
  if (size > SIZE_MAX / 2) return marks;
  auto* block = static_cast<uint32_t*>(std::calloc(static_cast<size_t>(size), 1));
  if (block == nullptr) return marks;
  block[0] = leftLength;
  block[1] = rightLength;
  marks.block_.reset(block);
  return marks;
}

void RowMarks::Free::operator()(uint32_t* block) const { std::free(block); }

std::span<uint8_t> RowMarks::side(int side) {
  if (none()) return {};
  auto* bytes = reinterpret_cast<uint8_t*>(block_.get() + 2);
  return {bytes + (side == 0 ? 0 : block_.get()[0]), block_.get()[side]};
}

std::span<const uint8_t> RowMarks::side(int side) const { return const_cast<RowMarks*>(this)->side(side); }

void DiffModel::addRow(RowStatus status, uint32_t leftPosition, uint32_t rightPosition, RowMarks marks) {
  DiffRow row;
  row.status = status;
  row.position[0] = leftPosition;
  row.position[1] = rightPosition;
  row.marks = std::move(marks);
  rows_.push_back(std::move(row));
}

void DiffModel::clear() {
  rows_ = std::vector<DiffRow>();
  differenceBlocks_ = differingRows_ = 0;
}

RowRange DiffModel::blockAround(uint32_t row) const {
  RowRange block{row, row + 1};
  while (block.begin > 0 && status(block.begin - 1) == status(row)) --block.begin;
  while (block.end < rowCount() && status(block.end) == status(row)) ++block.end;
  return block;
}

int64_t DiffModel::rowAtPosition(int side, uint32_t position) const {
  if (rows_.empty()) return -1;
  const auto beyond = std::partition_point(
      rows_.begin(), rows_.end(), [&](const DiffRow& row) { return row.position[side] <= position; });
  return std::max<int64_t>(beyond - rows_.begin() - 1, 0);
}

int64_t DiffModel::rowAtPositionFromTop(int side, uint32_t position) const {
  const auto first = std::partition_point(rows_.begin(), rows_.end(),
                                          [&](const DiffRow& row) { return row.position[side] < position; });
  if (first != rows_.end() && first->position[side] == position) return first - rows_.begin();
  return rowAtPosition(side, position);
}

void DiffModel::numberLines() {
  uint32_t next[2] = {0, 0};
  for (DiffRow& row : rows_) {
    for (const int side : {0, 1})
      row.lineNumber[side] = fillerSide(row.status) == side ? kNoLine : next[side]++;
  }
}

void DiffModel::countDifferences() {
  differenceBlocks_ = differingRows_ = 0;
  RowStatus previous = RowStatus::same;
  for (const DiffRow& row : rows_) {
    if (row.status != RowStatus::same) {
      ++differingRows_;
      if (row.status != previous) ++differenceBlocks_;
    }
    previous = row.status;
  }
}

void DiffModel::shiftPositions(int side, uint32_t row, int64_t delta) {
  for (size_t i = row; i < rows_.size(); ++i) {
    rows_[i].position[side] = static_cast<uint32_t>(rows_[i].position[side] + delta);
  }
}

void DiffModel::replaceRows(RowRange range, DiffModel&& replacement) {
  const size_t oldCount = range.size();
  const size_t newCount = replacement.rows_.size();
  const auto at = rows_.begin() + range.begin;
  if (newCount > oldCount) {
    rows_.insert(at + static_cast<ptrdiff_t>(oldCount),
                 std::make_move_iterator(replacement.rows_.begin() + static_cast<ptrdiff_t>(oldCount)),
                 std::make_move_iterator(replacement.rows_.end()));
  } else {
    rows_.erase(at + static_cast<ptrdiff_t>(newCount), at + static_cast<ptrdiff_t>(oldCount));
  }
  std::move(replacement.rows_.begin(),
            replacement.rows_.begin() + static_cast<ptrdiff_t>(std::min(oldCount, newCount)),
            rows_.begin() + range.begin);
  replacement.clear();
}

std::string summaryText(const DiffModel& model) {
  if (model.differenceBlocks() == 0) return text(TextId::noDifferences);
  return formatMessage(TextId::differenceCounts,
                       {int64_t{model.differenceBlocks()}, int64_t{model.differingRows()}});
}

}  // namespace merivane
