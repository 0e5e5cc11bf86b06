#include "display/code_points.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace merivane {
namespace {

constexpr uint32_t kRuns[] = {
#define UNICODE_PROPERTY_RUNS
#include "display/unicode_tables.inc"
#undef UNICODE_PROPERTY_RUNS
};

struct Fold {
  char32_t first;
  char32_t last;
  uint32_t step;
  int32_t distance;
};

constexpr Fold kFolds[] = {
#define UNICODE_CASE_FOLDS
#include "display/unicode_tables.inc"
#undef UNICODE_CASE_FOLDS
};

constexpr char32_t kLastCodePoint = 0x10FFFF;
constexpr uint32_t kPageBits = 7;
constexpr size_t kPages = (kLastCodePoint >> kPageBits) + 1;

/// The run that holds the first code point of each page: the runs of a page are few.
constexpr auto kFirstRuns = [] {
  std::array<uint16_t, kPages> first{};
  size_t run = 0;
  for (size_t page = 0; page < kPages; ++page) {
    while (run + 1 < std::size(kRuns) && kRuns[run + 1] >> 8 <= page << kPageBits) ++run;
    first[page] = static_cast<uint16_t>(run);
  }
  return first;
}();

}  // namespace

CodePointProperties propertiesOf(char32_t codePoint) {
  codePoint = std::min(codePoint, kLastCodePoint);
  size_t run = kFirstRuns[codePoint >> kPageBits];
  while (run + 1 < std::size(kRuns) && kRuns[run + 1] >> 8 <= codePoint) ++run;
  return CodePointProperties(static_cast<uint8_t>(kRuns[run]));
}

char32_t foldedCase(char32_t codePoint) {
  if (codePoint < 0x80) return codePoint >= 'A' && codePoint <= 'Z' ? codePoint + 0x20 : codePoint;
  const Fold* const fold =
      std::lower_bound(std::begin(kFolds), std::end(kFolds), codePoint,
                       [](const Fold& range, char32_t point) { return range.last < point; });
  if (fold == std::end(kFolds) || codePoint < fold->first || (codePoint - fold->first) % fold->step != 0) {
    return codePoint;
  }
  return static_cast<char32_t>(static_cast<int64_t>(codePoint) + fold->distance);
}

}  // namespace merivane
