#include "folders/name_filter.h"

#include <algorithm>

#include "folders/wildcard.h"

namespace merivane {

std::vector<std::string> parseFilter(std::string_view text) {
  constexpr std::string_view whiteSpace = " \t\n\v\f\r";
  std::vector<std::string> patterns;
  while (!text.empty()) {
    const size_t end = std::min(text.find(';'), text.size());
    std::string_view piece = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    piece.remove_prefix(std::min(piece.find_first_not_of(whiteSpace), piece.size()));
    piece = piece.substr(0, piece.find_last_not_of(whiteSpace) + 1);
    if (!piece.empty()) patterns.emplace_back(piece);
  }
  return patterns;
}

NameFilter::NameFilter(const FolderOptions& options)
    : includes_(options.hasIncludeFilter), caseSensitive_(!options.ignoreNameCase) {
  if (options.hasIncludeFilter) {
    patterns_ = parseFilter(options.includeFilter);
  } else if (options.hasExcludeFilter) {
    patterns_ = parseFilter(options.excludeFilter);
  }
}

bool NameFilter::keeps(std::string_view name) const {
  const bool matches = std::any_of(patterns_.begin(), patterns_.end(), [&](const std::string& pattern) {
    return matchesWildcard(pattern, name, caseSensitive_);
  });
  return matches == includes_;
}

}  // namespace merivane
