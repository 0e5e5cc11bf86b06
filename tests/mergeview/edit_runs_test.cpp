#include <gtest/gtest.h>

#include "mergeview/merge_commands.h"
#include "mergeview/side_commands.h"
#include "tests/support/edit_run.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/random.h"

namespace merivane {
namespace {

/// Two texts that have most of their lines in common, with or without a last line end.
struct Texts {
  explicit Texts(Random& random, uint32_t maxLines) {
    for (uint32_t line = random.below(maxLines + 1); line > 0; --line) {
      const std::string common = random.text("abc \t", 8);
      for (std::string& text : side) {
        const uint32_t change = random.below(8);
        if (change == 0) continue;
        text += change == 1 ? random.text("abc \t", 8) : common;
        text += '\n';
        if (change == 2) text += random.text("ab", 3) + '\n';
      }
    }
    for (std::string& text : side) {
      if (!text.empty() && random.below(2) == 0) text.pop_back();
    }
  }

  std::string side[2];
};

CompareOptions anyOptions(Random& random) {
  CompareOptions options;
  if (random.below(2) == 0) options = {random.below(2) == 0, random.below(16), random.below(2) == 0};
  return options;
}

TEST(EditRuns, RowsAndHistoryStayRightWhateverTheUserDoes) {
  for (uint32_t seed = 0; seed < 400; ++seed) {
    Random random(seed);
    const Texts texts(random, seed % 4 == 0 ? 300 : 12);
    EditRun run(texts.side[0], texts.side[1], anyOptions(random));
    const auto below = [&random](uint32_t bound) { return random.below(bound); };
    // Two characters a step at most, so that the history holds all of them.
    for (int step = 0; step < 120; ++step) {
      const std::string before = run.state();
      run.step(below);
      ASSERT_EQ(run.fault(), "") << "seed " << seed << ", step " << step << ", from " << before;
    }
    ASSERT_EQ(run.undoAndRedoAll(), "") << "seed " << seed;
  }
}

TEST(EditRuns, MergingEveryDifferenceMakesTheSidesEqual) {
  for (uint32_t seed = 0; seed < 300; ++seed) {
    Random random(seed);
    const Texts texts(random, seed % 4 == 0 ? 200 : 8);
    const CompareOptions options = anyOptions(random);
    EditRun run(texts.side[0], texts.side[1], options);
    const auto below = [&random](uint32_t bound) { return random.below(bound); };
    const int to = static_cast<int>(seed % 2);
    ASSERT_TRUE(run.mergeAll(to, below)) << "seed " << seed << ": " << run.state();
    ASSERT_EQ(run.fault(), "") << "seed " << seed;
    ASSERT_EQ(run.text(1 - to), texts.side[1 - to]) << "seed " << seed;
    if (options.comparesBytes()) {
      ASSERT_EQ(run.text(to), run.text(1 - to)) << "seed " << seed;
    }
  }
}

Editor editorOf(EditRun& run) { return {run.view(), run.history()}; }

/// Acts on a run with each allocation failing in turn. What comes of it is all or nothing; where the user was
/// told, nothing.
void expectAllOrNothing(const char* name, void (*act)(EditRun& run), bool selects = false) {
  const std::string left = "a\nbcdefgh\nx\n" + std::string(3000, 'y') + "\nlast",
                    right = "a\nbcdefgi\nz\nlast\n", large(5000, 'p');
  const auto prepared = [&] {
    auto run = std::make_unique<EditRun>(left, right, CompareOptions());
    EXPECT_TRUE(run->host().clipboard.assign(large));
    run->view().goToRow(1);
    Editor editor(run->view(), run->history());
    editor.typeChar('q');
    editor.typeChar('r');
    run->history().undo();
    run->view().moveCaret(1, 3, false);
    if (selects) run->view().moveCaret(3, 99, true);
    return run;
  };
  std::unique_ptr<EditRun> run = prepared();
  const std::string before = run->state();
  act(*run);
  const std::string after = run->state();
  failEachAllocation([&] { run = prepared(); },
                     [&] {
                       act(*run);
                       return 0;
                     },
                     [&](int) {
                       EXPECT_TRUE(run->state() == (run->host().outOfMemory == 0 ? after : before)) << name;
                       EXPECT_EQ(run->fault(), "") << name;
                     });
}

TEST(EditRuns, RunningOutOfMemoryLeavesAllAsItWas) {
  expectAllOrNothing("type", [](EditRun& run) { editorOf(run).typeChar('c'); });
  expectAllOrNothing("overwrite", [](EditRun& run) {
    run.view().toggleOverwrite();
    editorOf(run).typeChar('c');
  });
  expectAllOrNothing("enter", [](EditRun& run) { editorOf(run).newLine(); });
  expectAllOrNothing("paste", [](EditRun& run) { editorOf(run).paste(); });
  expectAllOrNothing("delete row", [](EditRun& run) { editorOf(run).deleteRow(); });
  expectAllOrNothing(
      "cut", [](EditRun& run) { editorOf(run).deleteSelection(); }, true);
  expectAllOrNothing(
      "replace selection", [](EditRun& run) { editorOf(run).paste(); }, true);
  expectAllOrNothing(
      "delete row with a selection", [](EditRun& run) { editorOf(run).deleteRow(); }, true);
  expectAllOrNothing("copy",
                     [](EditRun& run) { copyBlock(run.view(), run.history(), BlockKind::difference, 0); });
  expectAllOrNothing("delete line",
                     [](EditRun& run) { deleteBlock(run.view(), run.history(), BlockKind::line); });
  expectAllOrNothing("clipboard", [](EditRun& run) { blockToClipboard(run.view(), BlockKind::line); });
  expectAllOrNothing("undo", [](EditRun& run) { run.history().undo(); });
  expectAllOrNothing("redo", [](EditRun& run) { run.history().redo(); });
  expectAllOrNothing("switch sides", [](EditRun& run) { switchSides(run.view(), run.history()); });
}

}  // namespace
}  // namespace merivane
