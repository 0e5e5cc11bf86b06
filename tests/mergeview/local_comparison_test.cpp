// Which rows an edit compares anew, and what comes of it.

#include "mergeview/local_comparison.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

TEST(LocalComparison, WindowReachesFortyRowsAndTwentyMoreThatDiffer) {
  const auto rows = [](uint32_t count, char status = '=') { return std::string(count, status); };
  const struct {
    std::string rows;
    RowRange changed, window;
  } cases[] = {
      {rows(200), {100, 101}, {60, 141}},
      {rows(200), {100, 120}, {60, 160}},
      // At the ends.
      {rows(200), {39, 40}, {0, 80}},
      {rows(200), {160, 161}, {120, 200}},
      {rows(1), {0, 1}, {0, 1}},
      // On through what differs, the first equal row included.
      {rows(55) + rows(6, '<') + rows(139), {100, 101}, {54, 141}},
      {rows(140) + rows(5, '!') + rows(55), {100, 101}, {60, 146}},
      {rows(200, '>'), {100, 101}, {40, 161}},
      {rows(50, '!') + rows(100) + rows(50, '<'), {60, 140}, {0, 200}},
      {rows(55) + rows(5, '<') + rows(140), {100, 101}, {60, 141}},
  };
  for (const auto& [pattern, changed, window] : cases) {
    EXPECT_EQ(comparisonWindow(modelOf(pattern), changed), window) << pattern << ' ' << changed.begin;
  }
}

}  // namespace
}  // namespace merivane
