#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace merivane {

/// A part of a row of the table of lengths, 256 columns of it with a bit each: the bit is 0 where the length
/// of the longest common subsequence grows from this column to the next. An addition turns a row into the
/// next one (L. Allison and T. I. Dix, "A Bit-String Longest-Common-Subsequence Algorithm", Information
/// Processing Letters 23, 1986; in the form of H. Hyyrö, "Bit-Parallel LCS-length Computation Revisited",
/// AWOCA 2004).
struct BitBlock {
  static constexpr int32_t kColumns = 256;
  static constexpr int32_t kWordColumns = 64;
  static constexpr int32_t kWords = kColumns / kWordColumns;

  uint64_t words[kWords];
};

/// The word of a row that a column is in. `Block` is BitBlock, or const where the row is.
template <typename Block>
auto& wordOf(Block* row, int32_t column) {
  return row[column / BitBlock::kColumns].words[column % BitBlock::kColumns / BitBlock::kWordColumns];
}

/// Turns the blocks [0, count) into those of the next row. `matches` has a bit for every column whose element
/// equals the row's. Returns whether the length after the last column is one more than in the row before;
/// before the first column it is taken to be the same.
bool advanceBlocks(BitBlock* row, const BitBlock* matches, size_t count);

/// The same for every processor; advanceBlocks() uses wide words where the processor has them.
bool advanceBlocksPortably(BitBlock* row, const BitBlock* matches, size_t count);

/// The same for a row whose element equals that of a few `columns`, ascending: the next place where the
/// length grows moves to each of them.
bool advanceByMatches(BitBlock* row, std::span<const int32_t> columns, size_t count);

/// Returns in how many columns of a block the length grows.
int32_t growthsIn(const BitBlock& block);

}  // namespace merivane
