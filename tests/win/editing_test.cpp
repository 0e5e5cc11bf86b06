// Editing, merging and saving.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "tests/win/gui_test.h"
#include "tests/win/support/clipboard.h"
#include "tests/win/support/input.h"

namespace merivane {
namespace {

class EditingTest : public GuiTest {
 protected:
  const std::string left_ = writeFile("left.txt", "one\r\nleft\r\ntwo\r\n");
  const std::string right_ = writeFile("right.txt", "one\nlift\ntwo\n");

  TextWindow startEditing() {
    const TextWindow window = startWith(left_, right_);
    EXPECT_TRUE(window.activate());
    EXPECT_SOON(program_->focus(), window.view());
    EXPECT_EQ(window.differences(), "Diffs: 1, Lines: 1");
    return window;
  }
};

TEST_F(EditingTest, TypeUndoAndSave) {
  const TextWindow window = startEditing();
  type("at ");
  EXPECT_SOON(window.caret(), "Virt 1, Ln 1, Col 4");
  EXPECT_SOON(window.title(), "Merivane - [left.txt*, right.txt]");
  press(VK_RETURN);
  EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 1");
  press(VK_BACK);
  EXPECT_SOON(window.caret(), "Virt 1, Ln 1, Col 4");
  press(VK_TAB);
  press(VK_DELETE);
  press('S', {VK_CONTROL});
  EXPECT_SOON(window.title(), "Merivane - [left.txt, right.txt]");
  EXPECT_EQ(readFile(left_), "at \tne\r\nleft\r\ntwo\r\n");

  // Back to what was loaded, which is no longer what is saved.
  for (int i = 0; i < 10; ++i) press('Z', {VK_CONTROL});
  EXPECT_SOON(window.differences(), "Diffs: 1, Lines: 1");
  EXPECT_SOON(window.title(), "Merivane - [left.txt*, right.txt]");
  press('S', {VK_CONTROL});
  EXPECT_SOON(window.title(), "Merivane - [left.txt, right.txt]");
  EXPECT_EQ(readFile(left_), "one\r\nleft\r\ntwo\r\n");
  for (int i = 0; i < 10; ++i) press('Y', {VK_CONTROL});
  press(VK_F4);
  press('S', {VK_CONTROL});
  press(VK_F4);
  press('S', {VK_CONTROL});
  EXPECT_SOON(readFile(left_), "at \tne\r\nleft\r\ntwo\r\n");
  EXPECT_EQ(readFile(right_), "one\nlift\ntwo\n") << "each side keeps its own line ends";
  quit(window);
}

TEST_F(EditingTest, CutAndPasteBetweenTheSides) {
  const TextWindow window = startEditing();
  const ClipboardWatch cut;
  press(VK_DOWN, {VK_SHIFT});
  press('X', {VK_CONTROL});
  EXPECT_EQ(cut.text(), "one\r\n");
  press(VK_F4);
  press(VK_END, {VK_CONTROL});  // before the last line's end
  press('V', {VK_CONTROL});
  EXPECT_SOON(window.title(), "Merivane - [left.txt*, right.txt*]");
  window.run(Command::saveAll);
  EXPECT_SOON(window.title(), "Merivane - [left.txt, right.txt]");
  EXPECT_EQ(readFile(left_), "left\r\ntwo\r\n");
  EXPECT_EQ(readFile(right_), "one\nlift\ntwoone\n\n");
}

TEST_F(EditingTest, EveryKeyThatMerges) {
  const TextWindow window = startEditing();
  struct Merge {
    WORD key;
    std::initializer_list<WORD> held;
    const char* title;
  };
  const char* const leftChanged = "Merivane - [left.txt*, right.txt]";
  const char* const rightChanged = "Merivane - [left.txt, right.txt*]";
  const Merge merges[] = {
      {VK_OEM_4, {VK_CONTROL}, leftChanged},       {VK_LEFT, {VK_MENU}, leftChanged},
      {VK_LEFT, {VK_MENU, VK_SHIFT}, leftChanged}, {VK_OEM_6, {VK_CONTROL}, rightChanged},
      {VK_RIGHT, {VK_MENU}, rightChanged},         {VK_RIGHT, {VK_MENU, VK_SHIFT}, rightChanged},
  };
  for (const Merge& merge : merges) {
    press(VK_HOME, {VK_CONTROL});
    press(VK_F8);
    EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 1") << merge.key;
    press(merge.key, merge.held);
    EXPECT_SOON(window.differences(), "No differences") << merge.key;
    EXPECT_EQ(window.title(), merge.title) << merge.key;
    press('Z', {VK_CONTROL});
    EXPECT_SOON(window.differences(), "Diffs: 1, Lines: 1") << merge.key;
  }
  for (const std::initializer_list<WORD> held :
       {std::initializer_list<WORD>{VK_CONTROL}, {VK_MENU}, {VK_MENU, VK_SHIFT}}) {
    press(VK_HOME, {VK_CONTROL});
    press(VK_F8);
    EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 1");
    press(VK_DELETE, held);
    EXPECT_SOON(window.title(), leftChanged);
    press('Z', {VK_CONTROL});
    EXPECT_SOON(window.title(), "Merivane - [left.txt, right.txt]");
  }

  press(VK_HOME, {VK_CONTROL});
  press(VK_F8);
  press(VK_RIGHT, {VK_MENU});
  EXPECT_SOON(window.differences(), "No differences");
  window.run(Command::saveAll);
  EXPECT_SOON(window.title(), "Merivane - [left.txt, right.txt]");
  EXPECT_EQ(readFile(right_), "one\nleft\ntwo\n");
}

TEST_F(EditingTest, ClosingAsksForEachSide) {
  saveText("AskConfirmation", "true");
  const TextWindow window = startEditing();
  type("1");
  press(VK_F4);
  type("2");
  EXPECT_SOON(window.title(), "Merivane - [left.txt*, right.txt*]");
  press('W', {VK_CONTROL});
  EXPECT_EQ(answerMessage(*program_, IDNO), "Save changes to " + left_ + "?");
  EXPECT_EQ(answerMessage(*program_, IDCANCEL), "Save changes to " + right_ + "?");
  EXPECT_EQ(window.title(), "Merivane - [left.txt*, right.txt*]");
  ASSERT_TRUE(window.activate());
  press(VK_ESCAPE);
  EXPECT_EQ(answerMessage(*program_, IDYES), "Save changes to " + left_ + "?");
  EXPECT_EQ(answerMessage(*program_, IDNO), "Save changes to " + right_ + "?");
  EXPECT_EQ(program_->exitCode(), 0u);
  EXPECT_EQ(readFile(left_), "1one\r\nleft\r\ntwo\r\n");
  EXPECT_EQ(readFile(right_), "one\nlift\ntwo\n");
}

TEST_F(EditingTest, ClosingLosesWhatNobodyAskedToKeep) {
  const TextWindow window = startEditing();
  type("1");
  EXPECT_SOON(window.title(), "Merivane - [left.txt*, right.txt]");
  press('W', {VK_CONTROL});
  EXPECT_EQ(program_->exitCode(), 0u);
  EXPECT_EQ(readFile(left_), "one\r\nleft\r\ntwo\r\n");
}

TEST_F(EditingTest, SaveThatFailsSaysWhy) {
  const TextWindow window = startEditing();
  type("1");
  EXPECT_SOON(window.title(), "Merivane - [left.txt*, right.txt]");
  SetFileAttributesA(left_.c_str(), FILE_ATTRIBUTE_READONLY);
  press('S', {VK_CONTROL});
  EXPECT_EQ(answerMessage(*program_).rfind("Could not save the file.\n\nReason: ", 0), 0u);
  SetFileAttributesA(left_.c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(window.title(), "Merivane - [left.txt*, right.txt]");
  EXPECT_EQ(readFile(left_), "one\r\nleft\r\ntwo\r\n");
}

}  // namespace
}  // namespace merivane
