// The list of fonts, in a combo box of the test's own.

#include "shell/win/font_list.h"

#include <gtest/gtest.h>

namespace merivane {
namespace {

TEST(FontListTest, ShowsEveryFaceAndItsSelection) {
  const HWND owner =
      CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
  const HWND box =
      CreateWindowExA(0, "COMBOBOX", "", WS_CHILD | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, 0,
                      0, 40, 100, owner, nullptr, nullptr, nullptr);
  ASSERT_NE(box, nullptr);
  fillFontList(box);
  fillFontList(box);  // does not add them again
  const auto find = [box](LRESULT after) {
    return SendMessageA(box, CB_FINDSTRINGEXACT, static_cast<WPARAM>(after),
                        reinterpret_cast<LPARAM>("Tahoma"));
  };
  const LRESULT face = find(-1);
  ASSERT_GE(face, 0);
  EXPECT_EQ(find(face), face) << "once";
  EXPECT_TRUE(SendMessageA(box, CB_GETITEMDATA, static_cast<WPARAM>(face), 0) & TRUETYPE_FONTTYPE);
  EXPECT_GT(SendMessageA(box, CB_GETDROPPEDWIDTH, 0, 0), 60) << "wider than the box";

  const HDC screen = GetDC(nullptr);
  const HDC dc = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, 100, 20);
  SelectObject(dc, bitmap);
  DRAWITEMSTRUCT item = {};
  item.hwndItem = box;
  item.hDC = dc;
  item.itemID = static_cast<UINT>(face);
  item.rcItem = {0, 0, 100, 20};
  const auto inkOn = [&](UINT state, int background) {
    item.itemState = state;
    drawFontItem(item);
    int ink = 0;
    for (int x = 0; x < 100; ++x) {
      for (int y = 0; y < 20; ++y) ink += GetPixel(dc, x, y) != GetSysColor(background);
    }
    return ink;
  };
  EXPECT_GT(inkOn(0, COLOR_WINDOW), 20);
  EXPECT_LT(inkOn(0, COLOR_WINDOW), 1000);
  EXPECT_GT(inkOn(ODS_SELECTED, COLOR_HIGHLIGHT), 20);
  EXPECT_LT(inkOn(ODS_SELECTED, COLOR_HIGHLIGHT), 1000);
  DeleteDC(dc);
  DeleteObject(bitmap);
  ReleaseDC(nullptr, screen);
  DestroyWindow(owner);
}

}  // namespace
}  // namespace merivane
