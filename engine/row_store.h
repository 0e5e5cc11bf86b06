#pragma once

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <utility>
#include <vector>

namespace merivane {

enum class RowStatus : uint8_t { same = 0, leftOnly = 1, rightOnly = 2, changed = 3 };

/// Returns the side that a row of this status has no line on; -1 if it has one on both.
constexpr int fillerSide(RowStatus status) {
  return status == RowStatus::leftOnly ? 1 : status == RowStatus::rightOnly ? 0 : -1;
}

constexpr uint8_t kDiffersMark = 0x80;

/// Which characters of a changed row's two lines differ: a byte per character of the line, its LF included,
/// with kDiffersMark set if it differs. One pointer wide, as most rows have none. Copies share the bytes, on
/// any thread; they are written before there is a copy.
class RowMarks {
 public:
  RowMarks() = default;
  RowMarks(const RowMarks& other) noexcept : block_(other.block_) {
    if (block_ != nullptr) ++block_->owners;
  }
  RowMarks(RowMarks&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  RowMarks& operator=(RowMarks other) noexcept {
    std::swap(block_, other.block_);
    return *this;
  }
  ~RowMarks() {
    if (block_ != nullptr && --block_->owners == 0) release(block_);
  }

  /// Returns marks, none of them set, for lines of these lengths; none() if memory runs out.
  static RowMarks allocate(uint32_t leftLength, uint32_t rightLength);

  bool none() const { return block_ == nullptr; }

  /// Whether they are those of some alignment of the lines, not of a shortest edit script.
  bool provisional() const { return block_ != nullptr && block_->provisional; }
  void setProvisional() { block_->provisional = true; }

  std::span<uint8_t> side(int side);
  std::span<const uint8_t> side(int side) const;

 private:
  struct Block {
    std::atomic<uint32_t> owners;
    bool provisional;
    uint32_t lengths[2];  // both sides' bytes follow
  };
  static void release(Block* block);

  Block* block_ = nullptr;
};

/// One aligned row. A one-sided row has an empty filler on the other side: its position there is where that
/// side's next line begins.
struct DiffRow {
  uint32_t position[2] = {0, 0};                       // start of the row's line in each side's text
  uint32_t linesBefore[2] = {0xFFFFFFFF, 0xFFFFFFFF};  // all ones until they are numbered
  RowMarks marks;                                      // changed rows only
  RowStatus status = RowStatus::same;
};

/// A half-open run of rows.
struct RowRange {
  uint32_t begin = 0;
  uint32_t end = 0;

  bool empty() const { return begin == end; }
  uint32_t size() const { return end - begin; }
  bool operator==(const RowRange&) const = default;
};

/// The rows of a comparison, kept so that edits near each other cost no more than the rows they touch: the
/// array has a gap where the last edit was, and the rows after the gap are stored without what edits before
/// them have added to their positions and line numbers. Reading a row stays a look into an array.
///
/// Growing throws std::bad_alloc and then changes nothing.
class RowStore {
 public:
  RowStore() = default;
  RowStore(RowStore&& other) noexcept { *this = std::move(other); }
  RowStore& operator=(RowStore&& other) noexcept;

  /// Makes room for this many rows and for a gap among them.
  void reserve(size_t rows) { rows_.reserve(rows + gapFor(rows)); }
  void append(DiffRow&& row) {
    if (gapSize_ != 0 || gapStart_ != rows_.size()) return appendAtGap(std::move(row));
    rows_.push_back(std::move(row));
    ++gapStart_;
  }

  uint32_t size() const { return static_cast<uint32_t>(rows_.size()) - gapSize_; }

  RowStatus status(uint32_t row) const { return rows_[index(row)].status; }
  const RowMarks& marks(uint32_t row) const { return rows_[index(row)].marks; }
  void setMarks(uint32_t row, RowMarks&& marks) { rows_[index(row)].marks = std::move(marks); }
  uint32_t position(int side, uint32_t row) const {
    return row < gapStart_ ? rows_[row].position[side]
                           : rows_[row + gapSize_].position[side] + afterGap_.position[side];
  }
  uint32_t linesBefore(int side, uint32_t row) const {
    return row < gapStart_ ? rows_[row].linesBefore[side]
                           : rows_[row + gapSize_].linesBefore[side] + afterGap_.lines[side];
  }
  void setLinesBefore(int side, uint32_t row, uint32_t lines) {
    rows_[index(row)].linesBefore[side] = row < gapStart_ ? lines : lines - afterGap_.lines[side];
  }

  /// Adds to a side's positions, or lines, from `row` to the end. Sums wrap around, so that adding can
  /// subtract.
  void shiftPositions(int side, uint32_t row, uint32_t delta);
  void shiftLines(int side, uint32_t row, uint32_t delta);

  /// Puts the rows `taken` of `replacement` in the place of `range`, and returns those that stood there.
  RowStore replace(RowRange range, RowStore&& replacement, RowRange taken);

 private:
  /// What is to be added to what the rows after the gap hold.
  struct Shift {
    uint32_t position[2] = {0, 0};
    uint32_t lines[2] = {0, 0};
    bool operator==(const Shift&) const = default;
  };

  /// Returns how large a gap is made among so many rows: a share of them, so that a run of insertions moves
  /// every row at most a fixed number of times.
  static size_t gapFor(size_t rows) { return rows / 16 + 64; }

  uint32_t index(uint32_t row) const { return row < gapStart_ ? row : row + gapSize_; }
  void appendAtGap(DiffRow&& row);
  void moveGap(uint32_t row);
  void growGap(uint32_t size);

  std::vector<DiffRow> rows_;
  uint32_t gapStart_ = 0;
  uint32_t gapSize_ = 0;
  Shift afterGap_;
};

}  // namespace merivane
