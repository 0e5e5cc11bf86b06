// Any actions of the user after one another, their history, and what happens when memory runs out.

#include <gtest/gtest.h>

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
        text += (change == 1 ? random.text("abc \t", 8) : common) + '\n';
        if (change == 2) text += random.text("ab", 3) + '\n';
      }
    }
    for (std::string& text : side) {
      if (!text.empty() && random.below(2) == 0) text.pop_back();
    }
  }

  std::string side[2];
};

TEST(EditRuns, RowsAndHistoryStayRightWhateverTheUserDoes) {
  for (uint32_t seed = 0; seed < 400; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Texts texts(random, seed % 4 == 0 ? 300 : 12);
    CompareOptions options;
    if (random.below(2) == 0) options = {random.below(2) == 0, random.below(16), random.below(2) == 0};
    EditRun run(texts.side[0], texts.side[1], options);
    // Two characters a step at most, so that the history holds all of them.
    for (int step = 0; step < 120; ++step) {
      const std::string before = run.state();
      run.step([&random](uint32_t bound) { return random.below(bound); });
      ASSERT_EQ(run.fault(), "") << "step " << step << ", from " << before;
    }
    ASSERT_EQ(run.undoAndRedoAll(), "");

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
  const std::string left = "a\nbcdefgh\nx\n" + std::string(3000, 'y') + "\nlast",
                    right = "a\nbcdefgi\nz\nlast\n", large(5000, 'p');
  // Each with text undone before it, some with a selection.
  for (const char* keys : {"c", "insert c", "enter", "paste", "delete-row", "S-end cut", "S-C-end delete",
                           "S-C-end paste", "S-down S-down copy", "S-end delete-row", "copy-block-left",
                           "delete-line", "clip-block", "undo", "redo", "switch-sides"}) {
    SCOPED_TRACE(keys);
    const size_t action = std::string_view(keys).rfind(' ') + 1;
    const auto prepared = [&] {
      auto run = std::make_unique<EditRun>(left, right);
      EXPECT_TRUE(run->host().clipboard.assign(large));
      run->press("down q r undo");
      run->press(std::string_view(keys).substr(0, action));
      return run;
    };
    std::unique_ptr<EditRun> run = prepared();
    const std::string before = run->state();
    run->press(keys + action);
    const std::string after = run->state();
    failEachAllocation([&] { run = prepared(); },
                       [&] {
                         run->press(keys + action);
                         return 0;
                       },
                       [&](int) {
                         // All or nothing; where the user was told, nothing.
                         EXPECT_TRUE(run->state() == (run->host().outOfMemory == 0 ? after : before));
                         EXPECT_EQ(run->fault(), "");
                       });
  }
}

TEST(UndoHistory, TellsWhatIsModified) {
  EditRun run("a\n", "b\n");
  const auto after = [&run](std::string_view keys) {
    run.press(keys);
    return std::string(run.history().isModified(0) ? "L" : "-") + (run.history().isModified(1) ? "R" : "-");
  };
  EXPECT_EQ(after("x switch-pane y"), "LR");
  EXPECT_EQ(run.owner().modifiedChanges, 2);
  run.history().markSaved(0);
  EXPECT_EQ(after("switch-pane z"), "LR");
  EXPECT_EQ(after("undo"), "-R");
  EXPECT_EQ(after("undo undo"), "L-") << "what was saved is ahead";
  EXPECT_EQ(after("redo"), "--");
  EXPECT_EQ(run.owner().undone, 4);
  EXPECT_EQ(after("switch-sides redo"), "L-");
  EXPECT_EQ(after("switch-pane z"), "LR");
  run.history().clear();
  EXPECT_EQ(after("undo redo"), "LR") << "forgetting saves nothing";
  EXPECT_EQ(run.owner().undone, 5);
}

TEST(UndoHistory, KeepsTheLast250AndNothingUndoneBehindANewRecord) {
  EditRun run("\n", "\n");
  for (int i = 0; i < 251; ++i) run.press("x");
  int steps = 0;
  while (run.history().undo()) ++steps;
  EXPECT_EQ(steps, 250);
  EXPECT_TRUE(run.history().isModified(0)) << "the first of 251 cannot be undone any more";
  while (run.history().redo()) --steps;
  EXPECT_EQ(steps, 0);
  run.press("undo undo y redo");
  EXPECT_EQ(run.text(0), std::string(249, 'x') + "y\n");
  while (run.history().undo()) ++steps;
  EXPECT_EQ(steps, 249);
  EXPECT_EQ(run.text(0), "x\n");
}

}  // namespace
}  // namespace merivane
