#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace merivane {

enum class RowStatus : uint8_t { same = 0, leftOnly = 1, rightOnly = 2, changed = 3 };

/// The side a row of this status has no line on; -1 when it has one on both.
constexpr int fillerSide(RowStatus status) {
  return status == RowStatus::leftOnly ? 1 : status == RowStatus::rightOnly ? 0 : -1;
}

constexpr uint32_t kNoLine = 0xFFFFFFFF;
constexpr uint8_t kDiffersMark = 0x80;

/// Which characters of a changed row's two lines differ: a byte a character of the line, its LF included,
/// with kDiffersMark set where it does. One pointer wide, as most rows have none.
class RowMarks {
 public:
  RowMarks() = default;

  /// Unset marks for lines of these lengths; none() when memory runs out.
  static RowMarks allocate(uint32_t leftLength, uint32_t rightLength);

  bool none() const { return block_ == nullptr; }
  std::span<uint8_t> side(int side);
  std::span<const uint8_t> side(int side) const;

 private:
  struct Free {
    void operator()(uint32_t* block) const;
  };
  std::unique_ptr<uint32_t, Free> block_;  // the two lengths, then the two sides' bytes
};

/// One aligned row. A one-sided row has an empty filler on the other side: its position there is where that
/// side's next line begins.
struct DiffRow {
  uint32_t position[2] = {0, 0};                // start of the row's line in each side's text
  uint32_t lineNumber[2] = {kNoLine, kNoLine};  // zero-based; kNoLine on a filler
  RowMarks marks;                               // changed rows only
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

/// The result of a comparison: its aligned rows in order, and how many of them differ. Positions never
/// decrease from row to row. Growing throws std::bad_alloc and then changes nothing.
class DiffModel {
 public:
  DiffModel() = default;
  DiffModel(DiffModel&&) noexcept = default;
  DiffModel& operator=(DiffModel&&) noexcept = default;

  /// Makes room for this many rows at once.
  void reserve(size_t rows) { rows_.reserve(rows); }
  void addRow(RowStatus status, uint32_t leftPosition, uint32_t rightPosition, RowMarks marks = {});
  void clear();

  uint32_t rowCount() const { return static_cast<uint32_t>(rows_.size()); }
  RowStatus status(uint32_t row) const { return rows_[row].status; }
  uint32_t position(int side, uint32_t row) const { return rows_[row].position[side]; }
  uint32_t lineNumber(int side, uint32_t row) const { return rows_[row].lineNumber[side]; }
  const RowMarks& marks(uint32_t row) const { return rows_[row].marks; }

  /// Where the line of `row` ends on a side, its line end included: the next row's position, or `textSize`
  /// behind the last row.
  uint32_t endPosition(int side, uint32_t row, uint32_t textSize) const {
    return row + 1 < rowCount() ? position(side, row + 1) : textSize;
  }

  /// Maximal runs of rows with one and the same status other than same.
  uint32_t differenceBlocks() const { return differenceBlocks_; }
  uint32_t differingRows() const { return differingRows_; }

  /// The maximal run of rows around `row` that share its status; an equal run is one too.
  RowRange blockAround(uint32_t row) const;

  /// The row whose line a position of a side lies in: the last row that does not start beyond it, -1
  /// without rows.
  int64_t rowAtPosition(int side, uint32_t position) const;

  /// The first row that starts at the position if there is one, else as rowAtPosition().
  int64_t rowAtPositionFromTop(int side, uint32_t position) const;

  /// Fills in the line numbers of all rows.
  void numberLines();

  /// Fills in the two counts.
  void countDifferences();

  /// Adds `delta` to a side's positions from `row` to the end.
  void shiftPositions(int side, uint32_t row, int64_t delta);

  /// Puts the rows of `replacement` in the place of `range`. Line numbers and counts stay to be redone.
  void replaceRows(RowRange range, DiffModel&& replacement);

 private:
  std::vector<DiffRow> rows_;
  uint32_t differenceBlocks_ = 0;
  uint32_t differingRows_ = 0;
};

/// "Diffs: 3, Lines: 7", or "No differences".
std::string summaryText(const DiffModel& model);

}  // namespace merivane
