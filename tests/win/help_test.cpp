// The tip of the day, the about box and the manual.

#include "tests/win/gui_test.h"

namespace merivane {
namespace {

class HelpTest : public GuiTest {
 protected:
  static std::string tipIn(HWND dialog) { return textOf(GetDlgItem(dialog, 25008)); }
};

TEST_F(HelpTest, ATipADayFromTheStartOn) {
  save("TipOfTheDay.ShowOnStartup", "true");
  const TextWindow window = start(writeFile("a.txt", "1\r\n") + ' ' + writeFile("b.txt", "2\r\n"));
  HWND dialog = program_->dialog("Tip of the day");
  ASSERT_NE(dialog, nullptr);
  EXPECT_SOON(window.differences(), "Diffs: 1, Lines: 1") << "a comparison leaves the window to the tip";
  EXPECT_SOON(IsWindowEnabled(window.handle()), FALSE);
  EXPECT_SOON(saved("TipOfTheDay.TipIndex"), "# 1");
  const std::string first = tipIn(dialog);
  EXPECT_GT(first.size(), 20u);
  press('N', {VK_MENU});
  EXPECT_SOON(saved("TipOfTheDay.TipIndex"), "# 2");
  EXPECT_NE(tipIn(dialog), first);
  press('S', {VK_MENU});
  EXPECT_SOON(saved("TipOfTheDay.ShowOnStartup"), "false");
  press(VK_ESCAPE);
  EXPECT_SOON(IsWindow(dialog), FALSE);
  EXPECT_SOON(IsWindowEnabled(window.handle()), TRUE);
  // By command it comes whatever the box says; the last tip leads back to the first.
  save("TipOfTheDay.TipIndex", 1000);
  PostMessageA(window.handle(), WM_COMMAND, static_cast<WPARAM>(Command::tipOfTheDay), 0);
  dialog = program_->dialog("Tip of the day");
  EXPECT_SOON(tipIn(dialog), first);
  EXPECT_TRUE(pressButton(dialog, IDCANCEL));
  quit(window);
}

TEST_F(HelpTest, TheAboutBoxSaysWhatItShows) {
  const TextWindow window = start();
  PostMessageA(window.handle(), WM_COMMAND, static_cast<WPARAM>(Command::about), 0);
  const HWND dialog = program_->dialog("About Merivane");
  EXPECT_THAT(textOf(GetDlgItem(dialog, 24008)), testing::StartsWith("Merivane, Version 1.0.0, Released 2"));
  press(VK_ESCAPE);
  EXPECT_SOON(IsWindow(dialog), FALSE);
  quit(window);
}

TEST_F(HelpTest, TheManualOpensInTheViewer) {
  if (readFile(programFolder() + "manual.chm").empty()) GTEST_SKIP() << "no help compiler was there";
  const TextWindow window = start();
  EXPECT_TRUE(window.activate());
  press(VK_F1);
  EXPECT_NE(program_->window("HH Parent"), nullptr);
  quit(window);
}

}  // namespace
}  // namespace merivane
