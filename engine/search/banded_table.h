#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/abort_flag.h"
#include "engine/search/bit_row.h"
#include "engine/search/matched_box.h"

namespace merivane {

/// The lengths of the longest common subsequences of all beginnings of a box's two sides, a row for each left
/// element, as rows of BitBlock; one row at a time.
///
/// Only a band of the table is kept up: the grid points behind at most so many edits of matched elements as a
/// script of the whole box would have. Deletions and insertions only grow along a path, so a path to such a
/// point never leaves the band, and the lengths at the points within are right; those of others in the same
/// blocks may be too small. (The idea is E. Ukkonen's, "Algorithms for Approximate String Matching",
/// Information and Control 64, 1985.)
///
/// Time: a row takes a step for each block of the band, or for each match in it where these are fewer.
/// Memory: at most 72 bytes a right element.
class BandedTable {
 public:
  /// Where a row's band is, and the lengths at its ends.
  struct Band {
    int32_t row = 0;
    size_t first = 0, last = 0;  // blocks: [first, last)
    int32_t low = 0;             // the length at the first block's first column
    int32_t high = 0;            // at the last column of the last block
  };

  /// `box` must outlive this. When the flag was raised meanwhile no row is to be gone to.
  BandedTable(const MatchedBox& box, const AbortFlag* abort);

  /// Goes to row 0, for scripts of at most `matchedEdits`.
  void start(int32_t matchedEdits);

  /// Goes on to the next row. False when no script within the limit leads there.
  bool nextRow();

  const Band& band() const { return band_; }
  const BitBlock* blocks() const { return bits_.data() + band_.first; }

  /// Goes to a row it has been on, given what band() and blocks() were there, and keeps from now on to a
  /// limit that is no higher than before.
  void goTo(const Band& band, const BitBlock* blocks, int32_t matchedEdits);

  /// The length at a grid point of this row, or less outside of the band.
  int32_t length(int32_t column) const;

  /// On the last row, the edits of the shortest script if they are within the limit, else more than that.
  int32_t matchedEdits() const { return band_.row + columns_ - 2 * band_.high; }

  static int32_t column(size_t block) { return static_cast<int32_t>(block) * BitBlock::kColumns; }

 private:
  void limitTo(int32_t matchedEdits);
  bool advance(uint32_t matchClass);
  void widen();
  void narrow();

  const MatchedBox& box_;
  const int32_t columns_;
  const size_t blocks_;
  int32_t deletions_, insertions_;  // the most of them
  Band band_;
  std::vector<BitBlock> bits_;
  std::vector<int32_t> occurrences_;  // the columns of every class, ascending
  std::vector<uint32_t> begins_;      // of the occurrences of each class, and of those behind the last
  std::vector<uint32_t> matchRow_;    // of each class the row in matches_, if it has one
  std::vector<BitBlock> matches_;     // a bit for each column, of classes with many
};

}  // namespace merivane
