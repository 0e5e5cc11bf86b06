#include "mergeview/side_commands.h"

#include <gtest/gtest.h>

#include "tests/support/edit_run.h"
#include "tests/support/failing_allocator.h"

namespace merivane {
namespace {

class FakeReplaceOwner final : public ReplaceOwner {
 public:
  bool mayReplace() override {
    ++asked;
    return agrees;
  }
  bool saveText(int side, const TextBuffer& text, LineEndKind kind) override {
    if (!writes) return false;
    written = {side, text.size(), kind};
    return true;
  }
  void onSideSaved(int) override { ++saved; }

  struct Written {
    int side = -1;
    uint32_t size = 0;
    LineEndKind kind = LineEndKind::crLf;
  };
  bool agrees = true, writes = true;
  int asked = 0, saved = 0;
  Written written;
};

class SideCommandsTest : public testing::Test {
 protected:
  SideCommandsTest() {
    view.documents().lineEndKind[1] = LineEndKind::lf;
    view.moveCaret(1, 2, false);
    Editor(view, run.history()).typeChar('x');
  }

  EditRun run{"a\nb\nc\n", "a\nd\n", {}};
  ViewState& view = run.view();
  UndoHistory& history = run.history();
  FakeReplaceOwner owner;
};

TEST_F(SideCommandsTest, ReplacesASideAndItsFile) {
  const std::string before = run.state();
  owner.agrees = false;
  replaceSide(view, history, 0, owner);
  EXPECT_EQ(run.state(), before);
  owner.agrees = true;
  view.documents().readOnly[0] = true;
  replaceSide(view, history, 0, owner);
  EXPECT_EQ(owner.asked, 1) << "a side that may not be written is not asked for";
  view.documents().readOnly[0] = false;

  view.activate(1);
  replaceSide(view, history, 0, owner);
  EXPECT_EQ(owner.written.side, 0);
  EXPECT_EQ(owner.written.kind, LineEndKind::lf);
  EXPECT_EQ(owner.saved, 1);
  EXPECT_EQ(run.text(0), "a\nd\n");
  EXPECT_EQ(view.model().differingRows(), 0u);
  EXPECT_EQ(view.documents().lineEndKind[0], LineEndKind::lf);
  EXPECT_TRUE(view.activeSide() == 0 && view.caretRow() == 0 && view.caretPos(0) == 0);
  EXPECT_FALSE(history.canUndo() || history.isModified());
  EXPECT_EQ(run.fault(), "");
}

TEST_F(SideCommandsTest, ACopyThatCannotBeWrittenIsAnEdit) {
  const std::string text = run.text(0);
  owner.writes = false;
  replaceSide(view, history, 0, owner);
  EXPECT_EQ(run.text(0), "a\nd\n");
  EXPECT_TRUE(history.isModified(0));
  EXPECT_EQ(view.documents().lineEndKind[0], LineEndKind::crLf);
  EXPECT_EQ(owner.saved, 0);
  history.undo();
  EXPECT_EQ(run.text(0), text);
  EXPECT_EQ(run.undoAndRedoAll(), "");
}

TEST_F(SideCommandsTest, SwitchedSidesAreThoseOfAComparisonThatWayRound) {
  view.documents().readOnly[1] = true;
  ASSERT_TRUE(switchSides(view, history));
  EditRun other("a\nd\n", "a\nxb\nc\n", {});
  EXPECT_EQ(run.state().substr(0, 30), other.state().substr(0, 30));
  EXPECT_EQ(run.fault(), "");
  EXPECT_EQ(view.activeSide(), 1);
  EXPECT_TRUE(view.documents().readOnly[0] && !view.documents().readOnly[1]);
  EXPECT_EQ(view.documents().lineEndKind[0], LineEndKind::lf);
  EXPECT_TRUE(history.isModified(1) && !history.isModified(0));
  history.undo();
  EXPECT_EQ(run.text(1), "a\nb\nc\n");
  EXPECT_FALSE(history.isModified());
}

TEST_F(SideCommandsTest, WithoutMemoryNothingIsWrittenOrChanged) {
  const std::string before = run.state();
  for (uint32_t failing = 0;; ++failing) {
    AllocationFailure failure(failing, AllocationFailure::once);
    replaceSide(view, history, 0, owner);
    failure.end();
    if (owner.saved > 0) break;
    EXPECT_EQ(run.host().outOfMemory, static_cast<int>(failing) + 1);
    EXPECT_EQ(owner.written.side, -1);
    EXPECT_EQ(run.state(), before);
  }
}

}  // namespace
}  // namespace merivane
