// What the user does, key by key: moving through the texts, editing them, finding in them.

#include <gtest/gtest.h>

#include <algorithm>

#include "mergeview/differences.h"
#include "mergeview/editor.h"
#include "mergeview/find.h"
#include "mergeview/navigation.h"
#include "tests/support/edit_run.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

/// Presses keys and expects what stands in brackets behind them: "(1,3)" is EditRun::place(), "(1,3: a/ # b)"
/// adds both texts with "/" for line ends, and "{.lb}" is what has to be repainted, "{*}" whatever that is.
/// All of it can be undone and done again.
void expectWalk(EditRun& run, std::string_view walk) {
  for (size_t begin; (begin = walk.find_first_of("({")) != std::string_view::npos;) {
    const size_t end = walk.find_first_of(")}", begin);
    const std::string_view expected = walk.substr(begin + 1, end - begin - 1);
    run.press(walk.substr(0, begin));
    std::string found;
    if (walk[begin] == '{') {
      found = changesText(run.view().takeChanges());
      if (expected == "*") found = expected;
    } else {
      found = run.place();
      if (expected.find(':') != std::string_view::npos) found += ": " + run.text(0) + " # " + run.text(1);
      std::replace(found.begin(), found.end(), '\n', '/');
    }
    EXPECT_EQ(found, expected) << "at " << walk;
    EXPECT_EQ(run.fault(), "") << "at " << walk;
    walk.remove_prefix(end + 1);
  }
  EXPECT_EQ(run.undoAndRedoAll(), "");
  EXPECT_EQ(run.host().outOfMemory, 0);
}

void expectWalk(EditRun&& run, std::string_view walk) { expectWalk(run, walk); }

/// The same in "left # right" with "/" for line ends.
void expectWalk(std::string texts, std::string_view walk) {
  SCOPED_TRACE(texts);
  std::replace(texts.begin(), texts.end(), '/', '\n');
  const size_t left = texts.find(" # ");
  expectWalk(EditRun(texts.substr(0, left), texts.substr(left + 3)), walk);
}

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
  ViewOptions options = run.view().options();
  for (const bool together : {false, true}) {
    options.syncScroll = together;
    run.view().setOptions(options);
    EXPECT_EQ(run.view().hScroll(1), together ? 0u : 62u);
    run.press("home");
  }
}

TEST(Navigation, AnotherComparisonKeepsThePlaceOrGoesToTheFirstDifference) {
  std::string text, more = "more\n";
  for (int row = 0; row < 50; ++row) text += "line\n";
  EditRun run(text, text);
  run.press("C-end click1@364,50 S-click1@380,83");
  run.load(text, text + more, AfterComparison::keepPlace);
  expectWalk(run, "(43,1-45,3 top 40)");
  run.load("ab\nc", "ab\nc", AfterComparison::keepPlace);
  expectWalk(run, "(1,1)");
  run.load(text, text + more + more, AfterComparison::firstDifference);
  expectWalk(run, "(50,0 top 42) switch-pane (50,0 top 42)");
  run.load(text, text, AfterComparison::firstDifference);
  expectWalk(run, "(0,0)");
}

TEST(Navigation, TheCaretKeepsItsTextWhenWidthsChange) {
  EditRun run("\tab\n", "x\n\tab\n");
  ViewState& view = run.view();
  run.press("switch-pane down right right");
  ViewOptions options = view.options();
  options.tabStop = 8;
  options.lineNumbers = LineNumbers::rows;
  view.setOptions(options);
  EXPECT_TRUE(view.caretX() == 72 && view.pane(0).textLeft == 8 + 12) << "one digit and its padding";
  FontMetrics font;
  font.charWidth = 10;
  font.lineHeight = 20;
  view.setFont(font);
  EXPECT_EQ(caretNumbers(view), (CaretNumbers{2, 2, 10}));
  EXPECT_TRUE(view.caretX() == 90 && view.caretY() == 20 && view.visibleRows() == 8);
  run.press("C-home switch-pane");
  EXPECT_EQ(caretNumbers(view), (CaretNumbers{1, 0, 1})) << "a filler";
  view.setSplitFromX(150);
  EXPECT_TRUE(view.pane(0).paneRight == 140 && view.visibleColumns(0) == 12);
}

TEST(Navigation, DifferencesAreFoundAroundABlock) {
  // For each row the first row of what is found from there.
  const auto found = [](std::string_view rows, auto find) {
    const DiffModel model = modelOf(rows);
    std::string digits;
    for (uint32_t row = 0; row < model.rowCount(); ++row) {
      const std::optional<RowRange> block = find(model, row);
      digits += block && *block == model.blockAround(block->begin) ? std::to_string(block->begin) : "-";
    }
    return digits;
  };
  using M = const DiffModel&;
  const auto rows = "!=>><===!=";
  EXPECT_EQ(found(rows, [](M m, uint32_t row) { return previousDifference(m, row, false); }), "0000244448");
  EXPECT_EQ(found(rows, [](M m, uint32_t row) { return previousDifference(m, row, true); }), "8000244448");
  EXPECT_EQ(found(rows, [](M m, uint32_t row) { return nextDifference(m, row, false); }), "224488888-");
  EXPECT_EQ(found(rows, [](M m, uint32_t row) { return nextDifference(m, row, true); }), "2244888800");
  EXPECT_EQ(found(rows, nearestDifference), "0022444888") << "midway the one above";
  EXPECT_EQ(found("==", nearestDifference) + found("=!", nearestDifference), "--11");
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

TEST(Editing, KeysChangeTheTextAtTheCaret) {
  // Typing, and where the row comes to stand by it.
  expectWalk("ab/ # ab/",
             "right x C-x (0,2: axb/ # ab/) undo (0,1: ab/ # ab/) y undo redo redo (0,2: ayb/ # ab/)");
  expectWalk(" # ", "x y (0,2: xy # )");
  expectWalk("b/ # ab/", "a (0,1: ab/ # ab/)");
  expectWalk("foo bar/ # foo bar/new/", "end enter n e w (1,3: foo bar/new/ # foo bar/new/)");
  expectWalk("x/y/ # x/new/y/", "down n e w enter (2,0: x/new/y/ # x/new/y/)");
  expectWalk("ab/cd/ # ab/cd/", "right S-down enter (1,0: a/d/ # ab/cd/)");
  expectWalk("a/b # a/long line/", "end down down c (1,2: a/bc # a/long line/)");
  // Overwriting stops at the end of the line, and takes a selection away.
  expectWalk("ab/ # ab/", "insert x y z (0,3: xyz/ # ab/) C-home insert q (0,1: qxyz/ # ab/)");
  expectWalk("ab # ab", "right insert x y (0,3: axy # ab) undo (0,2: ax # ab)");
  expectWalk("ab/ # ab/", "right S-right insert x (0,2: ax/ # ab/)");
  // Deleting characters and line ends.
  expectWalk("abc/ # abc/", "backspace end backspace (0,2: ab/ # abc/) left delete (0,1: a/ # abc/)");
  expectWalk("a/b/ # a/b/", "down backspace (2,1: ab/ # a/b/) undo (1,0) up end delete (2,1: ab/ # a/b/)");
  expectWalk("abcd/ # abcd/", "right S-right S-right backspace (0,1: ad/ # abcd/)");
  expectWalk("ab # ab", "end delete (0,2: ab # ab) home S-right delete (0,0: b # ab)");
  // Beside a filler they only move the caret, unless that stands behind an unended last line.
  expectWalk("a/b/ # a/new/b/", "down down backspace (1,0: a/b/ # a/new/b/) delete (2,0: a/b/ # a/new/b/)");
  expectWalk("a/b/ # a/new/b/", "down down end backspace (3,0: a// # a/new/b/)");
  expectWalk("a/b # a/long line/",
             "C-end delete (2,0: a/b # a/long line/) backspace (1,0: a/ # a/long line/)");
  // Rows and their ends.
  expectWalk("a/bc/d/ # a/bc/d/",
             "down right delete-row (2,0: a/d/ # a/bc/d/) end undo (1,1: a/bc/d/ # a/bc/d/)");
  expectWalk("a/bc/ # a/bc/", "down S-right delete-row delete-row (1,0: a/ # a/bc/)");
  expectWalk("abc/c/ # abc/c/",
             "right right delete-to-end (0,2: ab/c/ # abc/c/) left S-right delete-to-end (0,2)");
  expectWalk("ab # ab", "delete-to-end (0,0:  # ab)");
  expectWalk(
      "ab/cd # ab/cd",
      "clip-line C-end paste (1,5: ab/cdab/ # ab/cd) delete-to-end (1,5: ab/cdab/ # ab/cd) C-left (1,4)");
  // Clipboard.
  expectWalk("ab/cd/ # ab/cd/", "right S-down copy end enter paste (3,1: ab/cd/b/c/ # ab/cd/)");
  expectWalk("abcd/ # abcd/", "right S-right S-right cut end paste (0,4: adbc/ # abcd/)");
  expectWalk("ab/ # ab/", "right copy cut paste (0,1: ab/ # ab/)");
  expectWalk("ab/ # ab/cd/", "switch-pane down clip-line paste (2,0: ab/ # ab/cd/cd/)");
  expectWalk("x/y/b/ # b/", "clip-block paste (2,0: x/y/x/y/b/ # b/)");
  // Undo and redo put the caret where the edit was.
  expectWalk("abc/ # abc/",
             "right S-right x left left undo (0,1-0,2: abc/ # abc/) home redo (0,2: axc/ # abc/)");
  expectWalk("a/b/ # a/x/b/", "down y undo (1,0: a/b/ # a/x/b/)");
}

TEST(Editing, RowsAndBlocksAreCopiedAndDeleted) {
  // Lines that one side lacks, and their blocks.
  expectWalk(
      "a/b/ # a/x/y/b/",
      "down copy-line-left (1,0: a/x/b/ # a/x/y/b/) undo down copy-block-left (2,0: a/x/y/b/ # a/x/y/b/) "
      "undo switch-pane S-right copy-line-left (2,0-2,1: a/y/b/ # a/x/y/b/) undo copy-block-left (2,0-2,1)");
  expectWalk(
      "a/x/y/b/ # a/b/",
      "down end copy-line-right (1,1: a/x/y/b/ # a/x/b/) undo copy-block-right (1,1: a/x/y/b/ # a/x/y/b/)");
  // Changed lines: a caret behind the shorter line comes back.
  expectWalk("abcdefgh/ # abcdef/",
             "end copy-line-left (0,6: abcdef/ # abcdef/) undo home copy-line-left (0,0)");
  expectWalk("abcde/x/ # abcdef/x/",
             "right right right S-right S-right copy-block-left (0,5: abcdef/x/ # abcdef/x/) undo "
             "copy-block-right (0,3-0,5: abcde/x/ # abcde/x/)");
  expectWalk("abcd/bcdefgh/ # abce/bcde/", "down end copy-block-left (1,4: abce/bcde/ # abce/bcde/)");
  // What there is nothing to copy for.
  expectWalk("x/a/ # a/",
             "copy-line-left copy-block-left (0,0: x/a/ # a/) down {*} copy-line-left copy-line-right "
             "copy-block-left copy-block-right {}");
  // Last lines without a line end.
  expectWalk("c/ # long line/bb", "down copy-line-left (0,0: bb/c/ # long line/bb)");
  expectWalk("a/x # a/long line/",
             "switch-pane down down copy-line-left (2,0: a/x/long line/ # a/long line/)");
  expectWalk("abcd/ # abce", "right right right copy-line-left (0,2: abce # abce)");
  expectWalk("abcd # abce/", "right right right copy-line-left (0,3: abce/ # abce/)");
  // Deleting.
  expectWalk("a/b/ # a/x/y/b/",
             "down delete-line delete-block (1,0: a/b/ # a/x/y/b/) switch-pane down end "
             "delete-line (2,0: a/b/ # a/x/b/) undo (2,1) delete-block (1,0: a/b/ # a/b/)");
  expectWalk("a/b/ # a/b/x/", "down end delete-block (2,0:  # a/b/x/)");
}

TEST(Changes, AnActionTellsNoMoreThanWhatItChanged) {
  expectWalk("a/b/c/d/ # a/b/c/d/",
             "down {caret} right left {caret} home {} S-right {.l caret} S-down {.ll caret} S-down S-up "
             "{..ll caret} left {.ll caret} switch-pane {caret} insert {caret} insert {caret}");
  // Typing into a row that stays one of its kind, and what aligns the rows anew.
  expectWalk("ab/x/ # x/",
             "z {l caret history modified} z {l caret history} enter {caret ranges all history} "
             "undo {caret ranges all history} redo {*}");
  expectWalk("x/ # x/ab/", "switch-pane down {*} z {.r caret history modified}");
  expectWalk("abcdef/x/ # abcdeg/x/", "z {b caret history modified} delete {b history}");
  expectWalk(longRun(),
             "down {caret} pagedown {caret scrolled} C-down {scrolled} C-home {caret scrolled} "
             "enter {caret ranges all history modified} undo {*} copy-line-left {}");
  expectWalk("a/b/ # a/x/b/", "next-difference {caret} copy-block-left {*}");
}

TEST(Changes, WhatIsAlreadySoTellsNothing) {
  EditRun run = longRun();
  ViewState& view = run.view();
  const auto changes = [&] { return changesText(view.takeChanges()); };
  ViewOptions options = view.options();
  view.setOptions(options);
  view.setFont(view.font());
  view.resize(view.width(), view.height());
  view.setSplitFromX(view.splitX());
  view.scrollTo(0);
  EXPECT_EQ(changes(), "");
  options.colours.same = 0;
  view.setOptions(options);
  EXPECT_EQ(changes(), "all");
  options.lineNumbers = LineNumbers::rows;
  view.setOptions(options);
  EXPECT_EQ(changes(), "ranges edges all");
  view.setSplitFromX(view.splitX() + 40);
  EXPECT_EQ(changes(), "ranges edges");
  view.resize(view.width(), view.height() + 1);
  EXPECT_EQ(changes(), "edges");
}

TEST(Editing, AReadOnlySideIsLeftAloneAndSomeCharactersOnlyBeep) {
  EditRun run("abc\n", "abd\n");
  run.view().file(0).readOnly = true;
  expectWalk(
      run,
      "right S-right x enter backspace delete cut delete-row delete-to-end paste copy-line-left delete-line "
      "insert x insert (0,1-0,2: abc/ # abd/)");
  EXPECT_FALSE(run.history().canUndo());
  run.view().file(0).readOnly = false;
  Editor editor(run.view(), run.history());
  editor.characterInput('\n', 2, false);
  editor.characterInput('\x1B', 1, false);
  editor.characterInput('\x1B', 1, true);
  editor.characterInput('x', 0, false);
  editor.characterInput('\t', 3, false);
  EXPECT_EQ(run.host().beeps, 3);
  EXPECT_EQ(run.text(0), "a\t\t\tc\n");
}

TEST(Editing, TheClipboardHasItsOwnLineEnds) {
  EditRun run("ab\ncd", "ab\ncd");
  ASSERT_TRUE(run.host().clipboard.assign("x\r\ny\rz\r\n"));
  expectWalk(run, "paste (2,0: x/y\rz/ab/cd # ab/cd) C-home S-down S-down copy");
  EXPECT_EQ(run.host().clipboard.view(), "x\r\ny\rz\r\n");
  run.host().clipboard.clear();
  run.press("undo paste");
  EXPECT_TRUE(run.history().canRedo()) << "pasting nothing is no edit";
  expectWalk(run, "S-right paste (0,0: b/cd # ab/cd)");
}

TEST(Find, GoesOnBehindTheSelectionAndOnceAround) {
  expectWalk("ab ab/ab # ab ab/x/ab",
             "find-next (0,0-0,2) find-next (0,3-0,5) find-next (2,0-2,2) find-next (0,0-0,2) "
             "find-previous (2,0-2,2) find-previous (0,3-0,5) C-home down find-previous (0,3-0,5)");
  // The row where it began is searched again, from its start; the other side is not.
  expectWalk("x ab/ # x ab/", "end find-next (0,2-0,4) left left find-previous (0,2-0,4)");
  expectWalk("cd/ # cd/ab/", "find-next find-previous (0,0)");
  // A selection over several rows is left out whole.
  expectWalk("ab/ab/ab/cab/ # ab/ab/ab/cab/", "down down end S-up S-up S-left S-left find-next (3,1-3,3)");
  expectWalk("ab/ab/ab/ # ab/ab/ab/", "down right S-down S-right find-previous (0,0-0,2)");
}

TEST(Find, MatchesInAStretch) {
  using Places = std::vector<std::optional<uint32_t>>;
  const auto found = [](std::string_view stretch, const FindQuery& query) {
    return Places{findFirst(stretch, query), findLast(stretch, query)};
  };
  const Places none(2);
  EXPECT_EQ(found("abcAbC\n", {"aBc"}), Places({0, 3}));
  EXPECT_EQ(found("\xC4\xE4", {"\xE4"}), Places({1, 1})) << "only A to Z have another case";
  EXPECT_TRUE(found("ab", {"abc"}) == none && found("abc", {""}) == none);
  EXPECT_EQ(found("ABCabc", {"abc", true}), Places({3, 3}));
  EXPECT_EQ(found("aaaa", {"aa", true}), Places({0, 2}));
  for (const char* part : {"ab_c", "ab1", "xab"}) EXPECT_EQ(found(part, {"ab", true, true}), none) << part;
  EXPECT_EQ(found("ab-cab ab", {"ab", true, true}), Places({0, 7}));
  EXPECT_EQ(found("ab\xE4 ab abc\n", {"ab", true, true}), Places({0, 4}));
}

}  // namespace
}  // namespace merivane
