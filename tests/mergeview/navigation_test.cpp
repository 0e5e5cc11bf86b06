// Moving through the texts: keys, mouse, differences, and what is scrolled into view.

#include <gtest/gtest.h>

#include "mergeview/navigation.h"
#include "tests/mergeview/walk.h"

namespace merivane {
namespace {

TEST(Navigation, KeysMoveTheCaretAndExtendTheSelection) {
  // Over the ends of rows, and through a filler, which holds the caret at its start.
  expectWalk("ab/cd/xyz # ab/longer/cd/xyz",
             "left (|ab/~cd/xyz) right (a|b/~cd/xyz) right (ab|/~cd/xyz) right (ab/|~cd/xyz) end "
             "(ab/|~cd/xyz) right (ab/~|cd/xyz) left left (ab|/~cd/xyz) "
             "down down (ab/~cd|/xyz) S-left (ab/~c|d^/xyz) S-up (ab/|~cd^/xyz) S-up (a|b/~cd^/xyz) left "
             "(|ab/~cd/xyz) S-end (^ab|/~cd/xyz) "
             "C-end (ab/~cd/xyz|) right (ab/~cd/xyz|) up C-S-home (|ab/~cd^/xyz) pagedown (ab/~cd/|xyz) end "
             "S-home (ab/~cd/|xyz^) pageup (|ab/~cd/xyz) "
             "select-all (^ab/~cd/xyz|) switch-pane (ab/longer/cd/xyz|) C-home down end (ab/longer|/cd/xyz) "
             "switch-pane (ab/|~cd/xyz) switch-pane (ab/longer|/cd/xyz)");
  // Nothing leads after the last line end.
  expectWalk("ab/ # ab/", "end right (ab|/) C-end (ab|/) select-all (^ab|/)");
  // Words and the signs between them.
  expectWalk("foo  b\xE4r[x]/y # foo  b\xE4r[x]/y",
             "C-right (foo  |b\xE4r[x]/y) C-right (foo  b\xE4r|[x]/y) C-right C-right C-right (foo  "
             "b\xE4r[x]|/y) C-right (foo  b\xE4r[x]/|y) C-left (foo  b\xE4r[x]|/y) "
             "C-left C-left (foo  b\xE4r[|x]/y) C-left C-left (foo  |b\xE4r[x]/y) C-S-left (|foo  "
             "^b\xE4r[x]/y) C-left (|foo  b\xE4r[x]/y)");
  // The x of the last sideways move is kept over shorter rows, and falls on the nearest side of a tab.
  expectWalk("abcd/e/\tx/ab # abcd/e/\tx/ab",
             "end down (abcd/e|/\tx/ab) down (abcd/e/\t|x/ab) C-home right right right down (abcd/e|/\tx/ab) "
             "down (abcd/e/\t|x/ab) "
             "C-home right right down down (abcd/e/\t|x/ab) C-home right down down (abcd/e/|\tx/ab)");
}

TEST(Navigation, WhatIsGoneToComesIntoView) {
  // Scrolling keys leave the caret, and pages take it along.
  expectWalk(
      longRun(),
      "C-down C-down (0,0 top 2) C-up (0,0 top 1) C-S-down (0,0-1,0 top 1) C-pagedown (0,0-1,0 top 11) "
      "C-pageup (0,0-1,0 top 1) pagedown (11,0 top 11) down down (13,0 top 11) up up up (10,0 top 10) "
      "C-end (99,2 top 90) C-up (99,2 top 89) C-S-up (99,2-98,2 top 89) pageup (88,2 top 79) "
      "C-home C-pageup C-up pageup (0,0) pagedown down (11,0 top 10) select-all (0,0-99,2 top 90)");
  // Two rows are centred; more than fit have one above them; the top row is as good as out of view.
  expectWalk(longRun(" 5 30 31 60 61 62 63 64 65 66 67 68 "),
             "next-difference (5,0) next-difference (30,0 top 26) next-difference (60,0 top 59) "
             "next-difference (5,0 top 1) previous-difference (60,0 top 59) "
             "C-home C-down C-down C-down C-down C-down next-difference (5,0 top 1)");
}

TEST(Navigation, SidewaysScrollingKeepsTheCaretInView) {
  const std::string line = std::string(100, 'a') + "\n";
  EditRun run(line, line);
  for (int i = 0; i < 39; ++i) run.press("right");
  // A quarter of the pane on; at the end there is a column for the line end and one for the caret.
  expectWalk(run, "(0,39) right (0,40 left 11) end (0,100 left 62) x y (0,102 left 64)");
}

TEST(Navigation, AnotherComparisonKeepsThePlaceOrGoesToTheFirstDifference) {
  std::string text, more = "more\n";
  for (int row = 0; row < 50; ++row) text += "line\n";
  EditRun run(text, text);
  run.press("C-end click1@364,50 S-click1@380,83");
  run.load(text, text + more, AfterComparison::keepPlace);
  expectWalk(run, "(43,1-45,3 top 40)");
  run.load(text, text + more + more, AfterComparison::firstDifference);
  expectWalk(run, "(50,0 top 42) switch-pane (50,0 top 42)");
}

TEST(Navigation, TheLongestLineOfTheShownTextsCanBeScrolledTo) {
  const std::string longLine = std::string(100, 'a') + '\n';
  EditRun run(longLine, "a\n");
  ViewOptions options = run.view().options();
  options.syncScroll = false;
  run.view().setOptions(options);
  const auto ranges = [&run] { return std::pair(run.view().maxHScroll(0), run.view().maxHScroll(1)); };
  EXPECT_EQ(ranges(), std::pair(62u, 0u));
  run.press("switch-sides");
  EXPECT_EQ(ranges(), std::pair(0u, 62u));
  run.load("a\n", "a\n", AfterComparison::keepPlace);
  EXPECT_EQ(ranges(), std::pair(0u, 0u)) << "what was longer has gone";
}

TEST(Navigation, MarksWithinChangedRowsAreGoneTo) {
  // "b" and "e" differ on the left, a word of the third row; the second has no marks.
  expectWalk("abcdef/same/some words/ # aBcdEf/same/some swords!/",
             "next-mark (a|bcdef/same/some words/) next-mark (abcd|ef/same/some words/) "
             "next-mark (a|bcdef/same/some words/) previous-mark (abcd|ef/same/some words/) "
             "switch-pane next-mark (aBcdEf/same/some |swords!/) next-mark (aBcdEf/same/some swords|!/)");
  // The first mark of a difference comes into view, the caret stays at its start.
  std::string line(200, 'a'), other = line;
  other[150] = 'b';
  EditRun run("x\n" + line, "x\n" + other);
  expectWalk(run, "next-difference (1,0 left 121) next-mark (1,150 left 121) home (1,0)");
}

TEST(Navigation, TheMousePlacesAndSelects) {
  // The panes' texts begin at 8 and 356.
  expectWalk("foo bar/a\tb/ # foo bar/xy/a\tb/",
             "click1@27,3 (fo|o bar/~a\tb/) click1@29,3 (foo| bar/~a\tb/) click1@300,20 (foo bar/|~a\tb/) "
             "click1@2,400 (foo bar/~|a\tb/) click1@373,20 (foo bar/xy|/a\tb/) "
             "click1@40,3 (foo |bar/~a\tb/) drag@50,20 (foo ^bar/|~a\tb/) "
             // Words, blanks and lines, and onwards from all of what was clicked, to either side.
             "click2@33,3 (foo^ |bar/~a\tb/) click2@50,3 (foo ^bar|/~a\tb/) drag@11,3 (|foo bar^/~a\tb/) "
             "drag@11,40 (foo ^bar/~a|\tb/) "
             "click3@50,3 (^foo bar/|~a\tb/) click3@50,40 (foo bar/~^a\tb/|) "
             // With Shift on from the anchor, but not from one pane to the other.
             "S-click1@11,3 (|foo bar/~^a\tb/) S-click1@375,3 (fo|o bar/xy/a\tb/)");
  // Outside the view every tick of the timer scrolls on.
  expectWalk(longRun(),
             "click1@10,10 drag@10,170 drag@10,170 drag@10,170 (0,0-12,0 top 3) "
             "drag@10,-20 (0,0-1,0 top 1) drag@10,-20 drag@10,-20 (0,0)");
}

}  // namespace
}  // namespace merivane
