// What edits do to texts and rows, what they tell of it, and what is left where memory runs out.

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "mergeview/editor.h"
#include "tests/mergeview/walk.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/random.h"

namespace merivane {
namespace {

TEST(Editing, KeysChangeTheTextAtTheCaret) {
  // Typing, and where the row comes to stand by it.
  expectWalk("ab/ # ab/", "right x C-x (ax|b/ # ab/) undo (a|b/ # ab/) y undo redo redo (ay|b/ # ab/)");
  expectWalk(" # ", "x y (xy| # ~)");
  expectWalk("x/y/ # x/new/y/", "down n e w enter (x/new/|y/ # x/new/y/)");
  expectWalk("ab/cd/ # ab/cd/", "right S-down enter (a/|d/~~ # ~~ab/cd/)");
  expectWalk("a/b # a/long line/", "end down down c (a/bc|~ # a/~long line/)");
  // Overwriting stops at the end of the line, and takes a selection away.
  expectWalk("ab/ # ab/", "insert x y z (xyz|/~ # ~ab/) C-home insert q (q|xyz/~ # ~ab/)");
  expectWalk("ab # ab", "right insert x y (axy|~ # ~ab) undo (ax| # ab)");
  // Deleting characters and line ends.
  expectWalk("abc/ # abc/", "backspace end backspace (ab|/ # abc/) left delete (a|/~ # ~abc/)");
  expectWalk("a/b/ # a/b/", "down backspace (~~a|b/ # a/b/~) undo (a/|b/) up end delete (~~a|b/ # a/b/~)");
  expectWalk("ab # ab", "end delete (ab| # ab) home S-right delete (|b # ab)");
  // Beside a filler they only move the caret, unless that stands after an unended last line.
  expectWalk("a/b/ # a/new/b/", "down down backspace (a/|~b/ # a/new/b/) delete (a/~|b/ # a/new/b/)");
  expectWalk("a/b # a/long line/", "C-end delete (a/b|~ # a/~long line/) backspace (a/|~ # a/long line/)");
  // Rows and their ends.
  expectWalk("a/bc/d/ # a/bc/d/", "down right delete-row (a/~|d/ # a/bc/d/) end undo (a/b|c/d/ # a/bc/d/)");
  expectWalk("abc/c/ # abc/c/",
             "right right delete-to-end (ab|/c/ # abc/c/) left S-right delete-to-end (ab|/c/)");
  expectWalk(
      "ab/cd # ab/cd",
      "clip-line C-end paste (ab/cdab/| # ab/cd) delete-to-end (ab/cdab/| # ab/cd) C-left (ab/cdab|/)");
  // Clipboard.
  expectWalk("ab/cd/ # ab/cd/", "right S-down copy end enter paste (ab/cd/b/c|/ # ab/cd/~~)");
  expectWalk("abcd/ # abcd/", "right S-right S-right cut end paste (adbc|/~ # ~abcd/)");
  expectWalk("ab/ # ab/cd/", "switch-pane down clip-line paste (ab/~~ # ab/cd/|cd/)");
  // Undo and redo put the caret where the edit was.
  expectWalk("abc/ # abc/", "right S-right x left left undo (a^b|c/ # abc/) home redo (ax|c/ # abc/)");
}

TEST(Editing, RowsAndBlocksAreCopiedAndDeleted) {
  // Lines that one side lacks, and their blocks.
  expectWalk(
      "a/b/ # a/x/y/b/",
      "down copy-line-left (a/|x/~b/ # a/x/y/b/) undo down copy-block-left (a/x/|y/b/ # a/x/y/b/) "
      "undo switch-pane S-right copy-line-left (a/~y/b/ # a/x/^y|/b/) undo copy-block-left (a/x/^y|/b/)");
  expectWalk("a/x/y/b/ # a/b/",
             "down end copy-line-right (a/x|/y/b/ # a/x/~b/) undo copy-block-right (a/x|/y/b/ # a/x/y/b/)");
  // Changed lines: a caret after the shorter line comes back.
  expectWalk("abcdefgh/ # abcdef/",
             "end copy-line-left (abcdef|/ # abcdef/) undo home copy-line-left (|abcdef/)");
  expectWalk("abcde/x/ # abcdef/x/",
             "right right right S-right S-right copy-block-left (abcde|f/x/ # abcdef/x/) undo "
             "copy-block-right (abc^de|/x/ # abcde/x/)");
  // What there is nothing to copy for.
  expectWalk("x/a/ # a/",
             "copy-line-left copy-block-left (|x/a/ # ~a/) down {*} copy-line-left copy-line-right "
             "copy-block-left copy-block-right {}");
  // Last lines without a line end.
  expectWalk("a/x # a/long line/", "switch-pane down down copy-line-left (a/x/long line/ # a/~|long line/)");
  expectWalk("abcd # abce/", "right right right copy-line-left (abc|e/ # abce/)");
  // Deleting.
  expectWalk("a/b/ # a/x/y/b/",
             "down delete-line delete-block (a/|~~b/ # a/x/y/b/) switch-pane down end "
             "delete-line (a/~b/ # a/x/|b/) undo (a/x/y|/b/) delete-block (a/b/ # a/|b/)");
}

TEST(Editing, AReadOnlySideIsLeftAloneAndSomeCharactersOnlyBeep) {
  EditRun run("abc\n", "abd\n");
  run.view().file(0).readOnly = true;
  expectWalk(run,
             "right S-right x enter backspace delete cut delete-row delete-to-end paste copy-line-left "
             "delete-line insert x insert (a^b|c/ # abd/)");
  EXPECT_FALSE(run.history().canUndo());
  run.view().file(0).readOnly = false;
  const std::tuple<char, uint32_t, bool> inputs[] = {
      {'\n', 2, false}, {'\x1B', 1, false}, {'\x1B', 1, true}, {'x', 0, false}, {'\t', 3, false}};
  for (const auto& [c, count, ctrl] : inputs) {
    Editor(run.view(), run.history()).characterInput(c, count, ctrl);
  }
  EXPECT_EQ(run.host().beeps, 3);
  EXPECT_EQ(run.text(0), "a\t\t\tc\n");
}

TEST(Editing, GoesByCharacters) {
  EditRun run("\xC3\xA9o\xCC\x81\xF0\x9F\x98\x80\n", "x\n");
  expectWalk(run,
             "right right (\xC3\xA9o\xCC\x81|\xF0\x9F\x98\x80/~) delete backspace (\xC3\xA9|/~) "
             "insert \xE4\xBD\xA0 \xCC\x81 (\xC3\xA9\xE4\xBD\xA0\xCC\x81|/~) "
             "home \xC3\xBC (\xC3\xBC|\xE4\xBD\xA0\xCC\x81/~) "
             "home \xCC\x81 (\xCC\x81|\xC3\xBC\xE4\xBD\xA0\xCC\x81/~) "
             "insert home o (o\xCC\x81|\xC3\xBC\xE4\xBD\xA0\xCC\x81/~) backspace "
             "(|\xC3\xBC\xE4\xBD\xA0\xCC\x81/~)");
}

TEST(Editing, ATextOfSingleBytesTakesWhatItsCodePageHas) {
  EditRun run("\xE9\n", "\n");
  expectWalk(run, "\xE2\x82\xAC (\x80|\xE9/) \xD0\x96 (\x80|\xE9/)");
  EXPECT_EQ(run.host().refused, "The code page of this text has no '\xD0\x96' (U+0416).");
  ASSERT_TRUE(run.host().clipboard.assign("\xD0\x96\xC3\xA9\xF0\x9F\x98\x80"));
  run.host().confirms = false;
  expectWalk(run, "paste (\x80|\xE9/)");
  EXPECT_NE(run.host().asked.find(": 2 would"), std::string::npos);
  run.host().confirms = true;
  expectWalk(run, "paste (\x80?\xE9?|\xE9/~) S-home copy switch-pane \xC3\xA4 paste (\xE4\x80?\xE9?|/)");
  EXPECT_EQ(run.host().clipboard.view(), "\xE2\x82\xAC?\xC3\xA9?");
  // Between the two kinds rows are copied as characters.
  expectWalk(EditRun("abcdefgh\xE9", "abcdefgh\xD0\x96\xC3\xA9"),
             "switch-pane copy-line-left (abcdefgh?\xE9 # |abcdefgh\xD0\x96\xC3\xA9) switch-pane end x "
             "copy-line-right (abcdefgh?\xE9x| # abcdefgh?\xC3\xA9x)");
}

TEST(Editing, TheClipboardHasItsOwnLineEnds) {
  EditRun run("ab\ncd", "ab\ncd");
  ASSERT_TRUE(run.host().clipboard.assign("x\r\ny\rz\r\n"));
  expectWalk(run, "paste (x/y\rz/|ab/cd # ~~ab/cd) C-home S-down S-down copy");
  EXPECT_EQ(run.host().clipboard.view(), "x\r\ny\rz\r\n");
  run.host().clipboard.clear();
  run.press("undo paste");
  EXPECT_TRUE(run.history().canRedo()) << "pasting nothing is no edit";
  expectWalk(run, "S-right paste (|b/cd # ab/cd)");
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
  options.lineNumbers = LineNumbers::rows;
  view.setOptions(options);
  EXPECT_EQ(changes(), "ranges edges looks");
  view.setSplitFromX(view.splitX() + 40);
  EXPECT_EQ(changes(), "ranges edges");
}

TEST(EditRuns, RowsAndHistoryStayRightWhateverTheUserDoes) {
  for (uint32_t seed = 0; seed < 400; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    std::string texts[2] = {random.text("abc \t\n\n", seed % 4 == 0 ? 1500 : 60)};
    for (const char c : texts[0]) {
      const uint32_t change = random.below(40);
      if (change > 0) texts[1] += c;
      if (change < 3) texts[1] += random.text("ab\n", 9);
    }
    CompareOptions options;
    if (random.below(2) == 0) options = {random.below(2) == 0, random.below(16), random.below(2) == 0};
    if (seed % 3 == 0) {
      // Characters of several bytes, and marks that are written into whatever comes to stand before them.
      for (std::string& text : texts) {
        for (size_t at = 0; (at = text.find_first_of("bc", at)) != std::string::npos; at += 2) {
          text.replace(at, 1, text[at] == 'b' ? "\xC3\xA9" : "\xCC\x81");
        }
      }
    }
    EditRun run(texts[0], texts[1], options);
    for (int step = 0; step < 120; ++step) {
      const std::string before = run.state();
      run.host().serviceThrows = random.below(4) == 0;
      try {
        run.step([&random](uint32_t bound) { return random.below(bound); });
      } catch (const std::bad_alloc&) {
        ASSERT_EQ(run.state(), before) << "what the window throws";
      }
      ASSERT_EQ(run.fault(), "") << "step " << step << ", from " << before;
    }
    run.host().serviceThrows = false;
    ASSERT_EQ(run.undoAndRedoAll(), "");
    ASSERT_EQ(run.host().outOfMemory, 0);

    // Merging every difference to a side makes them equal.
    const int to = static_cast<int>(seed % 2);
    const std::string wanted = run.text(1 - to);
    for (uint32_t left = 2000; run.view().model().differingRows() > 0; --left) {
      ASSERT_GT(left, 0u) << run.state();
      if (run.view().activeSide() != to) run.press("switch-pane");
      run.press("C-home");
      if (run.view().model().status(0) == RowStatus::same) run.press("next-difference");
      const bool extra = fillerSide(run.view().model().status(run.view().caretRow())) == 1 - to;
      run.press(extra ? "delete-block" : to == 0 ? "copy-block-left" : "copy-line-right");
    }
    ASSERT_EQ(run.text(1 - to), wanted);
    if (options.comparesBytes()) {
      ASSERT_EQ(run.text(to), wanted);
    }
  }
}

TEST(EditRuns, RunningOutOfMemoryLeavesAllAsItWas) {
  const std::string large(5000, 'p');
  // Each with text undone before it, some with a selection; the last in a line too long to be compared anew.
  std::istringstream all(
      "c/insert c/enter/paste/delete-row/S-end cut/S-C-end delete/S-C-end paste/S-down S-down copy/"
      "S-end delete-row/copy-block-left/delete-line/clip-block/undo/redo/switch-sides/right c/right insert c/"
      "right x undo/right x undo redo");
  for (std::string keys; std::getline(all, keys, '/');) {
    SCOPED_TRACE(keys);
    const size_t action = keys.rfind(' ') + 1;
    const std::string line(keys.starts_with("right") ? 33000 : 6, 'c');
    const std::string left = "a\nb" + line + "h\nx\n" + std::string(3000, 'y') + "\nlast";
    const std::string right = "a\nb" + line + "i\nz\nlast\n";
    const auto prepared = [&] {
      auto run = std::make_unique<EditRun>(left, right);
      run->host().reportThrows = true;
      EXPECT_TRUE(run->host().clipboard.assign(large));
      run->press("down q r undo");
      run->press(keys.substr(0, action));
      return run;
    };
    std::unique_ptr<EditRun> run = prepared();
    const std::string before = run->state();
    run->press(std::string_view(keys).substr(action));
    const std::string after = run->state();
    failEachAllocation([&] { run = prepared(); },
                       [&] { return run->press(std::string_view(keys).substr(action)), false; },
                       [&](bool thrown) {
                         // All or nothing; where the user was told, nothing.
                         EXPECT_TRUE(!thrown || run->host().outOfMemory > 0);
                         EXPECT_TRUE(run->state() == (run->host().outOfMemory == 0 ? after : before));
                         EXPECT_EQ(run->fault(), "");
                       },
                       true);
  }
}

}  // namespace
}  // namespace merivane
