// Editing, merging, saving and closing.

#include "tests/win/gui_test.h"

namespace merivane {
namespace {

constexpr char kUnchanged[] = "Merivane - [left.txt, right.txt]";
constexpr char kLeftChanged[] = "Merivane - [left.txt*, right.txt]";
constexpr char kRightChanged[] = "Merivane - [left.txt, right.txt*]";
constexpr char kBothChanged[] = "Merivane - [left.txt*, right.txt*]";

class EditingTest : public GuiTest {
 protected:
  const std::string left_ = writeFile("left.txt", "one\r\nleft\r\nmore\r\ntwo\r\n");
  const std::string right_ = writeFile("right.txt", "one\nlift\nmore!\ntwo\n");
};

TEST_F(EditingTest, TypeUndoAndSave) {
  const TextWindow window = startWith(left_, right_);
  type("at ");
  EXPECT_SOON(window.caret(), "Virt 1, Ln 1, Col 4");
  press(VK_RETURN);
  press(VK_BACK);
  press(VK_TAB);
  press(VK_DELETE);
  press(VK_INSERT);  // from here on what is typed goes over what is there
  type("h");
  press('S', {VK_CONTROL});
  EXPECT_SOON(window.title(), kUnchanged);
  EXPECT_EQ(readFile(left_), "at \the\r\nleft\r\nmore\r\ntwo\r\n");

  // Back to what was loaded, which is no longer what is saved, and to what is.
  for (int i = 0; i < 10; ++i) press('Z', {VK_CONTROL});
  EXPECT_SOON(window.title(), kLeftChanged);
  for (int i = 0; i < 10; ++i) press('Y', {VK_CONTROL});
  EXPECT_SOON(window.title(), kUnchanged);

  // Cut on one side and pasted on the other; each side keeps its own line ends.
  // The older keys for it do the same.
  const auto firstLineBy = [](WORD key, WORD held) {
    press(VK_HOME, {VK_CONTROL});
    press(VK_DOWN, {VK_SHIFT});
    return copiedBy([&] { press(key, {held}); });
  };
  EXPECT_EQ(firstLineBy(VK_INSERT, VK_CONTROL), "at \the\r\n");
  EXPECT_EQ(firstLineBy(VK_DELETE, VK_SHIFT), "at \the\r\n");
  press(VK_INSERT, {VK_SHIFT});
  EXPECT_EQ(firstLineBy('X', VK_CONTROL), "at \the\r\n");
  press(VK_F4);
  press(VK_END, {VK_CONTROL});  // before the last line's end
  press('V', {VK_CONTROL});
  EXPECT_SOON(window.title(), kBothChanged);
  press('S', {VK_CONTROL, VK_SHIFT});
  EXPECT_SOON(window.title(), kUnchanged);
  EXPECT_EQ(readFile(left_), "left\r\nmore\r\ntwo\r\n");
  EXPECT_EQ(readFile(right_), "one\nlift\nmore!\ntwoat \the\n\n");
  quit(window);
}

TEST_F(EditingTest, EveryKeyThatMergesAndSwitchedSides) {
  const TextWindow window = startWith(left_, right_);
  const struct {
    WORD withCtrl, withAlt;
    const char* title;
    const char* differences;
  } merges[] = {
      {VK_OEM_4, VK_LEFT, kLeftChanged, "No differences"},
      {VK_DELETE, VK_DELETE, kLeftChanged, "Diffs: 1, Lines: 2"},  // the right's lines are left over
      {VK_OEM_6, VK_RIGHT, kRightChanged, "No differences"}};
  const std::initializer_list<WORD> holds[] = {{VK_CONTROL}, {VK_MENU}, {VK_MENU, VK_SHIFT}};
  for (const auto& [withCtrl, withAlt, title, differences] : merges) {
    for (const auto& held : holds) {
      const WORD key = *held.begin() == VK_CONTROL ? withCtrl : withAlt;
      press('Z', {VK_CONTROL});
      press(VK_HOME, {VK_CONTROL});
      press(VK_F8);
      EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 1") << key;
      EXPECT_SOON(window.title(), kUnchanged) << key;
      press(key, held);
      EXPECT_SOON(window.title(), title) << key;
      EXPECT_SOON(window.differences(), differences) << key;
    }
  }
  window.run(Command::switchSides);
  EXPECT_SOON(window.title(), "Merivane - [right.txt*, left.txt]");
  press('S', {VK_CONTROL});
  EXPECT_SOON(window.title(), "Merivane - [right.txt, left.txt]");
  EXPECT_EQ(readFile(right_), "one\nleft\nmore\ntwo\n");
}

TEST_F(EditingTest, SavingAsAndExporting) {
  const TextWindow window = startWith(left_, right_);
  const auto answerWith = [&](const char* title, int edit, const std::string& name) {
    const HWND dialog = program_->dialog(title);
    SetDlgItemTextA(dialog, edit, name.c_str());
    EXPECT_TRUE(pressButton(dialog, IDOK)) << title;
  };
  press(VK_F4);
  type("1");
  press(VK_F12);
  const std::string other = left_ + "2";
  answerWith("Save Right File", 0x47C, other);
  EXPECT_SOON(window.title(), "Merivane - [left.txt, left.txt2]");
  EXPECT_EQ(readFile(other), "1one\nlift\nmore!\ntwo\n");

  window.run(Command::exportResults);
  answerWith("Export", 103, "page.html");
  EXPECT_TRUE(waitUntil([] { return readFile("page.html").find("lift") != std::string::npos; }));
}

TEST_F(EditingTest, ClosingAsksForWhatIsNotSaved) {
  save("AskConfirmation", "true");
  const TextWindow window = startWith(left_, right_);
  type("1");
  EXPECT_SOON(window.title(), kLeftChanged);
  SetFileAttributesA(left_.c_str(), FILE_ATTRIBUTE_READONLY);
  press('S', {VK_CONTROL});
  EXPECT_THAT(program_->answerMessage(), testing::StartsWith("Could not save the file.\n\nReason: "));
  SetFileAttributesA(left_.c_str(), FILE_ATTRIBUTE_NORMAL);
  ASSERT_TRUE(window.activate());
  press('W', {VK_CONTROL});
  EXPECT_EQ(program_->answerMessage(IDCANCEL), "Save changes to " + left_ + "?");
  EXPECT_EQ(window.title(), kLeftChanged);
  press(VK_ESCAPE);
  program_->answerMessage(IDYES);
  EXPECT_EQ(program_->exitCode(), 0u);
  EXPECT_EQ(readFile(left_), "1one\r\nleft\r\nmore\r\ntwo\r\n");
}

}  // namespace
}  // namespace merivane
