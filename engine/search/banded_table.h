#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/abort_flag.h"
#include "engine/search/bit_row.h"
#include "engine/search/matched_box.h"

namespace merivane {

/// The lengths of the longest common subsequences of all prefixes of a box's two sides, a row for each left
/// element, as rows of BitBlock; one row at a time.
///
/// Only a band of the table is computed: the grid points that as many deletions and insertions of matched
/// elements lead to as a script of the whole box may have. Both only grow along a path, so a path to such a
/// point never leaves the band, and the lengths at the points within are right; those of other points in the
/// same blocks may be too small. (E. Ukkonen, "Algorithms for Approximate String Matching", Information and
/// Control 64, 1985.)
///
/// Time: a row takes a step for each block of the band, or for each match in it where these are fewer.
/// Memory: at most 72 bytes per right element.
class BandedTable {
 public:
  /// Where a row's band is, and the lengths at its ends.
  struct Band {
    int32_t row = 0;
    size_t first = 0, last = 0;  // blocks: [first, last)
    int32_t low = 0;             // the length at the first block's first column
    int32_t high = 0;            // at the last column of the last block
  };

  /// `box` must outlive this. If the flag is raised meanwhile, the table must not be used.
  BandedTable(const MatchedBox& box, const AbortFlag* abort);

  /// Goes to row 0, for scripts of at most `matchedEdits`.
  void start(int32_t matchedEdits);

  /// Goes on to the next row. Returns false when no script within the limit leads there.
  bool nextRow();

  const Band& band() const { return band_; }
  const BitBlock* blocks() const { return bits_.data() + band_.first; }

  /// Goes back to an earlier row, given what band() and blocks() were there. From now on `matchedEdits`, no
  /// more than before, is the limit.
  void goTo(const Band& band, const BitBlock* blocks, int32_t matchedEdits);

  /// The length at a grid point of this row; outside of the band no more than that.
  int32_t length(int32_t column) const;

  /// On the last row: the edits of the shortest script if they are within the limit, else more than the
  /// limit.
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
  int32_t maxDeletions_, maxInsertions_;
  Band band_;
  std::vector<BitBlock> bits_;
  std::vector<int32_t> occurrences_;  // the columns of every class, ascending
  std::vector<uint32_t> begins_;      // where each class begins in occurrences_, and where the last one ends
  std::vector<uint32_t> matchRow_;    // for each class its row in matches_, if it has one
  std::vector<BitBlock> matches_;     // rows with a bit for each column, for classes that occur often
};

}  // namespace merivane
