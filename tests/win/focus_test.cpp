// Where the keyboard is, whose keys are whose, and what a window takes while it waits.

#include "tests/win/gui_test.h"

namespace merivane {
namespace {

class FocusTest : public GuiTest {
 protected:
  const std::string a_ = writeFile("a.txt", "1\r\nalone\r\n2\r\n");
  const std::string b_ = writeFile("b.txt", "1\r\n2\r\n");

  /// What is selected in a side's name, as begin and end.
  static std::pair<size_t, size_t> selection(const TextWindow& window, int side) {
    const auto places = static_cast<DWORD>(SendMessageA(window.nameEdit(side), EM_GETSEL, 0, 0));
    return {LOWORD(places), HIWORD(places)};
  }

  /// Goes from the panes to the left name.
  void goToName(const TextWindow& window) {
    press(VK_TAB, {VK_CONTROL});
    EXPECT_SOON(program_->focus(), window.nameEdit(0));
  }
};

TEST_F(FocusTest, KeysInANameEditTheName) {
  const TextWindow window = startWith(a_, b_);
  const std::string title = window.title();
  press(VK_F8);
  EXPECT_SOON(window.row(), 2);
  goToName(window);
  EXPECT_EQ(selection(window, 0), std::pair(size_t{0}, a_.size()));
  press('Y', {VK_CONTROL});
  press(VK_RIGHT, {VK_MENU});
  press(VK_DELETE, {VK_CONTROL});
  press('C', {VK_CONTROL});
  type("zz");
  EXPECT_SOON(window.name(0), "zz") << "over the whole name";
  const std::string begun = a_.substr(0, a_.size() - 1);
  window.setNames(begun, b_);
  window.run(Command::selectAll);
  window.run(Command::cut);
  EXPECT_SOON(window.name(0), "");
  window.run(Command::paste);
  EXPECT_SOON(window.name(0), begun);
  // What undoing gives back is not completed away.
  window.run(Command::selectAll);
  EXPECT_SOON(selection(window, 0), std::pair(size_t{0}, begun.size()));
  type("yy");
  EXPECT_SOON(window.name(0), "yy");
  press('Z', {VK_CONTROL});
  EXPECT_SOON(window.name(0), begun);
  EXPECT_EQ(window.title(), title) << "the texts were left alone";
}

TEST_F(FocusTest, TheKeyboardIsInThePanesAfterWhatIsDoneThere) {
  const TextWindow window = startWith(a_, b_);
  for (const WORD key : {VK_RETURN, VK_F8, VK_F4}) {
    goToName(window);
    press(key);
    EXPECT_SOON(program_->focus(), window.view()) << key;
    // While it compares again it takes no other key.
    EXPECT_SOON(window.menu(2).find("-&Refresh"), std::string::npos);
  }
  goToName(window);
  RECT bar = {};
  GetClientRect(window.summary(), &bar);
  click(window.summary(), {bar.right / 2, bar.bottom / 2});
  EXPECT_SOON(program_->focus(), window.view());
  // Enter presses a button; the name goes on from the folder.
  goToName(window);
  for (const HWND control : {window.nameEdit(0), GetDlgItem(window.handle(), 20404)}) {
    EXPECT_SOON(program_->focus(), control);
    press(VK_TAB);
  }
  EXPECT_SOON(program_->focus(), GetDlgItem(window.handle(), 20408));
  press(VK_RETURN);
  const std::string folder = a_.substr(0, a_.size() - 5);
  EXPECT_SOON(window.name(0), folder);
  EXPECT_SOON(program_->focus(), window.nameEdit(0));
  EXPECT_SOON(selection(window, 0), std::pair(folder.size(), folder.size()));
}

TEST_F(FocusTest, TheKeyboardStartsWhereANameIsToCome) {
  const TextWindow one = start("a.txt");
  ASSERT_TRUE(one.activate());
  EXPECT_SOON(program_->focus(), one.nameEdit(1));
  EXPECT_EQ(selection(one, 0).first, selection(one, 0).second);

  const TextWindow compared = startWith(a_, b_);
  press('N', {VK_CONTROL});
  HWND next = nullptr;
  ASSERT_TRUE(waitUntil([&] {
    next = program_->windows("CompareWindow").front();
    return next != compared.handle() && next == GetForegroundWindow();
  }));
  const TextWindow second(*program_, next);
  EXPECT_SOON(program_->focus(), second.nameEdit(0));
  EXPECT_SOON(selection(second, 0), std::pair(size_t{0}, a_.size()));
}

TEST_F(FocusTest, AHeldEscapeWasMeantForTheDialogThatItClosed) {
  const TextWindow window = startWith(a_, b_);
  press('F', {VK_CONTROL});
  ASSERT_NE(program_->dialog("Find"), nullptr);
  INPUT escape = {};
  escape.type = INPUT_KEYBOARD;
  escape.ki.wVk = VK_ESCAPE;
  SendInput(1, &escape, sizeof escape);
  EXPECT_TRUE(waitUntil([&] { return program_->windows("#32770", "Find").empty(); }));
  ASSERT_TRUE(window.activate());
  for (int i = 0; i < 3; ++i) SendInput(1, &escape, sizeof escape);
  press(VK_DOWN);
  EXPECT_SOON(window.row(), 2);
  escape.ki.dwFlags = KEYEVENTF_KEYUP;
  SendInput(1, &escape, sizeof escape);
  press(VK_ESCAPE);
  EXPECT_EQ(program_->exitCode(), 0u);
}

TEST_F(FocusTest, TheEndOfTheSessionWaitsForUnsavedChanges) {
  const TextWindow window = startWith(a_, b_);
  EXPECT_EQ(SendMessageA(window.handle(), WM_QUERYENDSESSION, 0, 0), TRUE);
  type("1");
  EXPECT_SOON(window.title(), "Merivane - [a.txt*, b.txt]");
  EXPECT_EQ(SendMessageA(window.handle(), WM_QUERYENDSESSION, 0, 0), FALSE) << "at once, without a question";
  EXPECT_EQ(SendMessageA(window.handle(), WM_QUERYENDSESSION, 0, 0x40000000), TRUE) << "when it cannot wait";
  PostMessageA(window.handle(), WM_ENDSESSION, FALSE, 0);  // the user came back
  EXPECT_EQ(program_->answerMessage(IDYES), "Save changes to " + a_ + "?");
  EXPECT_SOON(readFile(a_), "11\r\nalone\r\n2\r\n");
  EXPECT_EQ(SendMessageA(window.handle(), WM_QUERYENDSESSION, 0, 0), TRUE);
}

}  // namespace
}  // namespace merivane
