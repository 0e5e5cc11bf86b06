#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/abort_flag.h"

namespace merivane {

/// How many characters two strings share in any order: no common subsequence is longer. Time: the characters
/// of both strings. When the flag is raised meanwhile the answer means nothing.
uint64_t sharedCharacters(std::string_view left, std::string_view right, const AbortFlag* abort);

/// The length of the longest common subsequence of two strings, where it is found cheaply: when, without what
/// they have in common at both ends, one has at most 64 characters. The bits are those of BitBlock, a row in
/// one word. Time: the characters of both strings.
class CommonCharacters {
 public:
  std::optional<uint32_t> count(std::string_view left, std::string_view right);

 private:
  uint64_t columns_[256] = {};  // of each character where it stands; zero between calls
};

}  // namespace merivane
