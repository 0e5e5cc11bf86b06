#include "mergeview/navigation.h"

#include <gtest/gtest.h>

#include "mergeview/differences.h"
#include "mergeview/mouse_selection.h"
#include "tests/support/marked_view.h"

namespace merivane {
namespace {

std::string pressed(std::string_view marked, std::string_view keys) {
  return MarkedView(marked).press(keys).marked();
}

TEST(Navigation, KeysMoveTheCaretAndExtendTheSelection) {
  struct Case {
    const char* before;
    const char* keys;
    const char* after;
  };
  const Case cases[] = {
      // One character, and over the ends of rows.
      {"a|b # ab", "right", "ab| # ab"},
      {"ab| # ab / cd # cd", "right", "ab # ab / |cd # cd"},
      {"ab # ab / |cd # cd", "left", "ab| # ab / cd # cd"},
      {"|ab # ab", "left", "|ab # ab"},
      {"ab| # ab", "right", "ab| # ab"},
      {"ab|~ # ab~", "right", "ab|~ # ab~"},
      {"ab # a|b", "S-left S-left", "ab # |a[b"},
      {"a[b| # ab", "left", "a|b # ab"},
      {"a[b # ab / |cd # cd", "S-up", "|a[b # ab / cd # cd"},
      // Filler rows hold the caret at their start.
      {"a| # a / - # xy / c # c", "right", "a # a / |- # xy / c # c"},
      {"a| # a / - # xy / c # c", "right right", "a # a / - # xy / |c # c"},
      {"a # a / - # xy / |c # c", "left", "a # a / |- # xy / c # c"},
      {"a # a / |- # xy / c # c", "left", "a| # a / - # xy / c # c"},
      {"a # a / |- # xy / c # c", "end", "a # a / |- # xy / c # c"},
      {"ab| # ab / - # xy / cd # cd", "down down", "ab # ab / - # xy / cd| # cd"},
      // Words, and the signs between them.
      {"|foo bar(x) # foo bar(x)", "C-right", "foo |bar(x) # foo bar(x)"},
      {"foo |bar(x) # foo bar(x)", "C-right", "foo bar|(x) # foo bar(x)"},
      {"foo bar(x)| # foo bar(x) / y # y", "C-right", "foo bar(x) # foo bar(x) / |y # y"},
      {"foo bar(|x) # foo bar(x)", "C-left C-left", "foo |bar(x) # foo bar(x)"},
      {"foo   |bar # foo   bar", "C-left", "|foo   bar # foo   bar"},
      {"fo[o  b|ar # foo  bar", "C-S-right", "fo[o  bar| # foo  bar"},
      // Rows, pages and ends.
      {"a|b # ab / cd # cd", "home", "|ab # ab / cd # cd"},
      {"a|b # ab / cd # cd", "S-end", "a[b| # ab / cd # cd"},
      {"ab # ab / c|d # cd", "C-home", "|ab # ab / cd # cd"},
      {"a|b # ab / cd # cd~", "C-end", "ab # ab / cd| # cd~"},
      {"ab # ab / c|d # cd", "C-S-home", "|ab # ab / c[d # cd"},
      {"ab # ab / c|d # cd", "pageup", "a|b # ab / cd # cd"},
      {"a|b # ab / cd # cd", "pagedown", "ab # ab / c|d # cd"},
      // The x of the last sideways move is kept over shorter rows, and falls on the nearest side of a tab.
      {"abcd| # abcd / e # e / fghi # fghi", "down", "abcd # abcd / e| # e / fghi # fghi"},
      {"abcd| # abcd / e # e / fghi # fghi", "down down", "abcd # abcd / e # e / fghi| # fghi"},
      {"a|b # ab / \tc # \tc", "down", "ab # ab / |\tc # \tc"},
      {"abc| # abc / \td # \td", "down", "abc # abc / \t|d # \td"},
  };
  for (const Case& c : cases) EXPECT_EQ(pressed(c.before, c.keys), c.after) << c.before << " : " << c.keys;
}

/// A text of `rows` lines, on both sides; every row in `extra` is on the right side alone.
FileComparison longComparison(uint32_t rows, const std::vector<uint32_t>& extra) {
  std::string texts[2];
  for (uint32_t row = 0; row < rows; ++row) {
    const std::string line = "row " + std::to_string(row) + "\n";
    if (std::find(extra.begin(), extra.end(), row) == extra.end()) texts[0] += line;
    texts[1] += line;
  }
  return comparisonOf(texts[0], texts[1]);
}

TEST(Navigation, ScrollingKeysLeaveTheCaretAndPagesTakeItAlong) {
  MarkedView marked("|a # a");
  ViewState& view = marked.state();
  view.take(longComparison(100, {}), AfterComparison::top);
  struct Case {
    const char* keys;
    uint32_t topRow, caretRow;
  };
  const Case cases[] = {
      {"C-down C-down", 2, 0}, {"C-up", 1, 0},          {"C-S-down", 1, 1},    {"C-pagedown", 11, 1},
      {"C-pageup", 1, 1},      {"pagedown", 11, 11},    {"down down", 11, 13}, {"up up up", 10, 10},
      {"C-end", 90, 99},       {"C-up", 89, 99},        {"C-S-up", 89, 98},    {"pageup", 79, 88},
      {"C-home", 0, 0},        {"C-pageup C-up", 0, 0}, {"pageup", 0, 0},      {"pagedown down", 10, 11},
  };
  for (const Case& c : cases) {
    marked.press(c.keys);
    EXPECT_EQ(view.caretRow(), c.caretRow) << c.keys;
    EXPECT_EQ(view.topRow(), c.topRow) << c.keys;
  }
  selectAll(view);
  EXPECT_EQ(view.selectionBegin(), 0u);
  EXPECT_EQ(view.selectionEnd(), view.text(0).size() - 1);
  EXPECT_EQ(view.topRow(), 90u);
}

TEST(Navigation, DifferencesAreFoundAroundABlock) {
  // Rows 2-3, 4 and 8 are differences, as three blocks.
  DiffModel model;
  const char statuses[] = "0022100030";
  for (const char status : std::string_view(statuses))
    model.addRow(static_cast<RowStatus>(status - '0'), 0, 0);
  const RowRange first{2, 4}, second{4, 5}, third{8, 9};
  struct Case {
    uint32_t row;
    std::optional<RowRange> previous, previousWrapped, next, nextWrapped, nearest;
  };
  const Case cases[] = {
      {0, std::nullopt, third, first, first, first},
      {1, std::nullopt, third, first, first, first},
      {2, first, third, second, second, first},
      {3, first, third, second, second, first},
      {4, first, first, third, third, second},
      {6, second, second, third, third, second},  // midway: the one above
      {7, second, second, third, third, third},
      {8, second, second, third, first, third},
      {9, third, third, std::nullopt, first, third},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(previousDifference(model, c.row, false), c.previous) << c.row;
    EXPECT_EQ(previousDifference(model, c.row, true), c.previousWrapped) << c.row;
    EXPECT_EQ(nextDifference(model, c.row, false), c.next) << c.row;
    EXPECT_EQ(nextDifference(model, c.row, true), c.nextWrapped) << c.row;
    EXPECT_EQ(nearestDifference(model, c.row), c.nearest) << c.row;
  }
  DiffModel same;
  for (int row = 0; row < 3; ++row) same.addRow(RowStatus::same, 0, 0);
  EXPECT_EQ(nextDifference(same, 1, true), std::nullopt);
  EXPECT_EQ(previousDifference(same, 1, true), std::nullopt);
  EXPECT_EQ(nearestDifference(same, 1), std::nullopt);
}

TEST(Navigation, GoingToADifferenceBringsItIntoView) {
  MarkedView marked("|a # a");
  ViewState& view = marked.state();
  view.take(longComparison(100, {5, 30, 31, 60, 61, 62, 63, 64, 65, 66, 67, 68}), AfterComparison::top);
  struct Case {
    bool next;
    uint32_t caretRow, topRow;
  };
  const Case cases[] = {
      {true, 5, 0},     // in view already
      {true, 30, 26},   // two rows centred among ten
      {true, 60, 59},   // too high to centre: one row above it
      {true, 5, 1},     // wrapped
      {false, 60, 59},  // and back
  };
  for (const Case& c : cases) {
    EXPECT_TRUE(c.next ? goToNextDifference(view) : goToPreviousDifference(view));
    EXPECT_EQ(view.caretRow(), c.caretRow);
    EXPECT_EQ(view.topRow(), c.topRow) << c.caretRow;
    EXPECT_FALSE(view.hasSelection());
  }
  EXPECT_EQ(caretNumbers(view), (CaretNumbers{61, 0, 1}));
  switchPane(view);
  EXPECT_EQ(caretNumbers(view), (CaretNumbers{61, 61, 1}));
  view.goToRow(view.topRow());
  EXPECT_EQ(view.topRow(), 55u);  // the top row counts as not in view
}

TEST(Navigation, TheMousePlacesAndSelects) {
  const char* const rows = "|foo bar # foo bar / - # xy / a\tb # a\tb";
  const auto clicked = [&](int clicks, int32_t x, int32_t y) {
    MarkedView view(rows);
    MouseSelection(view.state()).press(x, y, clicks, false);
    return view.marked();
  };
  constexpr int32_t right = 2 * (8 + 320 + 10) / 2 + 10 + 8;  // the right pane's text
  EXPECT_EQ(clicked(1, 8 + 19, 3), "fo|o bar # foo bar / - # xy / a\tb # a\tb");
  EXPECT_EQ(clicked(1, 8 + 21, 3), "foo| bar # foo bar / - # xy / a\tb # a\tb");
  EXPECT_EQ(clicked(1, 300, 20), "foo bar # foo bar / |- # xy / a\tb # a\tb");
  EXPECT_EQ(clicked(1, 2, 400), "foo bar # foo bar / - # xy / |a\tb # a\tb");
  EXPECT_EQ(clicked(1, right + 17, 20), "foo bar # foo bar / - # xy| / a\tb # a\tb");
  EXPECT_EQ(clicked(2, 8 + 55, 3), "foo [bar| # foo bar / - # xy / a\tb # a\tb");
  EXPECT_EQ(clicked(3, 8 + 42, 3), "[foo bar # foo bar / |- # xy / a\tb # a\tb");
  EXPECT_EQ(clicked(3, 8 + 42, 40), "foo bar # foo bar / - # xy / [a\tb | # a\tb");

  MarkedView view(rows);
  MouseSelection mouse(view.state());
  mouse.press(8 + 32, 3, 1, true);
  EXPECT_EQ(view.marked(), "[foo |bar # foo bar / - # xy / a\tb # a\tb");
  mouse.press(8 + 42, 3, 2, false);
  mouse.drag(8 + 3, 3);
  EXPECT_EQ(view.marked(), "|foo bar[ # foo bar / - # xy / a\tb # a\tb");
  mouse.drag(8 + 3, 40);
  EXPECT_EQ(view.marked(), "foo [bar # foo bar / - # xy / a|\tb # a\tb");
  mouse.press(right + 3, 3, 1, true);
  EXPECT_EQ(view.marked(), "foo bar # |foo bar / - # xy / a\tb # a\tb") << "nothing is selected across panes";
}

TEST(Navigation, DraggingOutOfViewScrollsOn) {
  MarkedView marked("|a # a");
  ViewState& view = marked.state();
  view.take(longComparison(100, {}), AfterComparison::top);
  MouseSelection mouse(view);
  mouse.press(10, 10, 1, false);
  for (int tick = 0; tick < 3; ++tick) mouse.drag(10, 170);
  EXPECT_EQ(view.caretRow(), 12u);
  EXPECT_EQ(view.topRow(), 3u);
  for (int tick = 0; tick < 9; ++tick) mouse.drag(10, -20);
  EXPECT_EQ(view.caretRow(), 0u);
  EXPECT_FALSE(view.hasSelection());
}

TEST(Navigation, SidewaysScrollingKeepsTheCaretInView) {
  MarkedView marked("|" + std::string(100, 'a') + " # " + std::string(100, 'a'));
  ViewState& view = marked.state();
  ASSERT_EQ(view.visibleColumns(0), 40u);
  for (int i = 0; i < 39; ++i) marked.press("right");
  EXPECT_EQ(view.hScroll(0), 0u);
  marked.press("right");
  EXPECT_EQ(view.hScroll(0), 11u);
  EXPECT_EQ(view.hScroll(1), 0u);
  EXPECT_EQ(view.caretX(), 29 * 8);
  marked.press("end");
  EXPECT_EQ(view.hScroll(0), view.maxHScroll(0));
  EXPECT_EQ(view.maxHScroll(0), 62u);  // the pilcrow's column and one for the caret
  ViewOptions options = view.options();
  options.syncScroll = true;
  view.setOptions(options);
  EXPECT_EQ(view.hScroll(1), 62u);
  marked.press("home");
  EXPECT_EQ(view.hScroll(0), 0u);
  EXPECT_EQ(view.hScroll(1), 0u);
}

}  // namespace
}  // namespace merivane
