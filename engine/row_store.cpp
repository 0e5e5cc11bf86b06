#include "engine/row_store.h"

#include <algorithm>
#include <new>

namespace merivane {

RowMarks RowMarks::allocate(uint32_t leftLength, uint32_t rightLength) {
  RowMarks marks;
  const uint64_t size = sizeof(Block) + uint64_t{leftLength} + rightLength;
  if (size > SIZE_MAX / 2) return marks;
  void* const zeroes = std::calloc(static_cast<size_t>(size), 1);
  if (zeroes != nullptr) marks.block_ = new (zeroes) Block{1, false, {leftLength, rightLength}};
  return marks;
}

void RowMarks::release(Block* block) {
  block->~Block();
  std::free(block);
}

std::span<uint8_t> RowMarks::side(int side) {
  if (none()) return {};
  auto* bytes = reinterpret_cast<uint8_t*>(block_ + 1);
  return {bytes + (side == 0 ? 0 : block_->lengths[0]), block_->lengths[side]};
}

std::span<const uint8_t> RowMarks::side(int side) const { return const_cast<RowMarks*>(this)->side(side); }

RowStore& RowStore::operator=(RowStore&& other) noexcept {
  rows_ = std::exchange(other.rows_, {});
  gapStart_ = std::exchange(other.gapStart_, 0);
  gapSize_ = std::exchange(other.gapSize_, 0);
  afterGap_ = std::exchange(other.afterGap_, {});
  return *this;
}

void RowStore::appendAtGap(DiffRow&& row) {
  moveGap(size());
  if (gapSize_ == 0) {
    rows_.push_back(std::move(row));
  } else {
    rows_[gapStart_] = std::move(row);
    --gapSize_;
  }
  ++gapStart_;
}

void RowStore::shiftPositions(int side, uint32_t row, uint32_t delta) {
  moveGap(row);
  afterGap_.position[side] += delta;
}

void RowStore::shiftLines(int side, uint32_t row, uint32_t delta) {
  moveGap(row);
  afterGap_.lines[side] += delta;
}

RowStore RowStore::replace(RowRange range, RowStore&& replacement, RowRange taken) {
  RowStore replaced;
  replaced.rows_.reserve(range.size());
  const uint32_t count = taken.size();
  const uint32_t room = gapSize_ + range.size();
  if (count > room) growGap(gapSize_ + count - room);
  moveGap(range.end);
  for (uint32_t row = range.begin; row < range.end; ++row) replaced.append(std::move(rows_[row]));
  gapStart_ = range.begin;
  gapSize_ += range.size();
  replacement.moveGap(taken.end);
  for (uint32_t row = taken.begin; row < taken.end; ++row)
    rows_[gapStart_++] = std::move(replacement.rows_[row]);
  gapSize_ -= count;
  replacement = {};
  return replaced;
}

void RowStore::moveGap(uint32_t row) {
  if (gapSize_ == 0 && afterGap_ == Shift()) {
    gapStart_ = row;
    return;
  }
  const auto cross = [this](uint32_t to, uint32_t from, uint32_t sign) {
    DiffRow& moved = rows_[to];
    if (gapSize_ != 0) moved = std::move(rows_[from]);
    for (const int side : {0, 1}) {
      moved.position[side] += sign * afterGap_.position[side];
      moved.linesBefore[side] += sign * afterGap_.lines[side];
    }
  };
  for (; gapStart_ < row; ++gapStart_) cross(gapStart_, gapStart_ + gapSize_, 1);
  while (gapStart_ > row) {
    --gapStart_;
    cross(gapStart_ + gapSize_, gapStart_, ~0u);
  }
}

/// Makes the gap at least this large.
void RowStore::growGap(uint32_t size) {
  const size_t rows = this->size();
  const size_t grown = rows + std::max<size_t>(size, gapFor(rows));
  rows_.reserve(grown);
  rows_.resize(grown);
  const size_t oldGapEnd = gapStart_ + gapSize_;
  for (size_t from = rows + gapSize_, to = grown; from > oldGapEnd;) rows_[--to] = std::move(rows_[--from]);
  gapSize_ = static_cast<uint32_t>(grown - rows);
}

}  // namespace merivane
