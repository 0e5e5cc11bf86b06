#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

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
/// element equals the row's. True if the length behind the last column is one more than in the row above; at
/// the first column it is taken to be the same.
bool advanceBlocks(BitBlock* row, const BitBlock* matches, size_t count);

/// The same with plain words, for processors without wide ones.
bool advanceBlocksPortably(BitBlock* row, const BitBlock* matches, size_t count);

/// The same for a row whose element equals that of few columns, ascending: the next place where the length
/// grows moves to each of them.
bool advanceByMatches(BitBlock* row, std::span<const int32_t> columns, size_t count);

/// In how many columns of a block the length grows.
int32_t growthsIn(const BitBlock& block);

}  // namespace merivane
