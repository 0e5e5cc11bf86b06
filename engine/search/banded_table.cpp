#include "engine/search/banded_table.h"

#include <algorithm>
#include <bit>

namespace merivane {
namespace {

constexpr uint32_t kNoRow = 0xFFFFFFFF;
constexpr BitBlock kNoGrowth{{~uint64_t{0}, ~uint64_t{0}, ~uint64_t{0}, ~uint64_t{0}}};

void setColumn(BitBlock* row, int32_t column) {
  wordOf(row, column) |= uint64_t{1} << (column % BitBlock::kWordColumns);
}

}  // namespace

BandedTable::BandedTable(const MatchedBox& box, const AbortFlag* abort)
    : box_(box),
      columns_(box.matched(1)),
      blocks_((static_cast<size_t>(columns_) + BitBlock::kColumns - 1) / BitBlock::kColumns),
      bits_(blocks_),
      occurrences_(box.classes[1].size()),
      begins_(box.classCount + 2, 0),
      matchRow_(box.classCount, kNoRow) {
  const uint32_t* const classes = box.classes[1].data();
  // Each class is counted two places further on, so that its place can first say where its next occurrence
  // goes and in the end where the next class begins.
  bool done = forEach(0, columns_, abort, [&](int32_t j) { ++begins_[classes[j] + 2]; });
  done = done && forEach(0u, box.classCount, abort, [&](uint32_t c) { begins_[c + 2] += begins_[c + 1]; });
  done = done && forEach(0, columns_, abort, [&](int32_t j) { occurrences_[begins_[classes[j] + 1]++] = j; });
  // A class gets a row if it has half a match per block: there are no more of these than twice the columns of
  // a block.
  uint32_t matchRows = 0;
  done = done && forEach(0u, box.classCount, abort, [&](uint32_t c) {
           if (2 * (begins_[c + 1] - begins_[c]) >= blocks_) matchRow_[c] = matchRows++;
         });
  if (!done) return;
  matches_.resize(matchRows * blocks_, {});
  forEach(0, columns_, abort, [&](int32_t j) {
    const uint32_t row = matchRow_[classes[j]];
    if (row != kNoRow) setColumn(matches_.data() + row * blocks_, j);
  });
}

void BandedTable::start(int32_t matchedEdits) {
  limitTo(matchedEdits);
  band_ = {};
  widen();
}

void BandedTable::limitTo(int32_t matchedEdits) {
  const int32_t more = box_.matched(0) - columns_;
  maxDeletions_ = (matchedEdits + more) / 2;
  maxInsertions_ = (matchedEdits - more) / 2;
}

bool BandedTable::nextRow() {
  const uint32_t c = box_.classes[0][static_cast<size_t>(band_.row)];
  ++band_.row;
  if (advance(c)) {
    ++band_.high;
    widen();
  }
  constexpr int32_t rowsBetween = 32;  // a block too many does no harm for a while
  if (band_.row % rowsBetween == 0) narrow();
  return band_.row - band_.high <= maxDeletions_;
}

bool BandedTable::advance(uint32_t matchClass) {
  if (matchRow_[matchClass] != kNoRow) {
    return advanceBlocks(bits_.data() + band_.first,
                         matches_.data() + matchRow_[matchClass] * blocks_ + band_.first,
                         band_.last - band_.first);
  }
  const int32_t* first = occurrences_.data() + begins_[matchClass];
  const int32_t* last = occurrences_.data() + begins_[matchClass + 1];
  while (first < last && *first < column(band_.first)) ++first;
  while (first < last && last[-1] >= column(band_.last)) --last;
  return advanceByMatches(bits_.data(), {first, last}, band_.last);
}

/// Takes in the blocks that have come within the limit. Insertions grow along a row.
void BandedTable::widen() {
  while (band_.last < blocks_ && column(band_.last) - band_.high <= maxInsertions_) {
    bits_[band_.last] = kNoGrowth;
    ++band_.last;
  }
}

/// Lets those go that are outside of it. Deletions fall along a row, insertions grow.
void BandedTable::narrow() {
  for (; band_.first < band_.last; ++band_.first) {
    const int32_t next = band_.low + growthsIn(bits_[band_.first]);
    if (band_.row - next <= maxDeletions_) break;
    band_.low = next;
  }
  for (; band_.first < band_.last; --band_.last) {
    const int32_t before = band_.high - growthsIn(bits_[band_.last - 1]);
    if (column(band_.last - 1) - before <= maxInsertions_) break;
    band_.high = before;
  }
}

void BandedTable::goTo(const Band& band, const BitBlock* blocks, int32_t matchedEdits) {
  limitTo(matchedEdits);
  band_ = band;
  std::copy(blocks, blocks + (band.last - band.first), bits_.begin() + static_cast<ptrdiff_t>(band.first));
  narrow();
}

int32_t BandedTable::length(int32_t column) const {
  const int32_t end =
      std::min(column - BandedTable::column(band_.first), BandedTable::column(band_.last - band_.first));
  if (end < 0) return -1;
  int32_t length = band_.low;
  const BitBlock* block = blocks();
  int32_t at = 0;
  for (; at + BitBlock::kColumns <= end; at += BitBlock::kColumns) length += growthsIn(*block++);
  for (int32_t word = 0; at < end; ++word, at += BitBlock::kWordColumns) {
    const int32_t beyond = std::max(BitBlock::kWordColumns - (end - at), 0);
    length += std::popcount(~block->words[word] << beyond);
  }
  return length;
}

}  // namespace merivane
