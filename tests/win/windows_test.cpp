// More than one window: where they open, how they close, and what keys do to them.

#include <gmock/gmock.h>

#include <vector>

#include "tests/win/gui_test.h"
#include "tests/win/support/input.h"

namespace merivane {
namespace {

class WindowsTest : public GuiTest {
 protected:
  /// Waits until so many text windows are open, and answers the topmost: the one just opened.
  TextWindow topOf(size_t count) {
    std::vector<HWND> windows;
    waitUntil([&] { return (windows = program_->windows("CompareWindow")).size() == count; });
    EXPECT_EQ(windows.size(), count);
    return {*program_, windows.empty() ? nullptr : windows.front()};
  }
};

RECT moved(RECT area, int by) {
  OffsetRect(&area, by, by);
  return area;
}

std::string shown(const RECT& area) {
  return testing::PrintToString(std::vector<LONG>{area.left, area.top, area.right, area.bottom});
}

TEST_F(WindowsTest, EachOpensBesideTheLastOne) {
  const TextWindow first = start();
  EXPECT_EQ(shown(first.area()), shown(kPlace));
  ASSERT_TRUE(first.activate());
  press('N', {VK_CONTROL});
  const TextWindow second = topOf(2);
  EXPECT_EQ(shown(second.area()), shown(moved(kPlace, 50)));

  // The one that was moved last decides.
  MoveWindow(first.handle(), 100, 80, 500, 400, TRUE);
  ASSERT_TRUE(first.activate());
  press('N', {VK_CONTROL});
  EXPECT_EQ(shown(topOf(3).area()), shown({150, 130, 650, 530}));

  // Where it would leave the screen it opens in the corner.
  const int right = GetSystemMetrics(SM_CXSCREEN);
  MoveWindow(first.handle(), right - 530, 80, 500, 400, TRUE);
  ASSERT_TRUE(first.activate());
  press('N', {VK_CONTROL});
  EXPECT_EQ(shown(topOf(4).area()), shown({0, 0, 500, 400}));
}

TEST_F(WindowsTest, TheLastOneClosedEndsTheProgram) {
  const TextWindow first = start();
  first.run(Command::newTextWindow);
  const TextWindow second = topOf(2);
  ASSERT_TRUE(second.activate());
  press('W', {VK_CONTROL});
  EXPECT_EQ(topOf(1).handle(), first.handle());
  PostMessageA(first.handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(program_->exitCode(), 0u);
}

TEST_F(WindowsTest, EscQuitsUnlessTurnedOff) {
  const std::string file = writeFile("a.txt", numberedLines(3));
  const TextWindow window = startWith(file, file);
  window.run(Command::newTextWindow);
  ASSERT_TRUE(topOf(2).activate());
  press(VK_ESCAPE);
  EXPECT_EQ(program_->exitCode(), 0u);

  saveText("EscQuitsApp", "false");
  const TextWindow staying = startWith(file, file);
  ASSERT_TRUE(staying.activate());
  press(VK_ESCAPE);
  press(VK_DOWN);
  EXPECT_SOON(staying.caret(), "Virt 2, Ln 2, Col 1");
  press('Q', {VK_CONTROL});
  EXPECT_EQ(program_->exitCode(), 0u);
}

TEST_F(WindowsTest, ReusedWindowStaysTheOnlyOne) {
  saveText("ReUseFileWindow", "true");
  const TextWindow window = start();
  ASSERT_TRUE(window.activate());
  press('N', {VK_CONTROL});
  window.run(Command::newTextWindow);
  window.run(Command::showWhiteSpace);
  EXPECT_SOON(window.menu(2)[4].checked, true);
  EXPECT_EQ(program_->windows("CompareWindow").size(), 1u);
  EXPECT_FALSE(window.menu(0)[0].enabled);
}

TEST_F(WindowsTest, MenuEntryBringsItsWindowToTheFront) {
  const TextWindow first = start();
  first.run(Command::newTextWindow);
  const TextWindow second = topOf(2);
  ASSERT_TRUE(second.activate());
  second.run(Command::firstTextWindow);
  EXPECT_SOON(GetForegroundWindow(), first.handle());
}

TEST_F(WindowsTest, KeysMoveTheFocus) {
  const TextWindow window = startWith(writeFile("a.txt", "1\r\n2\r\n"), writeFile("b.txt", "1\r\n"));
  ASSERT_TRUE(window.activate());
  ASSERT_EQ(program_->focus(), window.view());

  // Tab is the view's own; with Ctrl it leaves it.
  press(VK_TAB, {VK_CONTROL});
  EXPECT_SOON(program_->focus(), window.nameEdit(0));
  std::vector<HWND> visited;
  for (int i = 0; i < 8 && program_->focus() != window.view(); ++i) {
    const HWND before = program_->focus();
    press(VK_TAB);
    ASSERT_TRUE(waitUntil([&] { return program_->focus() != before; }));
    visited.push_back(program_->focus());
  }
  EXPECT_THAT(visited, testing::Contains(window.nameEdit(1)));
  EXPECT_EQ(program_->focus(), window.view());
  press(VK_TAB, {VK_CONTROL, VK_SHIFT});
  EXPECT_SOON(program_->focus(), visited[visited.size() - 2]);

  // F4 goes to the other pane, which has no line at the second row.
  click(window.view(), {20, 3});
  EXPECT_SOON(program_->focus(), window.view());
  press(VK_F8);
  EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 1");
  press(VK_F4);
  EXPECT_SOON(window.caret(), "Virt 2, Ln 0, Col 1");
  press(VK_F4);
  EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 1");
}

}  // namespace
}  // namespace merivane
