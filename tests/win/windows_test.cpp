// The windows and their menus, what keys do to them, what the program keeps from run to run, and its help.

#include <windows.h>

#include <commctrl.h>

#include <sstream>

#include "tests/win/gui_test.h"

namespace merivane {
namespace {

std::vector<LONG> placeOf(HWND window) {
  const RECT area = areaOf(window);
  return {area.left, area.top, area.right, area.bottom};
}

class WindowsTest : public GuiTest {
 protected:
  const std::string a_ = writeFile("a.txt", "1\r\nalone\r\n2\r\n");
  const std::string b_ = writeFile("b.txt", "1\r\n2\r\n");

  /// Waits until so many text windows are open, and returns the topmost: the one just opened.
  TextWindow topOf(size_t count) {
    std::vector<HWND> windows;
    waitUntil([&] {
      windows = program_->windows("CompareWindow");
      return windows.size() == count && windows.front() == GetForegroundWindow();
    });
    EXPECT_EQ(windows.size(), count);
    return {*program_, windows.empty() ? nullptr : windows.front()};
  }
};

TEST_F(WindowsTest, OpenBesideEachOtherAndCloseOneByOne) {
  const TextWindow first = startWith(a_, b_);
  press('N', {VK_CONTROL});
  const TextWindow second = topOf(2);
  EXPECT_THAT(placeOf(second.handle()), testing::ElementsAre(90, 80, 890, 680));
  EXPECT_THAT(second.menu(4), testing::EndsWith("Vertically\n-(no folder windows)\n"
                                                "Merivane - [a.txt, b.txt]\n*Merivane - [a.txt, b.txt]\n"));
  second.run(Command::firstTextWindow);
  EXPECT_SOON(GetForegroundWindow(), first.handle());
  press('N', {VK_CONTROL});
  topOf(3);
  press('W', {VK_CONTROL});
  topOf(2);
  press(VK_ESCAPE);
  EXPECT_EQ(program_->exitCode(), 0u) << "all windows";

  save("EscQuitsApp", "false");
  save("ReUseFileWindow", "true");
  const TextWindow staying = startWith(a_, b_);
  press(VK_ESCAPE);
  press('N', {VK_CONTROL});
  press(VK_DOWN);
  EXPECT_SOON(staying.caret(), "Virt 2, Ln 2, Col 1");
  press('Q', {VK_CONTROL});
  EXPECT_EQ(program_->exitCode(), 0u);
}

TEST_F(WindowsTest, MenusShowWhatCanBeDoneAndWhatIsShown) {
  const TextWindow window = startWith(a_, b_);
  const auto marked = [&](const std::string& marks) {
    std::string items;
    for (const int menu : {1, 2, 3}) {
      std::istringstream lines(window.menu(menu));
      for (std::string item; std::getline(lines, item);) {
        if (marks.find(item[0]) != marks.npos) items += item.substr(0, item.find('\t'));
      }
    }
    return items;
  };
  press(VK_F8);
  press(VK_RIGHT, {VK_SHIFT});
  copiedBy([] { press('C', {VK_CONTROL}); });
  EXPECT_EQ(marked("-"),
            "-&Undo-&Redo-Find &Next-Find Pre&v-Previous F&ile-Next &File-&Copy <---Co&py Line <--");

  EXPECT_EQ(marked("*o"), "*&Toolbar*Status &Bar*Su&mmary*S&ync Scrollingo&None");
  for (const Command command : {Command::viewToolBar, Command::viewStatusBar, Command::viewSummary,
                                Command::showWhiteSpace, Command::syncScrolling, Command::lineNumbersReal}) {
    window.run(command);
  }
  EXPECT_SOON(marked("*o"), "*&White Spaceo&Real");
  EXPECT_FALSE(IsWindowVisible(window.summary()));

  window.run(Command::viewToolBar);
  const HWND bar = childOf(window.handle(), TOOLBARCLASSNAMEA);
  const auto height = [&] { return areaOf(bar).bottom - areaOf(bar).top; };
  const LONG oneRow = height();
  MoveWindow(window.handle(), 0, 0, 400, 400, TRUE);
  EXPECT_SOON(height() > oneRow, true) << "what has no room in a row goes on in the next";
}

TEST_F(WindowsTest, FollowsTheResolutionOfItsMonitor) {
  const TextWindow window = startWith(a_, b_);
  const auto heightOf = [](HWND control) { return areaOf(control).bottom - areaOf(control).top; };
  const auto sizes = [&] {
    GUITHREADINFO thread = {};
    thread.cbSize = sizeof thread;
    GetGUIThreadInfo(GetWindowThreadProcessId(window.handle(), nullptr), &thread);
    return std::map<std::string, LONG>{
        {"toolbar", heightOf(childOf(window.handle(), TOOLBARCLASSNAMEA))},
        {"box", heightOf(window.nameBox(0))},
        {"button", heightOf(childOf(window.handle(), "Button"))},
        {"row", thread.rcCaret.bottom - thread.rcCaret.top},
        {"summary", areaOf(window.summary()).right - areaOf(window.summary()).left},
        {"status bar", heightOf(childOf(window.handle(), STATUSCLASSNAMEA))},
    };
  };
  const auto usual = sizes();
  const RECT place = areaOf(window.handle());
  window.changeDpi(144, {20, 10, 1220, 910});
  EXPECT_THAT(placeOf(window.handle()), testing::ElementsAre(20, 10, 1220, 910));
  for (const auto& [part, size] : sizes()) EXPECT_NEAR(size, usual.at(part) * 3 / 2, 5) << part;
  window.changeDpi(96, place);
  EXPECT_EQ(sizes(), usual);
}

TEST_F(WindowsTest, NothingIsShownAnewThatHasNotChanged) {
  const TextWindow window = startWith(writeFile("c.txt", "one\nleft\n"), writeFile("d.txt", "one\nlift\n"));
  press(VK_DOWN);
  EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 1");
  const Hook hook(window.handle());
  const auto shownBy = [&](const std::function<void()>& action, const char* caret) {
    window.shownAnew();
    action();
    EXPECT_SOON(window.caret(), caret);
    return window.shownAnew();
  };
  // Buttons, title, places of windows, panes as a whole.
  const ShownAnew nothing;
  EXPECT_EQ(shownBy([] { press(VK_RIGHT); }, "Virt 2, Ln 2, Col 2"), nothing);
  EXPECT_EQ(shownBy([] { type("x"); }, "Virt 2, Ln 2, Col 3"), (ShownAnew{2, 1, 0, 0}))
      << "undo and Save All";
  EXPECT_EQ(shownBy([] { type("y"); }, "Virt 2, Ln 2, Col 4"), nothing);
  const ShownAnew split = shownBy([] { press(VK_RETURN); }, "Virt 3, Ln 3, Col 1");
  const ShownAnew undone = shownBy([] { press('Z', {VK_CONTROL}); }, "Virt 2, Ln 2, Col 4");
  EXPECT_EQ(undone.buttons, 1u + split.buttons) << "redo";
  const ShownAnew redone = shownBy([] { press('Y', {VK_CONTROL}); }, "Virt 3, Ln 3, Col 1");
  shownBy([] { press('Z', {VK_CONTROL}); }, "Virt 2, Ln 2, Col 4");
  window.run(Command::lineNumbersNone);  // as they are
  EXPECT_EQ(shownBy([] { press(VK_LEFT); }, "Virt 2, Ln 2, Col 3"), nothing);
  window.shownAnew();
  press(VK_OEM_6, {VK_CONTROL});  // to the right, which becomes modified
  EXPECT_SOON(window.differences(), "No differences");
  const ShownAnew copied = window.shownAnew();
  EXPECT_EQ(copied.titles, 1u);
  for (const ShownAnew& shown : {split, undone, redone, copied}) {
    EXPECT_EQ(shown.places, 0u);
    EXPECT_LE(shown.panes, 1u);
  }
  EXPECT_EQ(split.titles + undone.titles + redone.titles, 0u);
}

TEST_F(WindowsTest, SettingsOutliveTheProgram) {
  const TextWindow window = startWith(a_, b_);
  EXPECT_EQ(saved("LeftFile.text"), a_) << "at once";
  MoveWindow(window.handle(), 60, 70, 700, 500, TRUE);
  EXPECT_LT(areaOf(window.summary()).right, 760);
  window.run(Command::lineNumbersReal);
  quit(window);

  const TextWindow again = start();
  EXPECT_EQ(again.name(1), b_);
  EXPECT_THAT(again.menu(2), testing::HasSubstr("\no&Real\n"));
  EXPECT_THAT(placeOf(again.handle()), testing::ElementsAre(60, 70, 760, 570));
  // A maximized window keeps the place it is restored to.
  ShowWindow(again.handle(), SW_MAXIMIZE);
  ASSERT_TRUE(waitUntil([&] { return IsZoomed(again.handle()) != 0; }));
  quit(again);
  EXPECT_EQ(saved("CompareWindow"), "1,3c,46,2f8,23a");
  EXPECT_SOON(IsZoomed(start().handle()), TRUE);
}

TEST_F(WindowsTest, ATipADayFromTheStartOn) {
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

TEST_F(WindowsTest, TheAboutBoxSaysWhatItShowsAndTheManualOpensInTheViewer) {
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
