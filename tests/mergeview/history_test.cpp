// The history of edits, and what it knows of the sides.

#include <gtest/gtest.h>

#include "mergeview/edit.h"
#include "tests/support/edit_run.h"

namespace merivane {
namespace {

TEST(UndoHistory, TellsWhatIsModified) {
  EditRun run("a\n", "b\n");
  const auto after = [&run](std::string_view keys) {
    run.press(keys);
    return std::string(run.history().isModified(0) ? "L" : "-") + (run.history().isModified(1) ? "R" : "-");
  };
  EXPECT_EQ(after("x switch-pane y"), "LR");
  run.history().markSaved(0);
  EXPECT_EQ(after("switch-pane z"), "LR");
  EXPECT_EQ(after("undo"), "-R");
  EXPECT_EQ(after("undo undo"), "L-") << "what was saved is ahead";
  EXPECT_EQ(after("redo"), "--");
  EXPECT_EQ(after("switch-sides redo"), "L-");
  run.history().clear();
  EXPECT_EQ(after("undo redo"), "L-") << "forgetting saves nothing";
}

TEST(UndoHistory, KeepsTheLast250AndNothingUndoneAfterANewRecord) {
  EditRun run("\n", "\n");
  for (int i = 0; i < 251; ++i) run.press("x");
  int steps = 0;
  while (undo(run.view(), run.history())) ++steps;
  EXPECT_EQ(steps, 250);
  EXPECT_TRUE(run.history().isModified(0)) << "the first of 251 cannot be undone any more";
  run.press("redo redo undo y redo");
  EXPECT_EQ(run.text(0), "xxy\n");
  run.press("undo undo undo");
  EXPECT_EQ(run.text(0), "x\n");
}

}  // namespace
}  // namespace merivane
