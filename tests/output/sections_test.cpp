#include "output/sections.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/random.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

/// The maximal runs of one status.
std::vector<std::string> runsOf(const std::string& pattern) {
  std::vector<std::string> runs;
  for (size_t at = 0; at < pattern.size(); at += runs.back().size()) {
    const size_t end = std::min(pattern.find_first_not_of(pattern[at], at), pattern.size());
    runs.push_back(pattern.substr(at, end - at));
  }
  return runs;
}

TEST(Sections, ShowEveryDifferenceAloneOrWithThreeRowsAround) {
  Random random(1);
  for (int round = 0; round < 3000; ++round) {
    std::string pattern;
    while (pattern.size() < random.below(60))
      pattern += std::string(random.below(9), "==<>!"[random.below(5)]);
    // Sections end with a bar.
    std::string context, differences;
    const std::vector<std::string> runs = runsOf(pattern);
    for (const std::string& run : runs) {
      const bool first = &run == &runs.front(), last = &run == &runs.back();
      if (run[0] != '=') differences += run + '|';
      if (run[0] != '=' || run.size() < 6) {
        context += run;
      } else {
        context += std::string(first ? "" : "===|") + (last ? "" : "===");
      }
    }
    if (differences.empty()) context.clear();
    if (!context.empty() && !context.ends_with('|')) context += '|';

    const DiffModel model = modelOf(pattern);
    const auto shown = [&](ExportScope scope) {
      std::string sections;
      uint32_t end = 0;
      forEachSection(model, scope, [&](RowRange rows) {
        EXPECT_LE(end, rows.begin);
        end = rows.end;
        sections += pattern.substr(rows.begin, rows.size()) + '|';
      });
      return sections;
    };
    ASSERT_EQ(shown(ExportScope::context), context) << pattern;
    ASSERT_EQ(shown(ExportScope::differences), differences) << pattern;
    ASSERT_EQ(shown(ExportScope::everything), pattern + '|');
  }
}

}  // namespace
}  // namespace merivane
