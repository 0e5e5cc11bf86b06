#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/bit_row.h"
#include "engine/matched_box.h"

namespace merivane {

/// The lengths of the longest common subsequences of all beginnings of a box's two sides, a row for each left
/// element, as rows of BitBlock.
///
/// Only a band of the table is kept up: the grid points behind at most so many edits, deletions and
/// insertions. All three only grow along a path, so a path to such a point never leaves the band, and the
/// lengths at the points within are right; those of others in the same blocks may be too small. (The idea is
/// E. Ukkonen's, "Algorithms for Approximate String Matching", Information and Control 64, 1985.)
///
/// Time: a row takes a step for each block of the band, or for each match in it where these are fewer.
/// Memory: at most 40 bytes a right element.
class BandedTable {
 public:
  struct Limits {
    int32_t edits;       // of all elements, up to the low corner
    int32_t deletions;   // of matched elements
    int32_t insertions;  // of matched elements
  };

  /// `box` must outlive this. Stands on row 0.
  BandedTable(const MatchedBox& box, const Limits& limits);

  /// Goes on to the next row. False when the band is empty there: no point of any further row is within.
  bool nextRow();

  int32_t row() const { return row_; }

  /// The blocks of the band in this row: [firstBlock, lastBlock).
  size_t firstBlock() const { return first_; }
  size_t lastBlock() const { return last_; }
  size_t blockCount() const { return blocks_; }

  const BitBlock& block(size_t block) const { return bits_[block]; }
  /// The length at a block's first column, or at the last column of the table for blockCount().
  int32_t length(size_t block) const { return lengths_[block]; }

  static int32_t column(size_t block) { return static_cast<int32_t>(block) * BitBlock::kColumns; }

  /// Whether a grid point of this row, with the length there, is within the limits.
  bool within(int32_t column, int32_t length) const {
    return row_ - length <= limits_.deletions && column - length <= limits_.insertions &&
           rowLow_ + box_.low(1, column) - 2 * length <= limits_.edits;
  }

 private:
  bool advanceByMatches(uint32_t matchClass);
  bool fitBand();
  bool isBehindLimits(size_t block) const;

  const MatchedBox& box_;
  const Limits limits_;
  const int32_t columns_;
  const size_t blocks_;
  int32_t row_ = 0;
  int32_t rowLow_ = 0;
  size_t first_ = 0, last_ = 0;
  std::vector<BitBlock> bits_;
  std::vector<int32_t> lengths_;
  std::vector<uint32_t> occurrences_;  // the columns of every class, ascending
  std::vector<uint32_t> begins_,
      ends_;                        // of the occurrences of each class; those left of the band are passed
  std::vector<uint32_t> matchRow_;  // of each class the row in matches_, if it has one
  std::vector<BitBlock> matches_;   // a bit for each column, of classes with many
};

}  // namespace merivane
