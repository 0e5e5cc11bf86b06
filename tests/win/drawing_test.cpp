// Rows, the summary and the list of fonts, as they come out on the screen.

#include "shell/win/font_list.h"
#include "tests/win/gui_test.h"

namespace merivane {
namespace {

constexpr COLORREF same = 0xFFFFFF;
constexpr COLORREF filler = 0xF4F4F4;
constexpr COLORREF leftOnly = 0xC0DCC0;
constexpr COLORREF rightOnly = 0xF0CAA6;
constexpr COLORREF changed = 0xA6CAF0;

/// How rows are coloured: so many of a colour, from the top.
using Rows = std::vector<Picture::Run>;

class DrawingTest : public GuiTest {
 protected:
  const std::string left_ =
      writeFile("left.txt", "one\r\ntwo\r\nonly here\r\nthree\r\nfour\r\nthe old word\r\nfive\r\n");
  const std::string right_ = writeFile(
      "right.txt", "one\r\ntwo\r\nthree\r\nonly there\r\nand there\r\nfour\r\nthe new word\r\nfive\r\n");
  int height_ = 1;    // of a row
  RECT client_ = {};  // of the view

  TextWindow startWithPair() {
    save("DrawCaretBox", "false");
    const TextWindow window = startWith(left_, right_);
    GetClientRect(window.view(), &client_);
    // Where the colour of the third row begins, there are two above it.
    EXPECT_TRUE(waitUntil([&] {
      const auto runs = pictureOfClient(window.view()).column(2, client_.bottom);
      height_ = runs[0].length / 2;
      return runs.size() > 3;
    }));
    return window;
  }

  /// The rows' colours in a column of the view.
  Rows rowsAt(const TextWindow& window, int x) const {
    Rows runs = pictureOfClient(window.view()).column(x, 9 * height_);
    for (Picture::Run& run : runs) run.length /= height_;
    return runs;
  }
};

TEST_F(DrawingTest, EveryRowOnBothSides) {
  const TextWindow window = startWithPair();
  const Rows leftRows = {{same, 2}, {leftOnly, 1}, {same, 1}, {filler, 2},
                         {same, 1}, {changed, 1},  {same, 1}};
  const Rows rightRows = {{same, 2}, {filler, 1},  {same, 1}, {rightOnly, 2},
                          {same, 1}, {changed, 1}, {same, 1}};
  const int middle = client_.right / 2;
  // The gutter and the end of the text area of each side; the gap of 20 pixels between them is neither's.
  for (const int x : {0, middle - 11}) EXPECT_SOON(rowsAt(window, x), leftRows) << x;
  for (const int x : {middle + 10, static_cast<int>(client_.right) - 1}) {
    EXPECT_SOON(rowsAt(window, x), rightRows) << x;
  }
  // Of the changed row, the characters that differ stand inverted on a darker ground.
  const COLORREF darker = RGB(0xF0 * 60 / 100, 0xCA * 60 / 100, 0xA6 * 60 / 100);
  EXPECT_TRUE(pictureOfClient(window.view()).shows(darker, 7 * height_, 8 * height_));
  EXPECT_FALSE(pictureOfClient(window.view()).shows(darker, 0, 7 * height_));

  // A selection is inverted, whatever the ground.
  press('A', {VK_CONTROL});
  const auto grounds = [&] {
    const Picture picture = pictureOfClient(window.view());
    return std::vector<COLORREF>{picture.at(9, 1), picture.at(9, 2 * height_ + 1)};
  };
  EXPECT_SOON(grounds(), (std::vector<COLORREF>{same ^ 0xFFFFFF, leftOnly ^ 0xFFFFFF}));
}

TEST_F(DrawingTest, ReadOnlyFilesAreGreyAndArrowsCanBeTurnedOff) {
  save("DrawArrows", "false");
  SetFileAttributesA(left_.c_str(), FILE_ATTRIBUTE_READONLY);
  const TextWindow window = startWithPair();
  EXPECT_SOON(rowsAt(window, 2),
              (Rows{{same, 2}, {filler, 1}, {same, 1}, {filler, 2}, {same, 1}, {filler, 1}, {same, 1}}));
  SetFileAttributesA(left_.c_str(), FILE_ATTRIBUTE_NORMAL);
  const Picture picture = pictureOfClient(window.view());
  const auto inkOn = [&](int side, COLORREF colour) {
    const int from = side * client_.right / 2;
    for (int x = from; x < from + client_.right / 2; ++x) {
      for (const Picture::Run& run : picture.column(x, 9 * height_)) {
        if (run.colour == colour) return true;
      }
    }
    return false;
  };
  EXPECT_TRUE(inkOn(0, 0x606060));
  EXPECT_FALSE(inkOn(1, 0x606060));
}

TEST_F(DrawingTest, SummaryHasABandForEachDifference) {
  const TextWindow window = startWithPair();
  RECT bar = {};
  GetClientRect(window.summary(), &bar);
  const COLORREF face = GetSysColor(COLOR_BTNFACE);
  const auto at = [&](int row, int x) {
    return pictureOfClient(window.summary()).at(x, row * height_ + height_ / 2);
  };
  // At the first row stands the caret's marker.
  const std::vector<COLORREF> fills = {face, leftOnly, face, rightOnly, rightOnly, face, changed};
  for (int row = 1; const COLORREF fill : fills) {
    EXPECT_SOON(at(row, bar.right / 2), fill) << row;
    for (const int x : {2, static_cast<int>(bar.right) - 3}) EXPECT_SOON(at(row, x), face) << row;
    for (const int x : {4, static_cast<int>(bar.right) - 5})
      EXPECT_EQ(at(row, x) == face, fill == face) << row;
    ++row;
  }
}

// In a combo box of the test's own.
TEST(FontListTest, ShowsEveryFaceAndItsSelection) {
  const HWND box =
      CreateWindowExA(0, "COMBOBOX", "", WS_POPUP | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, 0,
                      0, 40, 100, nullptr, nullptr, nullptr, nullptr);
  fillFontList(box);
  const auto faces = SendMessageA(box, CB_GETCOUNT, 0, 0);
  fillFontList(box);
  EXPECT_EQ(SendMessageA(box, CB_GETCOUNT, 0, 0), faces) << "each once";
  DRAWITEMSTRUCT item = {};
  item.itemID = static_cast<UINT>(
      SendMessageA(box, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("Tahoma")));
  EXPECT_TRUE(SendMessageA(box, CB_GETITEMDATA, item.itemID, 0) & TRUETYPE_FONTTYPE);
  EXPECT_GT(SendMessageA(box, CB_GETDROPPEDWIDTH, 0, 0), 60) << "wider than the box";

  item.hwndItem = box;
  item.hDC = CreateCompatibleDC(nullptr);
  item.rcItem = {0, 0, 100, 20};
  const HBITMAP bitmap = CreateBitmap(100, 20, 1, 32, nullptr);
  SelectObject(item.hDC, bitmap);
  for (const auto& [state, background] :
       {std::pair(0, COLOR_WINDOW), std::pair(ODS_SELECTED, COLOR_HIGHLIGHT)}) {
    item.itemState = static_cast<UINT>(state);
    drawFontItem(item);
    int ink = 0;
    for (int i = 0; i < 2000; ++i) ink += GetPixel(item.hDC, i % 100, i / 100) != GetSysColor(background);
    EXPECT_TRUE(ink > 20 && ink < 1000) << ink;
  }
  DeleteDC(item.hDC);
  DeleteObject(bitmap);
  DestroyWindow(box);
}

}  // namespace
}  // namespace merivane
