#include "engine/search/banded_split.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <vector>

#include "engine/search/banded_table.h"
#include "engine/search/split_trace.h"

namespace merivane {
namespace {

/// Copies of rows of a table, to look at or to go back to.
class KeptRows {
 public:
  /// Has room for `rows` rows of up to `band` blocks.
  KeptRows(int32_t rows, int32_t band) {
    rows_.reserve(static_cast<size_t>(rows));
    blocks_.reserve(static_cast<size_t>(rows) * static_cast<size_t>(band));
  }

  void keep(const BandedTable& table) {
    const BandedTable::Band& band = table.band();
    rows_.push_back({band, blocks_.size()});
    blocks_.insert(blocks_.end(), table.blocks(), table.blocks() + (band.last - band.first));
  }

  size_t count() const { return rows_.size(); }

  void goBack(BandedTable& table, size_t at, int32_t limit) const {
    table.goTo(rows_[at].band, blocksOf(rows_[at]), limit);
  }

  /// The first column of a row whose length is that of `column`.
  int32_t firstOfSameLength(size_t at, int32_t column) const {
    const Row& row = rows_[at];
    const BitBlock* const blocks = blocksOf(row);
    const int32_t begin = BandedTable::column(row.band.first);
    int32_t end = std::min(column, BandedTable::column(row.band.last)) - begin;
    for (; end > 0; end = (end - 1) / BitBlock::kWordColumns * BitBlock::kWordColumns) {
      const int32_t last = end - 1;
      const int32_t beyond = BitBlock::kWordColumns - 1 - last % BitBlock::kWordColumns;
      const uint64_t grows = ~wordOf(blocks, last) << beyond;
      if (grows != 0) return begin + last - std::countl_zero(grows) + 1;
    }
    return begin;
  }

 private:
  struct Row {
    BandedTable::Band band;
    size_t blocks;
  };

  const BitBlock* blocksOf(const Row& row) const { return blocks_.data() + row.blocks; }

  std::vector<Row> rows_;
  std::vector<BitBlock> blocks_;
};

class BandedSplit {
 public:
  BandedSplit(const MatchedBox& box, const AbortFlag* abort) : box_(box), abort_(abort), table_(box, abort) {}

  /// Returns false when no script has at most `limit` edits of matched elements, or when aborted.
  bool run(int32_t limit, int32_t& matchedEdits, Point& split) {
    limit_ = limit;
    table_.start(limit);
    const int32_t end = box_.matched(0);
    const int32_t step = stepFor(end);
    KeptRows rows(end / step + 1, maxBlocks());
    if (!keepRows(end, step, rows) || table_.matchedEdits() > limit_) return false;
    limit_ = matchedEdits = table_.matchedEdits();
    SplitTrace trace(box_, matchedEdits + box_.unmatched());
    if (!traceBack(rows, 0, end, step, trace)) {
      if (!trace.insertFrom(0)) trace.leaveRow();
      rows.goBack(table_, 0, limit_);
    }
    if (isRaised(abort_)) return false;
    trace.extend([this](int32_t i, int32_t j, int32_t length) {
      return (table_.band().row == i || table_.nextRow()) && table_.length(j) >= length;
    });
    split = trace.at();
    return true;
  }

  int32_t lastRow() const { return table_.band().row; }

 private:
  static constexpr int32_t kMaxKeptBlocks = 1 << 15;  // of one part
  static constexpr int32_t kParts = 16;

  /// How many blocks a band can have.
  int32_t maxBlocks() const { return std::min(limit_, box_.matched(1)) / BitBlock::kColumns + 2; }

  /// To trace `rows` rows back, one row of so many is kept.
  int32_t stepFor(int32_t rows) const {
    return rows < kMaxKeptBlocks / maxBlocks() ? 1 : (rows + kParts - 1) / kParts;
  }

  /// Goes on to row `end` and keeps this row and every `step`-th after it. Returns false when no script
  /// within the limit leads there, or when aborted.
  bool keepRows(int32_t end, int32_t step, KeptRows& rows) {
    rows.keep(table_);
    for (int32_t next = table_.band().row + step; table_.band().row < end;) {
      if (isRaised(abort_) || !table_.nextRow()) return false;
      if (table_.band().row == next) {
        rows.keep(table_);
        next += step;
      }
    }
    return true;
  }

  /// Traces the rows from `end` back to the one after `begin`, which is the first of `rows`. Returns true
  /// when the split has been found, with the table on the trace's row, and when aborted.
  bool traceBack(const KeptRows& rows, int32_t begin, int32_t end, int32_t step, SplitTrace& trace) {
    if (step == 1) {
      while (trace.row() > begin) {
        const auto at = static_cast<size_t>(trace.row() - begin);
        if (trace.insertFrom(rows.firstOfSameLength(at, trace.column())) || trace.leaveRow()) {
          rows.goBack(table_, at, limit_);
          return true;
        }
      }
      return false;
    }
    for (size_t part = rows.count(); part-- > 0;) {
      const int32_t partBegin = begin + static_cast<int32_t>(part) * step;
      const int32_t partEnd = std::min(partBegin + step, end);
      if (partBegin == partEnd) continue;
      rows.goBack(table_, part, limit_);
      const int32_t stepInPart = stepFor(partEnd - partBegin);
      KeptRows inPart((partEnd - partBegin) / stepInPart + 1, maxBlocks());
      if (!keepRows(partEnd, stepInPart, inPart)) return true;
      if (traceBack(inPart, partBegin, partEnd, stepInPart, trace)) return true;
    }
    return false;
  }

  const MatchedBox& box_;
  const AbortFlag* const abort_;
  int32_t limit_ = 0;
  BandedTable table_;
};

}  // namespace

bool splitByBandedTable(const MatchedBox& box, int32_t& matchedEdits, const AbortFlag* abort, Point& split) {
  const int32_t rows = box.matched(0), columns = box.matched(1);
  BandedSplit search(box, abort);
  if (matchedEdits != kUnknown) return search.run(matchedEdits, matchedEdits, split);
  for (int64_t limit = std::abs(rows - columns) + BitBlock::kColumns;;) {
    limit = std::min<int64_t>(limit, int64_t{rows} + columns);
    if ((limit & 1) != ((rows - columns) & 1)) ++limit;
    if (search.run(static_cast<int32_t>(limit), matchedEdits, split)) return true;
    if (isRaised(abort)) return false;
    // The rows it came to before the limit was used up tell how many edits there may be.
    const int64_t guess = limit * rows / (search.lastRow() + 1);
    limit = std::clamp(guess + guess / 8, limit + limit / 4, 2 * limit);
  }
}

}  // namespace merivane
