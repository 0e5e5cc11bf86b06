#include "mergeview/find.h"

#include <gtest/gtest.h>

#include "tests/support/marked_view.h"

namespace merivane {
namespace {

TEST(Find, MatchesInAStretch) {
  constexpr int64_t none = -1;
  struct Case {
    const char* stretch;
    const char* text;
    bool matchCase, wholeWord;
    int64_t first, last;
  };
  const Case cases[] = {
      {"abcabc\n", "abc", true, false, 0, 3},
      {"abcabc", "ABC", true, false, none, none},
      {"abcAbC", "aBc", false, false, 0, 3},
      {"\xC4\xE4", "\xE4", false, false, 1, 1},  // only A-Z have another case
      {"ab", "abc", false, false, none, none},
      {"", "a", false, false, none, none},
      {"abc", "", false, false, none, none},
      {"aaaa", "aa", true, false, 0, 2},
      {"ab_c ab", "ab", true, true, 5, 5},
      {"xab ab\n", "ab", true, true, 4, 4},
      {"ab", "ab", true, true, 0, 0},
      {"ab1", "ab", true, true, none, none},
      {"ab\xE4", "ab", true, true, 0, 0},
      {"a-b a.b", "a", true, true, 0, 4},
  };
  for (const Case& c : cases) {
    const FindQuery query{c.text, c.matchCase, c.wholeWord};
    const auto first = findFirst(c.stretch, query);
    const auto last = findLast(c.stretch, query);
    EXPECT_EQ(first ? int64_t{*first} : none, c.first) << c.stretch << " / " << c.text;
    EXPECT_EQ(last ? int64_t{*last} : none, c.last) << c.stretch << " / " << c.text;
  }
}

TEST(Find, GoesOnBehindTheSelectionAndOnceAround) {
  struct Case {
    const char* before;
    bool next;
    const char* after;  // the same where nothing is found
  };
  const Case cases[] = {
      {"|ab ab # ab ab / - # x / ab~ # ab~", true, "[ab| ab # ab ab / - # x / ab~ # ab~"},
      {"[ab| ab # ab ab / - # x / ab~ # ab~", true, "ab [ab| # ab ab / - # x / ab~ # ab~"},
      {"ab [ab| # ab ab / - # x / ab~ # ab~", true, "ab ab # ab ab / - # x / [ab|~ # ab~"},
      {"ab ab # ab ab / - # x / [ab|~ # ab~", true, "[ab| ab # ab ab / - # x / ab~ # ab~"},
      {"[ab| ab # ab ab / - # x / ab~ # ab~", false, "ab ab # ab ab / - # x / [ab|~ # ab~"},
      {"ab ab # ab ab / - # x / [ab|~ # ab~", false, "ab [ab| # ab ab / - # x / ab~ # ab~"},
      {"ab ab # ab ab / |- # x / ab~ # ab~", false, "ab [ab| # ab ab / - # x / ab~ # ab~"},
      // The row where it began is searched again, from its start.
      {"x ab| # x ab", true, "x [ab| # x ab"},
      {"x |ab # x ab", false, "x [ab| # x ab"},
      // The other side is not searched.
      {"c|d # cd / - # ab", true, "c|d # cd / - # ab"},
      {"cd # cd / - # ab / e|f # ef", false, "cd # cd / - # ab / e|f # ef"},
      // A selection over several rows is left out whole.
      {"|ab # ab / ab # ab / a[b # ab / cab # cab", true, "ab # ab / ab # ab / ab # ab / c[ab| # cab"},
      {"ab # ab / a[b # ab / ab| # ab", false, "[ab| # ab / ab # ab / ab # ab"},
  };
  for (const Case& c : cases) {
    MarkedView marked(c.before);
    const bool found = c.next ? findNext(marked.state(), {"AB"}) : findPrevious(marked.state(), {"AB"});
    EXPECT_EQ(marked.marked(), c.after) << c.before;
    EXPECT_EQ(found, std::string_view(c.before) != c.after) << c.before;
  }
}

}  // namespace
}  // namespace merivane
