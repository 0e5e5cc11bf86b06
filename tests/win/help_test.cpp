// The tip of the day, the about box and the manual.

#include "tests/win/gui_test.h"

namespace merivane {
namespace {

class HelpTest : public GuiTest {};

TEST_F(HelpTest, ATipADayFromTheStartOn) {
  save("TipOfTheDay.ShowOnStartup", "true");
  const TextWindow window = start(writeFile("a.txt", "1\r\n") + ' ' + writeFile("b.txt", "2\r\n"));
  HWND dialog = program_->dialog("Tip of the day");
  ASSERT_NE(dialog, nullptr);
  EXPECT_SOON(window.differences(), "Diffs: 1, Lines: 1") << "a comparison leaves the window to the tip";
  EXPECT_SOON(IsWindowEnabled(window.handle()), FALSE);
  EXPECT_SOON(saved("TipOfTheDay.TipIndex"), "# 1");
  const auto tip = [&] { return textOf(GetDlgItem(dialog, 25008)); };
  const std::string first = tip();
  EXPECT_GT(first.size(), 20u);
  press('N', {VK_MENU});
  EXPECT_SOON(saved("TipOfTheDay.TipIndex"), "# 2");
  press('S', {VK_MENU});
  EXPECT_SOON(saved("TipOfTheDay.ShowOnStartup"), "false");
  press(VK_ESCAPE);
  EXPECT_SOON(IsWindow(dialog), FALSE);
  EXPECT_SOON(IsWindowEnabled(window.handle()), TRUE);
  // By command it comes whatever the box says; the last tip leads back to the first.
  save("TipOfTheDay.TipIndex", 1000);
  window.run(Command::tipOfTheDay);
  dialog = program_->dialog("Tip of the day");
  EXPECT_SOON(tip(), first);
  EXPECT_TRUE(pressButton(dialog, IDCANCEL));
  quit(window);
}

TEST_F(HelpTest, TheAboutBoxSaysWhatItShowsAndTheManualOpensInTheViewer) {
  const TextWindow window = start();
  window.run(Command::about);
  const HWND dialog = program_->dialog("About Merivane");
  EXPECT_THAT(textOf(GetDlgItem(dialog, 24008)), testing::StartsWith("Merivane, Version 1.0.0, Released 2"));
  EXPECT_TRUE(pressButton(dialog, IDOK));
  if (readFile(programFolder() + "manual.chm").empty()) GTEST_SKIP() << "no help compiler was there";
  EXPECT_TRUE(window.activate());
  press(VK_F1);
  EXPECT_NE(program_->window("HH Parent"), nullptr);
  quit(window);
}

}  // namespace
}  // namespace merivane
