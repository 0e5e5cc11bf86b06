#pragma once

#include <string_view>

namespace merivane {

/// Whether a whole name matches a pattern: "*" stands for any run of characters, also none, "?" for exactly
/// one character; all others stand for themselves. A well-formed UTF-8 sequence is one character, any other
/// byte too. A pattern of at least three characters that ends in "*.*" matches as if it ended in "*". Takes
/// no more than the product of both lengths.
bool matchesWildcard(std::string_view pattern, std::string_view name, bool caseSensitive);

}  // namespace merivane
