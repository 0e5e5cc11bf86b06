#include "display/writing_direction.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/random.h"

namespace merivane {
namespace {

/// Capitals stand for Hebrew, "*" and "$" for an Arabic letter and digit.
std::string written(std::string_view text) {
  std::string row;
  for (const char c : text) {
    const char hebrew[] = {'\xD7', static_cast<char>('\x90' + c - 'A'), 0};
    row += c >= 'A' && c <= 'Z' ? hebrew : c == '*' ? "\xD8\xA8" : c == '$' ? "\xD9\xA3" : std::string(1, c);
  }
  return row;
}

/// The same text in the order in which it shows, or nothing where that is the order of its bytes.
std::string shown(std::string_view text) {
  const std::string row = written(text);
  std::string result;
  for (const DirectionRun& run : directionRuns(RowCharacters(std::string_view(row), true))) {
    std::string part;
    size_t bytes = 0;
    for (const char c : text) {
      if (bytes >= run.begin && bytes < run.end) part += c;
      bytes += written({&c, 1}).size();
    }
    if (run.rightToLeft) std::reverse(part.begin(), part.end());
    result += part;
  }
  return result;
}

TEST(WritingDirection, ShowsEachWayAsItIsRead) {
  const std::pair<const char*, const char*> cases[] = {
      {"abc 12", ""},
      {"a ABC b", "a CBA b"},
      {"a AB CD, b", "a DC BA, b"},
      {"AB 12 CD", "DC 12 BA"},
      {"AB 1- CD", "DC -1 BA"},
      {"AB $%", "$ BA%"},
      {"* 12", "12 *"},
      {"A 12", "12 A"},
      {"AB\tCD", "BA\tDC"},
      {"x = \"AB\"; y", "x = \"BA\"; y"},
      {"$$", "$$"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(shown(text), expected) << text;
}

TEST(WritingDirection, RunsHoldEachCharacterOnce) {
  Random random(5);
  for (int round = 0; round < 5000; ++round) {
    const std::string row = written(random.text("abAB*$12.,+% \t\x01\xFF", 20));
    const RowCharacters characters(std::string_view(row), true);
    std::vector<DirectionRun> runs = directionRuns(characters);
    if (runs.empty()) continue;
    std::ranges::sort(runs, {}, &DirectionRun::begin);
    uint32_t end = 0;
    for (const DirectionRun& run : runs) {
      ASSERT_EQ(run.begin, end);
      ASSERT_TRUE(run.end > run.begin && characters.isBoundary(run.end));
      end = run.end;
    }
    ASSERT_EQ(end, row.size());
  }
}

}  // namespace
}  // namespace merivane
