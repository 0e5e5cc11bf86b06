// How the user moves through the texts: caret and selection by keys and mouse, scrolling, differences.

#include "mergeview/navigation.h"

#include <gtest/gtest.h>

#include "mergeview/differences.h"
#include "tests/support/row_pattern.h"
#include "tests/support/walk.h"

namespace merivane {
namespace {

TEST(Navigation, KeysMoveTheCaretAndExtendTheSelection) {
  // Over the ends of rows, and through a filler, which holds the caret at its start.
  expectWalk(
      "ab/cd/xyz # ab/longer/cd/xyz",
      "left (0,0) right (0,1) right (0,2) right (1,0) end (1,0) right (2,0) left left (0,2) "
      "down down (2,2) S-left (2,2-2,1) S-up (2,2-1,0) S-up (2,2-0,1) left (0,0) S-end (0,0-0,2) "
      "C-end (3,3) right (3,3) up C-S-home (2,2-0,0) pagedown (3,0) end S-home (3,3-3,0) pageup (0,0) "
      "select-all (0,0-3,3) switch-pane (3,3) C-home down end (1,6) switch-pane (1,0) switch-pane (1,6)");
  // Nothing leads behind the last line end.
  expectWalk("ab/ # ab/", "end right (0,2) C-end (0,2) select-all (0,0-0,2)");
  // Words and the signs between them.
  expectWalk("foo  b\xE4r(x)/y # foo  b\xE4r(x)/y",
             "C-right (0,5) C-right (0,8) C-right C-right C-right (0,11) C-right (1,0) C-left (0,11) "
             "C-left C-left (0,9) C-left C-left (0,5) C-S-left (0,5-0,0) C-left (0,0)");
  // The x of the last sideways move is kept over shorter rows, and falls on the nearest side of a tab.
  expectWalk("abcd/e/\tx/ab # abcd/e/\tx/ab",
             "end down (1,1) down (2,4) C-home right right right down (1,1) down (2,4) "
             "C-home right right down down (2,4) C-home right down down (2,0)");
}

/// 100 lines of text on both sides, but for some rows that only the right one has.
EditRun longRun(std::string_view onRight = {}) {
  std::string texts[2];
  for (int row = 0; row < 100; ++row) {
    const std::string line = std::to_string(row);
    const bool onlyRight = onRight.find(' ' + line + ' ') != std::string_view::npos;
    for (const int side : {0, 1}) texts[side] += side == 0 && onlyRight ? "" : line + "\n";
  }
  return EditRun(texts[0], texts[1]);
}

TEST(Navigation, WhatIsGoneToComesIntoView) {
  // Scrolling keys leave the caret, and pages take it along.
  expectWalk(
      longRun(),
      "C-down C-down (0,0 top 2) C-up (0,0 top 1) C-S-down (0,0-1,0 top 1) C-pagedown (0,0-1,0 top 11) "
      "C-pageup (0,0-1,0 top 1) pagedown (11,0 top 11) down down (13,0 top 11) up up up (10,0 top 10) "
      "C-end (99,2 top 90) C-up (99,2 top 89) C-S-up (99,2-98,2 top 89) pageup (88,2 top 79) "
      "C-home C-pageup C-up pageup (0,0) pagedown down (11,0 top 10) select-all (0,0-99,2 top 90)");
  // Two rows are centred among ten; more than fit have one row above them; the top row is as good as out of
  // view.
  expectWalk(longRun(" 5 30 31 60 61 62 63 64 65 66 67 68 "),
             "next-difference (5,0) next-difference (30,0 top 26) next-difference (60,0 top 59) "
             "next-difference (5,0 top 1) previous-difference (60,0 top 59) "
             "C-home C-down C-down C-down C-down C-down next-difference (5,0 top 1)");
}

TEST(Navigation, SidewaysScrollingKeepsTheCaretInView) {
  const std::string line(100, 'a');
  EditRun run(line + "\n", line + "\n");
  for (int i = 0; i < 39; ++i) run.press("right");
  // A quarter of the pane on; at the end there is a column for the line end and one for the caret.
  expectWalk(run, "(0,39) right (0,40 left 11) end (0,100 left 62)");
  EXPECT_EQ(run.view().hScroll(1), 0u);
  ViewOptions options = run.view().options();
  options.syncScroll = true;
  run.view().setOptions(options);
  expectWalk(run, "end (0,100 left 62) switch-pane (0,100 left 62) home (0,0) switch-pane (0,0)");
}

TEST(Navigation, AnotherComparisonKeepsThePlaceOrGoesToTheFirstDifference) {
  std::string text;
  for (int row = 0; row < 50; ++row) text += "line\n";
  EditRun run(text, text);
  run.view().activate(1);
  run.view().moveCaret(30, run.view().rowStart(1, 30) + 1, false);
  run.view().moveCaret(32, run.view().rowStart(1, 32) + 3, true);
  run.view().scrollTo(27);
  const auto placeIn = [&run](const std::string& left, const std::string& right, AfterComparison after) {
    run.load(left, right, after);
    EXPECT_EQ(run.fault(), "");
    EXPECT_EQ(run.view().activeSide(), 1);
    return run.place();
  };
  EXPECT_EQ(placeIn(text, text + "more\n", AfterComparison::keepPlace), "30,1-32,3 top 27");
  EXPECT_EQ(placeIn("ab\nc", "ab\nc", AfterComparison::keepPlace), "1,1");
  EXPECT_EQ(placeIn(text, text + "more\n", AfterComparison::firstDifference), "50,0 top 41");
  EXPECT_EQ(placeIn(text, text, AfterComparison::firstDifference), "0,0");
}

TEST(Navigation, TheCaretKeepsItsTextWhenWidthsChange) {
  EditRun run("x\n\tab\n", "x\n\tab\n");
  ViewState& view = run.view();
  run.press("down right right");
  ViewOptions options = view.options();
  options.tabStop = 8;
  options.lineNumbers = LineNumbers::rows;
  view.setOptions(options);
  EXPECT_EQ(run.place(), "1,9");
  EXPECT_EQ(view.caretX(), 72);
  EXPECT_EQ(view.pane(0).textLeft, 8 + 12);  // one digit and its padding
  FontMetrics font;
  font.charWidth = 10;
  font.lineHeight = 20;
  view.setFont(font);
  EXPECT_EQ(run.place(), "1,9");
  EXPECT_EQ(view.caretX(), 90);
  EXPECT_EQ(view.caretY(), 20);
  EXPECT_EQ(view.visibleRows(), 8u);
  view.setSplitFromX(150);
  EXPECT_EQ(view.pane(0).paneRight, 140);
  EXPECT_EQ(view.visibleColumns(0), 12u);
}

TEST(Navigation, DifferencesAreFoundAroundABlock) {
  // For each row the first row of what is found from there.
  const auto found = [](std::string_view rows, auto find) {
    const DiffModel model = modelOf(rows);
    std::string digits;
    for (uint32_t row = 0; row < model.rowCount(); ++row) {
      const std::optional<RowRange> block = find(model, row);
      EXPECT_EQ(block, block ? model.blockAround(block->begin) : block);
      digits += block ? std::to_string(block->begin) : "-";
    }
    return digits;
  };
  using M = const DiffModel&;
  const auto rows = "==>><===!=";
  EXPECT_EQ(found(rows, [](M m, uint32_t row) { return previousDifference(m, row, false); }), "--22244448");
  EXPECT_EQ(found(rows, [](M m, uint32_t row) { return previousDifference(m, row, true); }), "8888244448");
  EXPECT_EQ(found(rows, [](M m, uint32_t row) { return nextDifference(m, row, false); }), "224488888-");
  EXPECT_EQ(found(rows, [](M m, uint32_t row) { return nextDifference(m, row, true); }), "2244888822");
  EXPECT_EQ(found(rows, nearestDifference), "2222444888") << "midway the one above";
  EXPECT_EQ(found("==", nearestDifference), "--");
  EXPECT_EQ(found("==", [](M m, uint32_t row) { return nextDifference(m, row, true); }), "--");
}

TEST(Navigation, TheMousePlacesAndSelects) {
  // The panes' texts begin at 8 and 356.
  expectWalk("foo bar/a\tb/ # foo bar/xy/a\tb/",
             "click1@27,3 (0,2) click1@29,3 (0,3) click1@300,20 (1,0) click1@2,400 (2,0) click1@373,20 (1,2) "
             "click1@40,3 (0,4) drag@50,20 (0,4-1,0) "
             // Words, blanks and lines, and onwards from all of what was clicked, to either side.
             "click2@33,3 (0,3-0,4) click2@50,3 (0,4-0,7) drag@11,3 (0,7-0,0) drag@11,40 (0,4-2,1) "
             "click3@50,3 (0,0-1,0) click3@50,40 (2,0-2,6) "
             // With Shift on from the anchor, but not from one pane to the other.
             "S-click1@11,3 (2,0-0,0) S-click1@375,3 (0,2)");
  // Outside the view every tick of the timer scrolls on.
  expectWalk(longRun(),
             "click1@10,10 drag@10,170 drag@10,170 drag@10,170 (0,0-12,0 top 3) "
             "drag@10,-20 (0,0-1,0 top 1) drag@10,-20 drag@10,-20 (0,0)");
}

}  // namespace
}  // namespace merivane
