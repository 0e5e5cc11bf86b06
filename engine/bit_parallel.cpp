#include "engine/bit_parallel.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

#include "engine/banded_table.h"

namespace merivane {
namespace {

/// Of `matchedEdits`, those that a script of the whole box has on each side.
BandedTable::Limits limitsFor(const MatchedBox& box, int32_t edits, int32_t matchedEdits) {
  const int32_t more = box.matched(0) - box.matched(1);
  return {edits, (matchedEdits + more) / 2, (matchedEdits - more) / 2};
}

/// Walks the table and notes where diagonals pass a number of edits.
class CrossingScan {
 public:
  CrossingScan(const MatchedBox& box, int32_t edits, int32_t matchedEdits, Crossings& crossings)
      : box_(box),
        edits_(edits),
        columns_(box.matched(1)),
        crossings_(crossings),
        table_(box, limitsFor(box, edits, matchedEdits)),
        quiet_(table_.blockCount(), 0),
        groupQuiet_(table_.blockCount() / kGroup + 1, 0) {}

  bool run(const AbortFlag* abort) {
    do {
      if (isRaised(abort)) return false;
      scanRow();
    } while (table_.row() < box_.matched(0) && table_.nextRow());
    return true;
  }

 private:
  static constexpr size_t kGroup = 16;  // blocks

  void scanRow() {
    rowLow_ = box_.low(0, table_.row());
    rowHigh_ = box_.high(0, table_.row());
    // Blocks that have come to the band, perhaps not for the first time.
    for (; seen_ < table_.lastBlock(); ++seen_) quiet_[seen_] = groupQuiet_[seen_ / kGroup] = 0;
    seen_ = table_.lastBlock();
    for (size_t group = table_.firstBlock() / kGroup; group * kGroup < table_.lastBlock(); ++group) {
      if (rowHigh_ >= groupQuiet_[group]) scanGroup(group);
    }
    if (table_.lastBlock() == table_.blockCount()) visit(columns_, table_.length(table_.blockCount()));
  }

  void scanGroup(size_t group) {
    const size_t end = std::min((group + 1) * kGroup, table_.lastBlock());
    int32_t quiet = std::numeric_limits<int32_t>::max();
    for (size_t block = std::max(group * kGroup, table_.firstBlock()); block < end; ++block) {
      if (rowHigh_ >= quiet_[block]) {
        // From row to row the edits change by no more than the row's corner moves, so a block that is some
        // way off needs no look for as long.
        const int32_t gap = gapOf(BandedTable::column(block), BitBlock::kColumns, table_.length(block),
                                  table_.length(block + 1));
        quiet_[block] = rowLow_ + std::max(gap, 0);
        if (gap <= 0) scanBlock(block);
      }
      quiet = std::min(quiet, quiet_[block]);
    }
    groupQuiet_[group] = quiet;
  }

  void scanBlock(size_t block) {
    int32_t begin = BandedTable::column(block);
    int32_t length = table_.length(block);
    for (const uint64_t word : table_.block(block).words) {
      if (begin >= columns_) break;
      const int32_t grown = std::popcount(~word);
      if (gapOf(begin, BitBlock::kWordColumns, length, length + grown) <= 0) scanWord(begin, length, ~word);
      begin += BitBlock::kWordColumns;
      length += grown;
    }
  }

  void scanWord(int32_t begin, int32_t length, uint64_t grows) {
    constexpr int32_t atOnce = 8;
    const int32_t end = std::min(begin + BitBlock::kWordColumns, columns_);
    for (int32_t j = begin; j < end; j += atOnce, grows >>= atOnce) {
      const int32_t grown = kOnes[grows & 0xFF];
      if (gapOf(j, atOnce, length, length + grown) <= 0) {
        int32_t here = length;
        for (int32_t at = j; at < std::min(j + atOnce, end); ++at) {
          visit(at, here);
          here += static_cast<int32_t>((grows >> (at - j)) & 1);
        }
      }
      length += grown;
    }
  }

  /// How many edits all points of some columns are off, at the least, given the lengths before them and
  /// behind.
  int32_t gapOf(int32_t begin, int32_t count, int32_t length, int32_t lengthBehind) const {
    const int32_t least = rowLow_ + box_.low(1, begin) - length - lengthBehind;
    const int32_t most = rowHigh_ + box_.high(1, std::min(begin + count, columns_) - 1) - 2 * length;
    return std::max(least - edits_, edits_ - most);
  }

  void visit(int32_t j, int32_t length) {
    if (rowHigh_ + box_.high(1, j) - 2 * length < edits_ || !table_.within(j, length)) return;
    const int32_t i = table_.row();
    Crossing& crossing = crossings_[static_cast<size_t>(i - j + columns_)];
    if (crossing.none()) {
      crossing.first = i;
      crossing.matchedEdits = i + j - 2 * length;
    }
    crossing.last = i;
  }

  static constexpr auto kOnes = [] {
    std::array<uint8_t, 256> ones{};
    for (unsigned byte = 0; byte < ones.size(); ++byte)
      ones[byte] = static_cast<uint8_t>(std::popcount(byte));
    return ones;
  }();

  const MatchedBox& box_;
  const int32_t edits_;
  const int32_t columns_;
  Crossings& crossings_;
  BandedTable table_;
  size_t seen_ = 0;                  // blocks of the band in the row before end here
  std::vector<int32_t> quiet_;       // nothing to note in a block until the row's high corner is here
  std::vector<int32_t> groupQuiet_;  // the same for kGroup blocks
  int32_t rowLow_ = 0, rowHigh_ = 0;
};

}  // namespace

bool countEditsBitParallel(const MatchedBox& box, const AbortFlag* abort, int32_t& matchedEdits) {
  const int32_t rows = box.matched(0), columns = box.matched(1);
  // With a limit that is too low the band ends where about as many edits are done, and tells how many there
  // may be.
  for (int64_t limit = std::abs(rows - columns) + BitBlock::kColumns;;) {
    limit = std::min<int64_t>(limit, int64_t{rows} + columns);
    if ((limit & 1) != ((rows - columns) & 1)) ++limit;
    BandedTable table(box, limitsFor(box, std::numeric_limits<int32_t>::max(), static_cast<int32_t>(limit)));
    bool inside = true;
    while (inside && table.row() < rows) {
      if (isRaised(abort)) return false;
      inside = table.nextRow();
    }
    if (inside && table.lastBlock() == table.blockCount() &&
        table.within(columns, table.length(table.blockCount()))) {
      matchedEdits = rows + columns - 2 * table.length(table.blockCount());
      return true;
    }
    limit = std::max(limit + limit / 4, limit * rows / (table.row() + 1) * 9 / 8);
  }
}

bool crossDiagonalsBitParallel(const MatchedBox& box, int32_t edits, int32_t matchedEdits,
                               const AbortFlag* abort, Crossings& crossings) {
  crossings.assign(static_cast<size_t>(box.matched(0)) + static_cast<size_t>(box.matched(1)) + 1, {});
  return CrossingScan(box, edits, matchedEdits, crossings).run(abort);
}

}  // namespace merivane
