#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/abort_flag.h"

namespace merivane {

/// Returns how many characters two strings share in any order: no common subsequence is longer. Time:
/// O(characters of both strings). If the flag is raised meanwhile, the result is undefined.
uint64_t sharedCharacters(std::string_view left, std::string_view right, const AbortFlag* abort);

/// Finds the length of the longest common subsequence of two strings where that is cheap: where one of them,
/// without what both have in common at their ends, has at most 64 characters, so that a row as in BitBlock is
/// one word.
class CommonCharacters {
 public:
  /// Returns the length, or nothing where it is not cheap. Time: O(characters of both strings). If the flag
  /// is raised meanwhile, the result is undefined.
  std::optional<uint32_t> count(std::string_view left, std::string_view right, const AbortFlag* abort);

 private:
  uint64_t columns_[256] = {};  // for each character where it occurs; zero between calls
};

}  // namespace merivane
