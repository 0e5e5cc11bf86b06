// What the program keeps from run to run.

#include <gtest/gtest.h>

#include <utility>

#include "tests/win/gui_test.h"
#include "tests/win/support/input.h"

namespace merivane {
namespace {

class SavedSettingsTest : public GuiTest {};

TEST_F(SavedSettingsTest, AreWrittenWhenTheProgramEnds) {
  const std::string a = writeFile("a.txt", "1\r\n");
  const std::string b = writeFile("b.txt", "2\r\n");
  const TextWindow window = startWith(a, b);
  EXPECT_EQ(savedText("LeftFile.text"), a) << "at once";
  EXPECT_EQ(savedText("RightFile.text"), b) << "at once";
  ASSERT_TRUE(window.activate());
  window.setName(0, b);
  window.setName(1, a);
  press(VK_F5);
  EXPECT_SOON(window.title(), "Merivane - [b.txt, a.txt]");
  window.run(Command::showWhiteSpace);
  window.run(Command::lineNumbersReal);
  window.run(Command::viewToolBar);
  EXPECT_SOON(window.menu(2)[0].checked, false);
  MoveWindow(window.handle(), 60, 70, 700, 500, TRUE);
  EXPECT_EQ(savedText("ShowWhiteSpace"), std::nullopt) << "nothing before the end";
  quit(window);

  const std::pair<const char*, std::string> texts[] = {
      {"ShowWhiteSpace", "true"},
      {"SyncScroll", "true"},
      {"ViewToolBar", "false"},
      {"LeftFileHistory.0", b},
      {"LeftFileHistory.1", a},
      {"RightFileHistory.0", a},
      {"RightFileHistory.1", b},
      {"LeftFile.text", b},
      {"RightFile.text", a},
      {"FindText", ""},
      {"CompareWindow", "0,3c,46,2f8,23a"},
      {"SessionWindow", "0,32,32,1f4,258"},
  };
  for (const auto& [name, text] : texts) EXPECT_EQ(savedText(name), text) << name;
  const std::pair<const char*, DWORD> numbers[] = {
      {"ShowLineNumbers", 1},       {"TabStop", 4}, {"LeftFileHistory.count", 2}, {"LeftBkColor", 0xC0DCC0},
      {"CustomColor.15", 0xFFFFFF},
  };
  for (const auto& [name, number] : numbers) EXPECT_EQ(savedNumber(name), number) << name;

  const TextWindow again = start();
  EXPECT_EQ(again.name(0), b);
  EXPECT_EQ(again.name(1), a);
  EXPECT_EQ(again.names(0), (std::vector<std::string>{b, a}));
  const RECT area = again.area();
  const RECT moved = {60, 70, 760, 570};
  EXPECT_TRUE(EqualRect(&area, &moved));
}

TEST_F(SavedSettingsTest, EditedByHand) {
  saveNumber("TabStop", 17);
  saveNumber("ShowLineNumbers", 3);
  saveText("SyncScroll", "TRUE");
  saveText("CompareWindow", "0,10000,10000,10100,10100");
  saveNumber("LeftFileHistory.count", 5);
  saveText("LeftFileHistory.0", "d:\\one");
  saveText("LeftFileHistory.4", "d:\\five");
  const TextWindow window = start();
  RECT screen = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  RECT visible = {};
  const RECT area = window.area();
  EXPECT_TRUE(IntersectRect(&visible, &area, &screen)) << "a place off the screen is none";
  EXPECT_EQ(window.names(0), (std::vector<std::string>{"d:\\one", "d:\\five"}));
  quit(window);
  EXPECT_EQ(savedNumber("TabStop"), 4u);
  EXPECT_EQ(savedNumber("ShowLineNumbers"), 2u);
  EXPECT_EQ(savedText("SyncScroll"), "false");
  EXPECT_EQ(savedNumber("LeftFileHistory.count"), 2u);
  EXPECT_EQ(savedText("LeftFileHistory.1"), "d:\\five");
  EXPECT_EQ(savedText("LeftFileHistory.4"), "d:\\five") << "out of use, yet not removed";
}

TEST_F(SavedSettingsTest, MaximizedWindowKeepsItsRestoredPlace) {
  const TextWindow window = start();
  ShowWindow(window.handle(), SW_MAXIMIZE);
  ASSERT_TRUE(waitUntil([&] { return IsZoomed(window.handle()) != 0; }));
  quit(window);
  EXPECT_EQ(savedText("CompareWindow"), "1,28,1e,348,276");
  const TextWindow again = start();
  EXPECT_SOON(IsZoomed(again.handle()), TRUE);
  ShowWindow(again.handle(), SW_RESTORE);
  ASSERT_TRUE(waitUntil([&] { return IsZoomed(again.handle()) == 0; }));
  const RECT area = again.area();
  EXPECT_TRUE(EqualRect(&area, &kPlace));
}

}  // namespace
}  // namespace merivane
