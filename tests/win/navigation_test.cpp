// Moving through a comparison by keys and mouse, selecting and finding.

#include "tests/win/gui_test.h"

namespace merivane {
namespace {

class NavigationTest : public GuiTest {
 protected:
  /// 200 rows: the right lacks line 10, has another line 100 and two lines more after line 150.
  TextWindow startWithDifferences() {
    std::string left;
    std::string right;
    for (int i = 1; i <= 200; ++i) {
      const std::string line = "line " + std::to_string(i) + "\r\n";
      left += line;
      if (i != 10) right += i == 100 ? "line 1OO\r\n" : line;
      if (i == 150) right += "more\r\n2nd\r\n";
    }
    return startWith(writeFile("a.txt", left), writeFile("b.txt", right));
  }
};

TEST_F(NavigationTest, Keys) {
  const TextWindow window = startWithDifferences();
  const struct {
    WORD key;
    std::initializer_list<WORD> held;
    const char* caret;
  } steps[] = {
      {VK_F8, {}, "Virt 10, Ln 10, Col 1"},
      {VK_F4, {}, "Virt 10, Ln 0, Col 1"},
      {VK_F4, {}, "Virt 10, Ln 10, Col 1"},
      {VK_F7, {}, "Virt 151, Ln 0, Col 1"},
      {VK_END, {VK_CONTROL}, "Virt 202, Ln 200, Col 9"},
      {VK_UP, {}, "Virt 201, Ln 199, Col 9"},
      {VK_LEFT, {VK_CONTROL}, "Virt 201, Ln 199, Col 6"},
      {VK_HOME, {VK_CONTROL}, "Virt 1, Ln 1, Col 1"},
  };
  for (const auto& [key, held, caret] : steps) {
    press(key, held);
    EXPECT_SOON(window.caret(), caret) << "after key " << key;
  }
  const HWND bar = childOf(window.handle(), "ScrollBar");
  EXPECT_FALSE(IsWindowEnabled(bar)) << "there is nothing to scroll to sideways";
  type(std::string(200, 'x'));
  EXPECT_SOON(IsWindowEnabled(bar), TRUE);
}

TEST_F(NavigationTest, Mouse) {
  const TextWindow window = startWithDifferences();
  RECT client = {};
  GetClientRect(window.view(), &client);
  const POINT leftTop = {10, 2};
  const POINT rightTop = {client.right / 2 + 20, 2};
  /// The row that is topmost after a request of the scroll bar.
  const auto topRow = [&](WPARAM request) {
    SendMessageA(window.view(), WM_VSCROLL, request, 0);
    // Each elsewhere than the last one, as two in one place would be a double click.
    for (const POINT place : {leftTop, rightTop}) click(window.view(), place);
    return window.row();
  };
  const auto turnWheel = [&](int by) { SendMessageA(window.view(), WM_MOUSEWHEEL, MAKEWPARAM(0, by), 0); };
  turnWheel(-4 * WHEEL_DELTA);
  const int fourNotches = topRow(SB_ENDSCROLL) - 1;
  EXPECT_GT(fourNotches, 10) << fourNotches;
  EXPECT_EQ(fourNotches % 4, 0) << fourNotches;
  turnWheel(4 * WHEEL_DELTA);
  EXPECT_EQ(topRow(SB_LINEDOWN), 2);
  const int page = topRow(SB_PAGEDOWN) - 2;
  EXPECT_EQ(topRow(SB_LINEUP), 1 + page);
  EXPECT_EQ(topRow(SB_BOTTOM) + page, 202 + 1);
  EXPECT_EQ(topRow(SB_PAGEUP) + 2 * page, 202 + 1);
  EXPECT_EQ(topRow(SB_TOP), 1);

  RECT bar = {};
  GetClientRect(window.summary(), &bar);
  click(window.summary(), {bar.right / 2, bar.bottom - 1});
  EXPECT_EQ(window.row(), 202);
  drag(window.summary(), {bar.right / 2, bar.bottom - 1}, {bar.right / 2, -50});
  EXPECT_EQ(window.row(), 1);
  SendMessageA(window.summary(), WM_MOUSEMOVE, 0, MAKELPARAM(0, bar.bottom));  // with the button up
  EXPECT_EQ(window.row(), 1);
  SendMessageA(window.summary(), WM_RBUTTONDOWN, 0, MAKELPARAM(bar.right / 2, bar.bottom / 2 + 10));
  EXPECT_SOON(window.caret(), "Virt 100, Ln 99, Col 1");

  // The splitter takes the names along, for as long as it is held; a double click puts it back. So does the
  // gap between the panes, wherever it is held, and moves no caret.
  const HWND thumb = childOf(window.handle(), "SplitterThumb");
  const LONG middle = areaOf(window.nameBox(1)).left, gap = client.right / 2;
  for (const auto& [held, from] : {std::pair(thumb, POINT{10, 2}), {window.view(), {gap + 7, 90}}}) {
    drag(held, from, {from.x + 100, from.y});
    EXPECT_EQ(areaOf(window.nameBox(1)).left, middle + 100);
    SendMessageA(held, WM_MOUSEMOVE, 0, MAKELPARAM(50, 2));
    for (int i = 0; i < 2; ++i) click(held, {gap + 100, 90});  // two make a double click in a pane only
    SendMessageA(held, WM_LBUTTONDBLCLK, MK_LBUTTON, 0);
    EXPECT_EQ(areaOf(window.nameBox(1)).left, middle);
  }
  EXPECT_EQ(window.caret(), "Virt 100, Ln 99, Col 1");
}

TEST_F(NavigationTest, SelectionGoesToTheClipboard) {
  const TextWindow window = startWithDifferences();
  const auto copy = [] { press('C', {VK_CONTROL}); };
  press(VK_DOWN, {VK_SHIFT});
  press(VK_RIGHT, {VK_SHIFT});
  EXPECT_EQ(copiedBy(copy), "line 1\r\nl");
  press(VK_HOME, {VK_CONTROL});
  EXPECT_SOON(window.row(), 1);
  RECT client = {};
  GetClientRect(window.view(), &client);
  drag(window.view(), {10, 2}, {client.right / 4, 2});
  EXPECT_SOON(window.caret(), "Virt 1, Ln 1, Col 7");
  SendMessageA(window.view(), WM_MOUSEMOVE, 0, MAKELPARAM(10, 100));  // with the button up
  EXPECT_EQ(copiedBy(copy), "line 1");
  // Neither another setting of the system nor another program's clipboard comes in between.
  SendMessageA(window.view(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 2));
  SendMessageA(window.handle(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
  SendMessageA(window.handle(), WM_SYSCOLORCHANGE, 0, 0);
  SendMessageA(window.view(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(client.right / 4, 2));
  SendMessageA(window.view(), WM_LBUTTONUP, 0, MAKELPARAM(client.right / 4, 2));
  ASSERT_TRUE(OpenClipboard(GetDesktopWindow()));
  copy();
  EXPECT_THAT(program_->answerMessage(), testing::StartsWith("The clipboard could not be used"));
  CloseClipboard();
  EXPECT_EQ(copiedBy(copy), "line 1");
}

TEST_F(NavigationTest, Find) {
  const TextWindow window = startWithDifferences();
  const auto find = [&](const char* text) {
    press('F', {VK_CONTROL});
    const HWND dialog = program_->dialog("Find");
    SetDlgItemTextA(dialog, 0x480, text);
    EXPECT_TRUE(pressButton(dialog, IDOK)) << "it closes after each search";
  };
  find("LINE 19");
  EXPECT_SOON(window.caret(), "Virt 19, Ln 19, Col 8");
  ASSERT_TRUE(window.activate());
  press(VK_F3);
  EXPECT_SOON(window.caret(), "Virt 192, Ln 190, Col 8");
  // With a second window it is the last that asked in which is searched.
  press('F', {VK_CONTROL});
  program_->dialog("Find");
  window.run(Command::newTextWindow);
  ASSERT_TRUE(waitUntil([&] { return program_->windows("CompareWindow").size() == 2; }));
  const TextWindow second = {*program_, program_->windows("CompareWindow")[0]};
  ASSERT_NE(second.handle(), window.handle());
  ASSERT_TRUE(second.activate());
  second.run(Command::find);
  EXPECT_TRUE(waitUntil([&] {
    const auto dialogs = program_->windows("#32770", "Find");
    return dialogs.size() == 1 && GetWindow(dialogs[0], GW_OWNER) == second.handle();
  }));
  SetDlgItemTextA(program_->dialog("Find"), 0x480, "nowhere");
  EXPECT_TRUE(pressButton(program_->dialog("Find"), IDOK));
  EXPECT_EQ(program_->answerMessage(), "Search text not found.");
}

}  // namespace
}  // namespace merivane
