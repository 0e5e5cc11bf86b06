// Moving through a comparison by keys and mouse, selecting and finding.

#include <gtest/gtest.h>

#include "tests/win/gui_test.h"
#include "tests/win/support/clipboard.h"
#include "tests/win/support/input.h"

namespace merivane {
namespace {

class NavigationTest : public GuiTest {
 protected:
  /// 200 rows: the right lacks line 10, has another line 100 and two lines more after line 150.
  TextWindow startWithDifferences() {
    std::string right = numberedLines(200);
    const auto replace = [&](const std::string& line, const std::string& by) {
      right.replace(right.find(line), line.size(), by);
    };
    replace("line 10\r\n", "");
    replace("line 100\r\n", "line 1OO\r\n");
    replace("line 150\r\n", "line 150\r\nmore\r\nand more\r\n");
    const TextWindow window = startWith(writeFile("a.txt", numberedLines(200)), writeFile("b.txt", right));
    EXPECT_TRUE(window.activate());
    EXPECT_SOON(program_->focus(), window.view());
    return window;
  }
};

TEST_F(NavigationTest, DifferencesByKey) {
  const TextWindow window = startWithDifferences();
  EXPECT_EQ(window.differences(), "Diffs: 3, Lines: 4");
  for (const char* place : {"Virt 10, Ln 10, Col 1", "Virt 100, Ln 100, Col 1", "Virt 151, Ln 0, Col 1",
                            "Virt 10, Ln 10, Col 1"}) {
    press(VK_F8);
    EXPECT_SOON(window.caret(), place);
  }
  for (const char* place : {"Virt 151, Ln 0, Col 1", "Virt 100, Ln 100, Col 1"}) {
    press(VK_F7);
    EXPECT_SOON(window.caret(), place);
  }
}

TEST_F(NavigationTest, NoWrappingAroundWhenTurnedOff) {
  saveText("WrapAround", "false");
  const TextWindow window = startWithDifferences();
  for (int i = 0; i < 5; ++i) press(VK_F8);
  press(VK_F4);  // behind the last F8
  EXPECT_SOON(window.caret(), "Virt 151, Ln 150, Col 1");
}

TEST_F(NavigationTest, ScrollToFirstShowsTheFirstDifference) {
  saveText("ScrollToFirst", "true");
  const TextWindow window = startWithDifferences();
  EXPECT_SOON(window.caret(), "Virt 10, Ln 10, Col 1");
}

TEST_F(NavigationTest, CaretKeys) {
  const TextWindow window = startWithDifferences();
  press(VK_END);
  EXPECT_SOON(window.caret(), "Virt 1, Ln 1, Col 7");
  press(VK_DOWN);
  EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 7");
  press(VK_LEFT, {VK_CONTROL});
  EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 6");
  press(VK_HOME);
  EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 1");
  press(VK_NEXT);
  ASSERT_TRUE(waitUntil([&] { return window.caret() != "Virt 2, Ln 2, Col 1"; }));
  const int page = std::stoi(window.caret().substr(5)) - 2;
  EXPECT_GT(page, 10);
  press(VK_NEXT);
  EXPECT_SOON(std::stoi(window.caret().substr(5)), 2 + 2 * page);
  press(VK_PRIOR);
  EXPECT_SOON(std::stoi(window.caret().substr(5)), 2 + page);
  press(VK_END, {VK_CONTROL});
  EXPECT_SOON(std::stoi(window.caret().substr(5)), 202);
  press(VK_HOME, {VK_CONTROL});
  EXPECT_SOON(window.caret(), "Virt 1, Ln 1, Col 1");
}

TEST_F(NavigationTest, MousePlacesTheCaretAndTheWheelScrolls) {
  const TextWindow window = startWithDifferences();
  RECT view = {};
  GetClientRect(window.view(), &view);
  const POINT leftTop = {10, 2};
  const POINT rightTop = {view.right / 2 + 20, 2};
  turnWheel(window.view(), -4);
  click(window.view(), rightTop);
  const auto row = [&] { return std::stoi(window.caret().substr(5)); };
  ASSERT_TRUE(waitUntil([&] { return row() > 1; }));
  const int scrolled = row();
  EXPECT_EQ((scrolled - 1) % 4, 0) << "as many rows a notch";
  ASSERT_GT(scrolled, 10);
  EXPECT_EQ(window.caret(),
            "Virt " + std::to_string(scrolled) + ", Ln " + std::to_string(scrolled - 1) + ", Col 1");
  turnWheel(window.view(), 4);
  click(window.view(), leftTop);
  EXPECT_SOON(window.caret().substr(0, 12), "Virt 1, Ln 1");
}

TEST_F(NavigationTest, SummaryLeadsToADifference) {
  const TextWindow window = startWithDifferences();
  RECT bar = {};
  GetClientRect(window.summary(), &bar);
  click(window.summary(), {bar.right / 2, bar.bottom - 1});
  EXPECT_SOON(std::stoi(window.caret().substr(5)), 202);
  click(window.summary(), {bar.right / 2, bar.bottom / 2 + 10}, MouseButton::right);
  EXPECT_SOON(window.caret(), "Virt 100, Ln 100, Col 1");
}

TEST_F(NavigationTest, SelectionGoesToTheClipboard) {
  const TextWindow window = startWithDifferences();
  press(VK_DOWN, {VK_SHIFT});
  press(VK_RIGHT, {VK_SHIFT});
  const ClipboardWatch some;
  press('C', {VK_CONTROL});
  EXPECT_EQ(some.text(), "line 1\r\nl");
  const ClipboardWatch all;
  press('A', {VK_CONTROL});
  press('C', {VK_CONTROL});
  EXPECT_EQ(all.text().size(), numberedLines(200).size() - 2) << "all but the last line's end";
  press(VK_HOME, {VK_CONTROL});
  press(VK_F7);
  press(VK_F4);
  EXPECT_SOON(window.caret(), "Virt 151, Ln 150, Col 1");
  const ClipboardWatch block;
  window.run(Command::blockToClipboard);
  EXPECT_EQ(block.text(), "more\r\nand more\r\n");
}

TEST_F(NavigationTest, Find) {
  const TextWindow window = startWithDifferences();
  press('F', {VK_CONTROL});
  const HWND dialog = awaitDialog(*program_, "Find");
  ASSERT_NE(dialog, nullptr);
  constexpr int textField = 0x480;
  SetDlgItemTextA(dialog, textField, "LINE 19");
  PostMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
  EXPECT_SOON(window.caret(), "Virt 19, Ln 19, Col 8");
  EXPECT_SOON(IsWindow(dialog), FALSE) << "it closes after each search";
  ASSERT_TRUE(window.activate());
  press(VK_F3);
  EXPECT_SOON(window.caret(), "Virt 192, Ln 190, Col 8");
  press(VK_F3, {VK_CONTROL});
  EXPECT_SOON(window.caret(), "Virt 19, Ln 19, Col 8");
  const ClipboardWatch found;
  press('C', {VK_CONTROL});
  EXPECT_EQ(found.text(), "line 19");
  quit(window);
  EXPECT_EQ(savedText("FindText"), "LINE 19");

  const TextWindow next = startWithDifferences();
  press(VK_F3);
  EXPECT_SOON(next.caret(), "Virt 19, Ln 19, Col 8");
  next.run(Command::exit);
  ASSERT_EQ(program_->exitCode(), 0u);

  saveText("FindText", "nowhere");
  const TextWindow last = startWithDifferences();
  press(VK_F3);
  EXPECT_EQ(answerMessage(*program_), "Search text not found.");
  EXPECT_EQ(last.caret(), "Virt 1, Ln 1, Col 1");
}

}  // namespace
}  // namespace merivane
