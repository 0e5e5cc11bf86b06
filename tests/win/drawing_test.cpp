// Rows, the summary and the list of fonts, as they come out on the screen.

#include "shell/win/font_list.h"
#include "tests/win/gui_test.h"

namespace merivane {
namespace {

/// The colours of rows, each with its letter; "-" is the window's own.
const std::map<COLORREF, char> kLetters = {{0xFFFFFF, '.'}, {0xF4F4F4, 'f'},
                                           {0xC0DCC0, 'l'}, {0xF0CAA6, 'r'},
                                           {0xA6CAF0, 'c'}, {GetSysColor(COLOR_BTNFACE), '-'}};

class DrawingTest : public GuiTest {
 protected:
  const std::string left_ = writeFile("left.txt", "one\ntwo\nonly here\n3\nfour\nthe old word\nfive\n");
  const std::string right_ =
      writeFile("right.txt", "one\ntwo\n3\nonly there\nand there\nfour\nthe new word\nfive\n");
  int height_ = 0;    // of a row
  RECT client_ = {};  // of the view

  TextWindow startWithPair() {
    save("DrawCaretBox", "false");
    const TextWindow window = startWith(left_, right_);
    GetClientRect(window.view(), &client_);
    EXPECT_TRUE(waitUntil([&] {
      const Picture picture = pictureOfClient(window.view());
      // Where another colour begins there are two rows above it.
      for (height_ = 0; picture.at(2, 2 * height_) == 0xFFFFFF;) ++height_;
      return picture.at(2, 2 * height_) != CLR_INVALID && height_ > 0;
    }));
    return window;
  }

  /// The letters of a window's rows in one of its columns; "#" for any other colour.
  std::string rowsAt(HWND window, int x) const {
    const Picture picture = pictureOfClient(window);
    std::string letters;
    for (int row = 0; row < 9; ++row) {
      const auto found = kLetters.find(picture.at(x, row * height_ + height_ / 2));
      letters += found == kLetters.end() ? '#' : found->second;
    }
    return letters;
  }
};

TEST_F(DrawingTest, EveryRowOnBothSides) {
  const TextWindow window = startWithPair();
  const int middle = client_.right / 2;
  // The gutter and the end of the text area of each side; the gap of 20 pixels between them is neither's.
  for (const int x : {0, middle - 11}) EXPECT_SOON(rowsAt(window.view(), x), "..l.ff.c.") << x;
  for (const int x : {middle + 10, static_cast<int>(client_.right) - 1}) {
    EXPECT_SOON(rowsAt(window.view(), x), "..f.rr.c.") << x;
  }
  // Of the changed row, the characters that differ stand inverted on a darker ground.
  const COLORREF darker = RGB(0xF0 * 60 / 100, 0xCA * 60 / 100, 0xA6 * 60 / 100);
  EXPECT_TRUE(pictureOfClient(window.view()).shows(darker, 7 * height_, 8 * height_));
  EXPECT_SOON(rowsAt(window.summary(), 10).substr(1), "-l-rr-c-") << "the caret's row is marked";
  // A selection is inverted, whatever the ground.
  press('A', {VK_CONTROL});
  EXPECT_SOON(pictureOfClient(window.view()).shows(0xC0DCC0 ^ 0xFFFFFF, 2 * height_, 3 * height_), true);
}

TEST(FontListTest, FacesAreTrimmedAndVerticalOnesLeftOut) {
  EXPECT_EQ(listedFace(L"  MS Gothic "), L"MS Gothic");
  EXPECT_EQ(listedFace(L" @MS Gothic"), std::nullopt);
}

}  // namespace
}  // namespace merivane
