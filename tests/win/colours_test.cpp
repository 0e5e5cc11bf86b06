// The colours of rows and of the summary, as they come out on the screen.

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/win/gui_test.h"
#include "tests/win/support/input.h"
#include "tests/win/support/picture.h"

namespace merivane {
namespace {

constexpr COLORREF same = 0xFFFFFF;
constexpr COLORREF filler = 0xF4F4F4;
constexpr COLORREF leftOnly = 0xC0DCC0;
constexpr COLORREF rightOnly = 0xF0CAA6;
constexpr COLORREF changed = 0xA6CAF0;

constexpr char left[] = "one\r\ntwo\r\nonly here\r\nthree\r\nfour\r\nthe old word\r\nfive\r\n";
constexpr char right[] = "one\r\ntwo\r\nthree\r\nonly there\r\nand there\r\nfour\r\nthe new word\r\nfive\r\n";

/// How the rows of that pair are coloured: so many rows of a colour, from the top.
using Rows = std::vector<Picture::Run>;
const Rows leftRows = {{same, 2}, {leftOnly, 1}, {same, 1}, {filler, 2}, {same, 1}, {changed, 1}, {same, 1}};
const Rows rightRows = {{same, 2}, {filler, 1},  {same, 1}, {rightOnly, 2},
                        {same, 1}, {changed, 1}, {same, 1}};
constexpr int rowCount = 9;

class ColoursTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    saveText("DrawCaretBox", "false");
  }

  TextWindow startWithPair() { return startWith(writeFile("left.txt", left), writeFile("right.txt", right)); }

  /// The height of a row: where the colour of the pair's third row begins, there are two above it.
  static int lineHeight(const TextWindow& window) {
    int height = 0;
    waitUntil([&] {
      const Picture picture = pictureOfClient(window.view());
      const auto runs = picture.column(2, picture.height());
      height = runs.size() > 3 ? runs[0].length / 2 : 0;
      return height > 0;
    });
    return height;
  }

  /// The rows' colours in a column of a window's client area.
  static Rows rowsAt(HWND window, int x, int height) {
    Rows runs = pictureOfClient(window).column(x, rowCount * height);
    for (Picture::Run& run : runs) run.length /= height;
    return runs;
  }
};

TEST_F(ColoursTest, EveryRowOnBothSides) {
  const TextWindow window = startWithPair();
  const int height = lineHeight(window);
  ASSERT_GT(height, 0);
  RECT view = {};
  GetClientRect(window.view(), &view);
  const int middle = view.right / 2;
  // The gutter and the end of the text area of each side; the gap of 20 pixels between them is neither's.
  for (const int x : {0, middle - 11}) EXPECT_SOON(rowsAt(window.view(), x, height), leftRows) << x;
  for (const int x : {middle + 10, static_cast<int>(view.right) - 1}) {
    EXPECT_SOON(rowsAt(window.view(), x, height), rightRows) << x;
  }

  // Of the changed row, the characters that differ stand inverted on a darker ground.
  const Picture picture = pictureOfClient(window.view());
  EXPECT_TRUE(picture.shows(RGB(0xF0 * 60 / 100, 0xCA * 60 / 100, 0xA6 * 60 / 100), 7 * height, 8 * height));
  EXPECT_FALSE(picture.shows(RGB(0xF0 * 60 / 100, 0xCA * 60 / 100, 0xA6 * 60 / 100), 0, 7 * height));
}

TEST_F(ColoursTest, SummaryBands) {
  const TextWindow window = startWithPair();
  const int height = lineHeight(window);
  ASSERT_GT(height, 0);
  RECT bar = {};
  GetClientRect(window.summary(), &bar);
  const COLORREF face = GetSysColor(COLOR_BTNFACE);
  const auto middleOf = [&](int row, int x) {
    return pictureOfClient(window.summary()).at(x, row * height + height / 2);
  };
  const std::vector<COLORREF> fills = {face, face, leftOnly, face, rightOnly, rightOnly, face, changed};
  // At the first row stands the caret's marker.
  for (int row = 1; row < static_cast<int>(fills.size()); ++row) {
    const COLORREF fill = fills[static_cast<size_t>(row)];
    EXPECT_SOON(middleOf(row, bar.right / 2), fill) << row;
    EXPECT_SOON(middleOf(row, 2), face) << row;
    EXPECT_SOON(middleOf(row, bar.right - 3), face) << row;
    const COLORREF edge = middleOf(row, 4);
    EXPECT_EQ(edge == face, fill == face) << row;
    EXPECT_EQ(edge, middleOf(row, bar.right - 5)) << row;
  }
}

TEST_F(ColoursTest, EveryDifferenceOfALongFileHasItsBand) {
  std::string more = numberedLines(6000);
  more.insert(more.find("line 1000\r\n"), "one more\r\n");
  const TextWindow window =
      startWith(writeFile("long.txt", numberedLines(6000)), writeFile("longer.txt", more));
  const auto bandAt = [&]() -> double {
    const Picture picture = pictureOfClient(window.summary());
    const auto runs = picture.column(4, picture.height());
    int y = 0;
    for (const Picture::Run& run : runs) {
      if (run.colour != GetSysColor(COLOR_BTNFACE) && run.colour != 0) return 1.0 * y / picture.height();
      y += run.length;
    }
    return -1;
  };
  ASSERT_TRUE(waitUntil([&] { return bandAt() > 0; }));
  EXPECT_NEAR(bandAt(), 1.0 / 6, 0.03);
}

TEST_F(ColoursTest, ArrowsOffLeavesOneColour) {
  saveText("DrawArrows", "false");
  const TextWindow window = startWithPair();
  const int height = lineHeight(window);
  ASSERT_GT(height, 0);
  const Rows rows = {{same, 2}, {filler, 1}, {same, 1}, {filler, 2}, {same, 1}, {filler, 1}, {same, 1}};
  EXPECT_SOON(rowsAt(window.view(), 2, height), rows);
}

TEST_F(ColoursTest, ReadOnlyFilesAreGrey) {
  const std::string file = writeFile("left.txt", left);
  SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
  const TextWindow window = startWith(file, writeFile("right.txt", right));
  const int height = lineHeight(window);
  ASSERT_GT(height, 0);
  const auto textColour = [&](int from) {
    RECT view = {};
    GetClientRect(window.view(), &view);
    MapWindowPoints(window.view(), nullptr, reinterpret_cast<POINT*>(&view), 2);
    const int middle = (view.left + view.right) / 2;
    (from == 0 ? view.right : view.left) = middle;
    view.top += height;  // not the caret's row
    const Picture pane(view);
    return pane.shows(0x606060, 0, height) ? 0x606060 : pane.shows(0, 0, height) ? 0 : -1;
  };
  EXPECT_SOON(textColour(0), 0x606060);
  EXPECT_SOON(textColour(1), 0);
  SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(ColoursTest, SelectionIsInverted) {
  const TextWindow window = startWithPair();
  const int height = lineHeight(window);
  ASSERT_GT(height, 0);
  ASSERT_TRUE(window.activate());
  press('A', {VK_CONTROL});
  const auto grounds = [&] {
    const Picture picture = pictureOfClient(window.view());
    return std::vector<COLORREF>{picture.at(9, 1), picture.at(9, 2 * height + 1)};
  };
  const std::vector<COLORREF> inverted = {same ^ 0xFFFFFF, leftOnly ^ 0xFFFFFF};
  EXPECT_SOON(grounds(), inverted);
}

}  // namespace
}  // namespace merivane
