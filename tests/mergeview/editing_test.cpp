// What the user does to the texts: typing, the clipboard, copying and deleting rows and differences; and
// find.

#include <gtest/gtest.h>

#include "mergeview/editor.h"
#include "mergeview/find.h"
#include "tests/support/walk.h"

namespace merivane {
namespace {

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

TEST(Editing, RepaintsNoMoreThanWhatLooksDifferent) {
  expectWalk("ab/x/ # x/", "z {l} enter {all}");
  expectWalk("x/ # x/ab/", "switch-pane down {*} z {.r}");
  expectWalk("abcdef/x/ # abcdeg/x/", "z delete {b} copy-line-left {all} z {all}");
  expectWalk("abcd/efgh/x/ # x/", "right right S-down {*} delete {all}");
  // The caret marks its row in both panes, the selection its own side's rows.
  expectWalk(
      "a/b/c/d/ # a/b/c/d/",
      "down {bb} right left {} S-right {.l} S-down {.bb} S-down S-up {..bb} left {.ll} switch-pane {..b}");
}

TEST(Editing, AReadOnlySideIsLeftAloneAndSomeCharactersOnlyBeep) {
  EditRun run("abc\n", "abd\n");
  run.view().documents().readOnly[0] = true;
  expectWalk(
      run,
      "right S-right x enter backspace delete cut delete-row delete-to-end paste copy-line-left delete-line "
      "insert x insert (0,1-0,2: abc/ # abd/)");
  EXPECT_FALSE(run.history().canUndo());
  run.view().documents().readOnly[0] = false;
  Editor editor(run.view(), run.history());
  editor.characterInput('\n', 2, false);
  editor.characterInput('\x1B', 1, false);
  EXPECT_EQ(run.host().beeps, 3);
  editor.characterInput('\x1B', 1, true);
  editor.characterInput('x', 0, false);
  editor.characterInput('\t', 3, false);
  EXPECT_EQ(run.host().beeps, 3);
  EXPECT_EQ(run.text(0), "a\t\t\tc\n");
}

TEST(Editing, TheClipboardHasItsOwnLineEnds) {
  EditRun run("ab\ncd", "ab\ncd");
  ASSERT_TRUE(run.host().clipboard.assign("x\r\ny\rz\r\n"));
  run.press("paste");
  EXPECT_EQ(run.text(0), "x\ny\rz\nab\ncd");
  run.press("C-home S-down S-down copy");
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
  // Only A to Z have another case, and only letters of the first half of the character set make words.
  struct Case {
    const char* stretch;
    const char* text;
    bool matchCase, wholeWord;
    int first, last;  // -1 for none
  };
  const Case cases[] = {
      {"abcabc\n", "abc", true, false, 0, 3}, {"abcabc", "ABC", true, false, -1, -1},
      {"abcAbC", "aBc", false, false, 0, 3},  {"\xC4\xE4", "\xE4", false, false, 1, 1},
      {"ab", "abc", false, false, -1, -1},    {"abc", "", false, false, -1, -1},
      {"aaaa", "aa", true, false, 0, 2},      {"ab_c ab", "ab", true, true, 5, 5},
      {"xab ab\n", "ab", true, true, 4, 4},   {"ab1", "ab", true, true, -1, -1},
      {"ab\xE4", "ab", true, true, 0, 0},     {"a-b a.b", "a", true, true, 0, 4},
  };
  for (const auto& [stretch, text, matchCase, wholeWord, first, last] : cases) {
    const FindQuery query{text, matchCase, wholeWord};
    EXPECT_EQ(static_cast<int>(findFirst(stretch, query).value_or(-1)), first) << stretch << " / " << text;
    EXPECT_EQ(static_cast<int>(findLast(stretch, query).value_or(-1)), last) << stretch << " / " << text;
  }
}

}  // namespace
}  // namespace merivane
