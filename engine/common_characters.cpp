#include "engine/common_characters.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "engine/search/equal_ends.h"

namespace merivane {

uint64_t sharedCharacters(std::string_view left, std::string_view right, const AbortFlag* abort) {
  uint32_t counts[2][256] = {};
  for (const int side : {0, 1}) {
    const std::string_view characters = side == 0 ? left : right;
    forEach<size_t>(0, characters.size(), abort,
                    [&](size_t at) { ++counts[side][static_cast<unsigned char>(characters[at])]; });
  }
  uint64_t shared = 0;
  for (int c = 0; c < 256; ++c) shared += std::min(counts[0][c], counts[1][c]);
  return shared;
}

std::optional<uint32_t> CommonCharacters::count(std::string_view left, std::string_view right,
                                                const AbortFlag* abort) {
  const size_t first = equalAtStart(left.data(), right.data(), std::min(left.size(), right.size()), abort);
  left.remove_prefix(first);
  right.remove_prefix(first);
  const size_t last = equalAtEnd(left.data() + left.size(), right.data() + right.size(),
                                 std::min(left.size(), right.size()), abort);
  left.remove_suffix(last);
  right.remove_suffix(last);
  if (left.size() < right.size()) std::swap(left, right);
  if (right.size() > 64) return std::nullopt;

  for (size_t j = 0; j < right.size(); ++j) columns_[static_cast<uint8_t>(right[j])] |= uint64_t{1} << j;
  uint64_t row = ~uint64_t{0};
  forEach<size_t>(0, left.size(), abort, [&](size_t i) {
    const uint64_t common = row & columns_[static_cast<uint8_t>(left[i])];
    row = (row + common) | (row ^ common);
  });
  for (const char c : right) columns_[static_cast<uint8_t>(c)] = 0;
  return static_cast<uint32_t>(first + last) + static_cast<uint32_t>(std::popcount(~row));
}

}  // namespace merivane
