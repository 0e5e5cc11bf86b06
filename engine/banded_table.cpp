#include "engine/banded_table.h"

#include <algorithm>
#include <utility>

namespace merivane {
namespace {

constexpr uint32_t kNoRow = 0xFFFFFFFF;
constexpr BitBlock kNoGrowth{{~uint64_t{0}, ~uint64_t{0}, ~uint64_t{0}, ~uint64_t{0}}};

/// What advanceBlocks() does with one block without matches: a carry ends in the first bit that it sets.
bool passCarry(BitBlock& block) {
  for (uint64_t& word : block.words) {
    if (word == ~uint64_t{0}) continue;
    word |= word + 1;
    return false;
  }
  return true;
}

void setColumn(BitBlock* blocks, uint32_t column) {
  uint64_t& word =
      blocks[column / BitBlock::kColumns].words[column % BitBlock::kColumns / BitBlock::kWordColumns];
  word |= uint64_t{1} << (column % BitBlock::kWordColumns);
}

}  // namespace

BandedTable::BandedTable(const MatchedBox& box, const Limits& limits)
    : box_(box),
      limits_(limits),
      columns_(box.matched(1)),
      blocks_((static_cast<size_t>(columns_) + BitBlock::kColumns - 1) / BitBlock::kColumns),
      bits_(blocks_, kNoGrowth),
      lengths_(blocks_ + 1, 0),
      occurrences_(box.classes[1].size()),
      begins_(box.classCount + 1, 0),
      matchRow_(box.classCount, kNoRow) {
  for (const uint32_t c : box.classes[1]) ++begins_[c + 1];
  for (uint32_t c = 0; c < box.classCount; ++c) begins_[c + 1] += begins_[c];
  ends_.assign(begins_.begin(), begins_.end() - 1);
  for (uint32_t j = 0; j < occurrences_.size(); ++j) occurrences_[ends_[box.classes[1][j]]++] = j;
  // There can be no more classes with a match or more a block than columns in a block.
  for (uint32_t c = 0; c < box.classCount; ++c) {
    if (ends_[c] - begins_[c] < blocks_) continue;
    matchRow_[c] = static_cast<uint32_t>(matches_.size() / blocks_);
    matches_.resize(matches_.size() + blocks_, {});
    for (uint32_t at = begins_[c]; at < ends_[c]; ++at)
      setColumn(matches_.data() + matches_.size() - blocks_, occurrences_[at]);
  }
  fitBand();
}

bool BandedTable::nextRow() {
  const uint32_t c = box_.classes[0][static_cast<size_t>(row_)];
  ++row_;
  rowLow_ = box_.low(0, row_);
  bool carry = false;
  if (matchRow_[c] == kNoRow) {
    carry = advanceByMatches(c);
  } else if (first_ < last_) {
    const BitBlock* const matches = matches_.data() + matchRow_[c] * blocks_;
    carry = advanceBlocks(&bits_[first_], matches + first_, &lengths_[first_], last_ - first_, false);
  }
  lengths_[last_] += carry;
  return fitBand();
}

/// As advanceBlocks() does for the band, but a block without a match and without a carry is not looked at.
bool BandedTable::advanceByMatches(uint32_t matchClass) {
  uint32_t at = begins_[matchClass];
  const uint32_t end = ends_[matchClass];
  while (at < end && occurrences_[at] / BitBlock::kColumns < first_) ++at;
  begins_[matchClass] = at;
  bool carry = false;
  size_t block = first_;
  for (;;) {
    const size_t next = at < end ? std::min<size_t>(occurrences_[at] / BitBlock::kColumns, last_) : last_;
    for (; carry && block < next; ++block) {
      ++lengths_[block];
      carry = passCarry(bits_[block]);
    }
    if (next == last_) return carry;
    BitBlock matches = {};
    block = next;
    for (; at < end && occurrences_[at] / BitBlock::kColumns == block; ++at) {
      setColumn(&matches, occurrences_[at] % BitBlock::kColumns);
    }
    carry = advanceBlocks(&bits_[block], &matches, &lengths_[block], 1, carry);
    ++block;
  }
}

/// Whether no point of a block is within the limits. Along a row the deletions fall and the insertions grow.
bool BandedTable::isBehindLimits(size_t block) const {
  return row_ - lengths_[block + 1] > limits_.deletions ||
         column(block) - lengths_[block] > limits_.insertions ||
         rowLow_ + box_.low(1, column(block)) - lengths_[block] - lengths_[block + 1] > limits_.edits;
}

bool BandedTable::fitBand() {
  while (last_ < blocks_ && within(column(last_), lengths_[last_])) {
    bits_[last_] = kNoGrowth;
    lengths_[last_ + 1] = lengths_[last_];
    ++last_;
  }
  while (first_ < last_ && isBehindLimits(first_)) ++first_;
  while (first_ < last_ && isBehindLimits(last_ - 1)) --last_;
  return first_ < last_ || (last_ == blocks_ && within(columns_, lengths_[blocks_]));
}

}  // namespace merivane
