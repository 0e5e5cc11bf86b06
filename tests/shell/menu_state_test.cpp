#include "shell/menu_state.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "shell/command_table.h"

namespace merivane {
namespace {

using Commands = std::set<Command>;

Commands enabled(const WindowFacts& window, const Settings& settings = {}) {
  Commands result;
  for (const CommandRow& row : commandRows()) {
    if (commandState(row.id, window, settings).enabled) result.insert(row.id);
  }
  return result;
}

Commands without(Commands from, const Commands& taken) {
  for (const Command id : taken) from.erase(id);
  return from;
}

/// A window in which everything can be done.
WindowFacts busyWindow() {
  WindowFacts window;
  window.textWindows = 1;
  window.modified[1] = window.canUndo = window.canRedo = true;
  window.hasSelection = window.clipboardHasText = window.hasDifferences = true;
  window.caretRow = RowStatus::changed;
  return window;
}

TEST(MenuState, EachFactDecidesAboutItsOwnCommands) {
  using enum Command;
  Settings settings;
  settings.findText = "x";
  const Commands all = enabled(busyWindow(), settings);
  for (const CommandRow& row : commandRows()) EXPECT_EQ(all.contains(row.id), row.implemented) << int(row.id);

  struct Case {
    std::function<void(WindowFacts&)> change;
    Commands greyed;
  };
  const Case cases[] = {
      {[](auto& w) { w.modified[1] = false; }, {saveAll}},
      {[](auto& w) { w.canUndo = false; }, {undo}},
      {[](auto& w) { w.canRedo = false; }, {redo}},
      {[](auto& w) { w.hasSelection = false; }, {cut, copy}},
      {[](auto& w) { w.clipboardHasText = false; }, {paste}},
      {[](auto& w) { w.hasDifferences = false; }, {prevDiff, nextDiff}},
      {[](auto& w) { w.readOnly[1] = true; }, {replaceRight, copyLineRight, copyDiffRight}},
      {[](auto& w) { w.readOnly[0] = true; },
       {replaceLeft, copyLineLeft, copyDiffLeft, cut, paste, deleteText, deleteLine, deleteDiff}},
      {[](auto& w) { w.caretRow = RowStatus::same; },
       {copyLineLeft, copyDiffLeft, copyLineRight, copyDiffRight}},
      {[](auto& w) { w.caretRow = std::nullopt; },
       {copyLineLeft, copyDiffLeft, copyLineRight, copyDiffRight}},
      {[](auto& w) { w.caretRow = RowStatus::leftOnly; }, {copyLineLeft, copyDiffLeft}},
      {[](auto& w) { w.caretRow = RowStatus::rightOnly; },
       {copyLineRight, copyDiffRight, deleteLine, deleteDiff}},
      {[](auto& w) { w.caretRow = RowStatus::leftOnly, w.activeSide = 1; },
       {copyLineLeft, copyDiffLeft, deleteLine, deleteDiff}},
  };
  for (const Case& c : cases) {
    WindowFacts window = busyWindow();
    c.change(window);
    EXPECT_EQ(enabled(window, settings), without(all, c.greyed)) << &c - cases;
  }

  settings.findText.clear();
  EXPECT_EQ(enabled(busyWindow(), settings), without(all, {findNext, findPrev}));
  settings.findText = "x";
  settings.reUseFileWindow = true;
  EXPECT_EQ(enabled(busyWindow(), settings), without(all, {newTextWindow}));
}

TEST(MenuState, MarksFollowTheSettings) {
  struct Flag {
    Command id;
    bool Settings::*setting;
  };
  const Flag flags[] = {{Command::viewToolBar, &Settings::viewToolBar},
                        {Command::viewStatusBar, &Settings::viewStatusBar},
                        {Command::viewSummary, &Settings::viewSummary},
                        {Command::showWhiteSpace, &Settings::showWhiteSpace},
                        {Command::syncScrolling, &Settings::syncScroll}};
  for (const Flag& flag : flags) {
    for (const bool on : {false, true}) {
      Settings settings;
      settings.*flag.setting = on;
      EXPECT_EQ(commandState(flag.id, {}, settings), (CommandState{true, on, false}));
    }
  }
  const Command numbers[] = {Command::lineNumbersVirtual, Command::lineNumbersReal, Command::lineNumbersNone};
  for (int32_t chosen = 0; chosen < 3; ++chosen) {
    Settings settings;
    settings.showLineNumbers = chosen;
    for (int32_t i = 0; i < 3; ++i) {
      EXPECT_EQ(commandState(numbers[i], {}, settings), (CommandState{true, i == chosen, true}));
    }
  }
}

TEST(MenuState, APaneOffersWhatItsRowAllows) {
  const PaneMenu menus[4][2] = {{PaneMenu::deleteOnly, PaneMenu::deleteOnly},
                                {PaneMenu::copyRight, PaneMenu::plain},
                                {PaneMenu::plain, PaneMenu::copyLeft},
                                {PaneMenu::copyRight, PaneMenu::copyLeft}};
  for (int row = 0; row < 4; ++row) {
    for (int side = 0; side < 2; ++side) {
      EXPECT_EQ(paneMenu(static_cast<RowStatus>(row), side), menus[row][side]) << row << side;
    }
  }
}

TEST(CommandTable, EveryCommandIsFoundAndExplained) {
  Command last = {};
  for (const CommandRow& row : commandRows()) {
    EXPECT_LT(last, row.id);  // the table is searched by halves
    last = row.id;
    EXPECT_EQ(findCommand(row.id), &row);
    EXPECT_STRNE(commandHelp(row.id), "") << int(row.id);
  }
  EXPECT_EQ(findCommand(Command::firstTextWindow), nullptr);
  EXPECT_STREQ(commandHelp(static_cast<Command>(4)), "");  // a text, but no command
  EXPECT_EQ(commandTip(Command::save), "Save the file (Ctrl+S)");
  EXPECT_EQ(commandTip(Command::browseLeftFile), "Choose left file");
}

}  // namespace
}  // namespace merivane
