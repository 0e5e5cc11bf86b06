#pragma once

#include <cstddef>
#include <cstdint>

namespace merivane {

/// A row of bits in blocks of 256, a column a bit: where the length of the longest common subsequence of two
/// beginnings grows from one column to the next the bit is 0. The row below follows with an addition (L.
/// Allison and T. I. Dix, "A Bit-String Longest-Common-Subsequence Algorithm", Information Processing Letters
/// 23, 1986; in the form of H. Hyyrö, "Bit-Parallel LCS-length Computation Revisited", AWOCA 2004).
struct BitBlock {
  static constexpr int32_t kColumns = 256;
  static constexpr int32_t kWordColumns = 64;
  static constexpr int32_t kWords = kColumns / kWordColumns;

  uint64_t words[kWords];
};

/// Turns the blocks [0, count) into those of the row below. `matches` has a bit for every column whose
/// element equals the row's. `carry`: whether the length at the first column is one more than in the row
/// above; the answer is that for the column behind the last. Of each block `lengths` counts the same at its
/// first column.
bool advanceBlocks(BitBlock* row, const BitBlock* matches, int32_t* lengths, size_t count, bool carry);

/// The same with plain words, for processors without wide ones.
bool advanceBlocksPortably(BitBlock* row, const BitBlock* matches, int32_t* lengths, size_t count,
                           bool carry);

}  // namespace merivane
