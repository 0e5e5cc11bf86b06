// Which commands the menus offer, and which are marked.

#include <gmock/gmock.h>

#include <map>
#include <vector>

#include "tests/win/gui_test.h"
#include "tests/win/support/input.h"

namespace merivane {
namespace {

using testing::ElementsAre;

constexpr int kMenus = 6;
constexpr int kWindowMenu = 4;

/// The items of the whole menu bar by their commands.
std::map<uint32_t, MenuItem> menuItems(const TextWindow& window) {
  std::map<uint32_t, MenuItem> items;
  for (int menu = 0; menu < kMenus; ++menu) {
    for (const MenuItem& item : window.menu(menu)) items[item.id] = item;
  }
  return items;
}

struct State {
  Command command;
  bool fresh;       // in a window that has compared nothing
  bool compared;    // with the caret on an equal row
  bool atLeftOnly;  // with the caret in a line that is on the left alone, and something selected
};

constexpr State kStates[] = {
    {Command::newTextWindow, true, true, true}, {Command::save, true, true, true},
    {Command::saveAs, true, true, true},        {Command::saveAll, false, false, false},
    {Command::close, true, true, true},         {Command::exit, true, true, true},
    {Command::undo, false, false, false},       {Command::redo, false, false, false},
    {Command::selectAll, true, true, true},     {Command::find, true, true, true},
    {Command::findNext, false, false, false},   {Command::findPrev, false, false, false},
    {Command::prevDiff, false, true, true},     {Command::nextDiff, false, true, true},
    {Command::refresh, true, true, true},
};

class MenusTest : public GuiTest {};

TEST_F(MenusTest, CommandsAreOfferedWhereTheyMakeSense) {
  const TextWindow fresh = start();
  auto items = menuItems(fresh);
  for (const State& row : kStates) {
    EXPECT_EQ(items[static_cast<uint32_t>(row.command)].enabled, row.fresh) << static_cast<int>(row.command);
  }
  quit(fresh);

  const TextWindow window =
      startWith(writeFile("a.txt", "1\r\nalone\r\n2\r\n"), writeFile("b.txt", "1\r\n2\r\n"));
  items = menuItems(window);
  for (const State& row : kStates) {
    EXPECT_EQ(items[static_cast<uint32_t>(row.command)].enabled, row.compared)
        << static_cast<int>(row.command);
  }

  ASSERT_TRUE(window.activate());
  press(VK_F8);
  press(VK_RIGHT, {VK_SHIFT});
  EXPECT_SOON(window.caret(), "Virt 2, Ln 2, Col 2");
  items = menuItems(window);
  for (const State& row : kStates) {
    EXPECT_EQ(items[static_cast<uint32_t>(row.command)].enabled, row.atLeftOnly)
        << static_cast<int>(row.command);
  }
}

TEST_F(MenusTest, MarksFollowTheView) {
  const TextWindow window = start();
  const auto marks = [&] {
    std::vector<uint32_t> marked;
    for (const MenuItem& item : window.menu(2)) {
      if (item.checked) marked.push_back(item.id);
    }
    return marked;
  };
  EXPECT_THAT(marks(), ElementsAre(20200, 20201, 20202, 20205, 20209));
  EXPECT_TRUE(menuItems(window)[20209].radio);
  EXPECT_FALSE(menuItems(window)[20205].radio);
  for (const Command command : {Command::viewToolBar, Command::viewStatusBar, Command::viewSummary,
                                Command::showWhiteSpace, Command::syncScrolling, Command::lineNumbersReal}) {
    window.run(command);
  }
  EXPECT_SOON(marks(), (std::vector<uint32_t>{20203, 20208}));
  EXPECT_FALSE(IsWindowVisible(window.summary()));
  window.run(Command::lineNumbersVirtual);
  window.run(Command::viewSummary);
  EXPECT_SOON(marks(), (std::vector<uint32_t>{20202, 20203, 20207}));
  EXPECT_TRUE(IsWindowVisible(window.summary()));
}

TEST_F(MenusTest, WindowMenuListsTheWindows) {
  const TextWindow first = startWith(writeFile("a.txt", "1\r\n"), writeFile("b.txt", "2\r\n"));
  const auto list = [](const TextWindow& window) {
    std::vector<std::string> entries;
    for (const MenuItem& item : window.menu(kWindowMenu)) {
      const std::string marks = std::string(item.checked ? "*" : "") + (item.enabled ? "" : "-");
      entries.push_back(item.separator ? "|" : marks + item.text);
    }
    return std::vector<std::string>(entries.begin() + 3, entries.end());
  };
  EXPECT_THAT(list(first), ElementsAre("|", "-(no folder windows)", "|", "*Merivane - [a.txt, b.txt]"));
  first.run(Command::newTextWindow);
  ASSERT_TRUE(waitUntil([&] { return program_->windows("CompareWindow").size() == 2; }));
  EXPECT_THAT(list(first),
              ElementsAre("|", testing::_, "|", "*Merivane - [a.txt, b.txt]", "Merivane - [a.txt, b.txt]"));
}

}  // namespace
}  // namespace merivane
