#pragma once

#include <cstdint>
#include <string>

#include "base/abort_flag.h"
#include "engine/row_store.h"

namespace merivane {

constexpr uint32_t kNoLine = 0xFFFFFFFF;

/// The result of a comparison: its aligned rows in order, and how many of them differ. Positions never
/// decrease from row to row. Growing throws std::bad_alloc and then changes nothing.
///
/// Reading a row takes the same time however many there are. An edit costs the rows it touches and those
/// between it and the previous edit; counts and line numbers follow it without a look at the others.
class DiffModel {
 public:
  DiffModel() = default;
  DiffModel(DiffModel&&) noexcept = default;
  DiffModel& operator=(DiffModel&&) noexcept = default;

  /// Makes room for this many rows at once.
  void reserve(size_t rows) { rows_.reserve(rows); }
  void addRow(RowStatus status, uint32_t leftPosition, uint32_t rightPosition, RowMarks marks = {});
  void clear();

  uint32_t rowCount() const { return rows_.size(); }
  RowStatus status(uint32_t row) const { return rows_.status(row); }
  uint32_t position(int side, uint32_t row) const { return rows_.position(side, row); }

  /// Returns the zero-based line number; kNoLine on a filler.
  uint32_t lineNumber(int side, uint32_t row) const {
    return fillerSide(status(row)) == side ? kNoLine : rows_.linesBefore(side, row);
  }
  const RowMarks& marks(uint32_t row) const { return rows_.marks(row); }
  void setMarks(uint32_t row, RowMarks marks);

  /// The number of rows with provisional marks, which only edits put there.
  uint32_t provisionalRows() const { return provisionalRows_; }

  /// Returns where the line of `row` ends on a side, after its line end: the next row's position, or
  /// `textSize` on the last row.
  uint32_t endPosition(int side, uint32_t row, uint32_t textSize) const {
    return row + 1 < rowCount() ? position(side, row + 1) : textSize;
  }

  /// The number of maximal runs of rows that share one status other than same.
  uint32_t differenceBlocks() const { return differenceBlocks_; }
  uint32_t differingRows() const { return differingRows_; }

  /// Returns the maximal run of rows around `row` that share its status, also if that is same.
  RowRange blockAround(uint32_t row) const;

  /// Returns the row whose line a position of a side lies in: the last row that does not start after it; -1
  /// if there are no rows.
  int64_t rowAtPosition(int side, uint32_t position) const;

  /// Returns the first row that starts at the position; if none does, as rowAtPosition().
  int64_t rowAtPositionFromTop(int side, uint32_t position) const;

  /// Fills in the line numbers of all rows. Returns false, with some not filled in, when aborted.
  bool numberLines(const AbortFlag* abort = nullptr);

  /// Fills in the two counts. Returns as numberLines().
  bool countDifferences(const AbortFlag* abort = nullptr);

  /// Adds `delta` to a side's positions from `row` to the end.
  void shiftPositions(int side, uint32_t row, int64_t delta);

  /// Puts the rows `taken` of `replacement` in the place of `range`, and returns those that stood there. Line
  /// numbers and counts, once filled in, stay right; those of the returned rows mean nothing.
  DiffModel replaceRows(RowRange range, DiffModel&& replacement, RowRange taken);

 private:
  uint32_t firstRowWhere(auto predicate) const;
  bool forEachRange(const AbortFlag* abort, auto visit) const;
  uint32_t linesBefore(int side, uint32_t row) const;
  void numberLines(RowRange range, uint32_t (&lines)[2]);
  uint32_t blockStarts(RowRange range) const;
  uint32_t differing(RowRange range) const;
  uint32_t provisional(RowRange range) const;

  RowStore rows_;
  uint32_t differenceBlocks_ = 0;
  uint32_t differingRows_ = 0;
  uint32_t provisionalRows_ = 0;
};

/// Returns "Diffs: 3, Lines: 7", or "No differences".
std::string summaryText(const DiffModel& model);

}  // namespace merivane
