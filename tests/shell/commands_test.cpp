// What the program can be told to do: by its command line, its menus and its tool bar.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "base/texts.h"
#include "shell/command_line.h"
#include "shell/command_table.h"
#include "shell/menu_state.h"
#include "tests/support/memory_files.h"

namespace merivane {
namespace {

TEST(CommandLine, WhatIsAskedForIsDoneOrSaid) {
  MemoryFiles files;
  files.files = {{"a", {}}, {"b", {}}, {"-c", {}}};
  files.folder = "C:\\";
  files.files["d"].kind = files.files["e"].kind = FileKind::folder;
  files.files["con"].kind = files.files["nul"].kind = FileKind::other;
  const std::string help = text(TextId::commandLineHelp), notFound = "Could not find the file or folder:\n";
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{}, "0: , "},
      {{"b", "-c"}, "2: C:\\b, C:\\-c"},
      {{"a", "missing", "-?", "/x"}, help},
      {{"a", "/x", "-y", "b", "b"}, "Unknown option:\n/x\n\n" + help},
      {{"a", "b", "missing"}, text(TextId::tooManyPaths) + ("\n\n" + help)},
      {{"a", "missing\\%1"}, notFound + "missing\\%1"},
      {{"", "a"}, notFound},
      {{"a", "/dev/null"}, "2: C:\\a, C:\\nul"},
      {{"a", "d"}, "A file cannot be compared with a folder:\na\nd\n\n" + help},
      {{"d", "e"}, "2: C:\\d, C:\\e in a folder window"},
      {{"/title1", "/x", "a", "--ReadOnly2", "-title2", "", "b"}, "2: C:\\a as /x, C:\\b read-only"},
      {{"a", "b", "/title2"}, "A name must come after this option:\n/title2\n\n" + help},
  };
  for (const auto& [arguments, answer] : cases) {
    const auto [kind, window, sides, message] = readArguments(arguments, files);
    const auto shown = [](const GivenSide& side) {
      return side.path + (side.title.empty() ? "" : " as " + side.title) +
             (side.readOnly ? " read-only" : "");
    };
    std::string opens = std::to_string(static_cast<int>(kind)) + ": " + shown(sides[0]);
    if (window == WindowKind::text || !sides[1].path.empty()) opens += ", " + shown(sides[1]);
    if (window == WindowKind::folder) opens += " in a folder window";
    EXPECT_EQ(message.empty() ? opens : message, answer);
  }
}

using Commands = std::set<Command>;

Commands enabled(const WindowFacts& window, const Settings& settings) {
  Commands result;
  for (const CommandRow& row : commandRows()) {
    if (commandState(row.id, window, settings).enabled) result.insert(row.id);
  }
  return result;
}

TEST(MenuState, EachFactDecidesAboutItsOwnCommands) {
  using enum Command;
  // A window in which everything can be done.
  WindowFacts busy;
  busy.textWindows = 1;
  busy.modified[1] = busy.canUndo = busy.canRedo = true;
  busy.hasSelection = busy.clipboardHasText = true;
  busy.showsComparison = busy.hasDifferences = busy.hasFile = true;
  busy.hasFileList = busy.hasParents = true;
  busy.offered = {compareEntries, copyToOld, copyToNew, deleteOld, deleteNew, deleteBoth};
  busy.caretRow = RowStatus::changed;
  Settings some;
  some.findText = "x";
  const Commands all = enabled(busy, some);
  EXPECT_EQ(all.size(), commandRows().size());

  using W = WindowFacts;
  using S = Settings;
  const Commands copies = {copyLineLeft, copyDiffLeft, copyLineRight, copyDiffRight};
  const std::pair<void (*)(W&, S&), Commands> cases[] = {
      {[](W& w, S&) { w.showsComparison = false; }, {exportResults, printPreview, print}},
      {[](W& w, S&) { w.offered = {deleteNew}; },
       {compareEntries, copyToOld, copyToNew, deleteOld, deleteBoth}},
      {[](W& w, S&) { w.offered.clear(); },
       {compareEntries, copyToOld, copyToNew, deleteOld, deleteNew, deleteBoth, deleteEntries}},
      {[](W& w, S&) { w.readOnly[1] = true; }, {replaceRight, copyLineRight, copyDiffRight}},
      {[](W& w, S&) { w.readOnly[0] = true; },
       {replaceLeft, copyLineLeft, copyDiffLeft, cut, paste, deleteText, deleteLine, deleteDiff}},
      {[](W& w, S&) { w.caretRow = RowStatus::same; }, copies},
      {[](W& w, S&) { w.caretRow = RowStatus::rightOnly; },
       {copyLineRight, copyDiffRight, deleteLine, deleteDiff}},
      {[](W& w, S&) { w.caretRow = RowStatus::leftOnly, w.activeSide = 1; },
       {copyLineLeft, copyDiffLeft, deleteLine, deleteDiff}},
      {[](W& w, S&) {
         w.nameBox = W::NameBox{false, true}, w.readOnly[0] = true;
       },
       {undo, redo, replaceLeft, copyLineLeft, copyDiffLeft, deleteLine, deleteDiff}},
      {[](W& w, S&) {
         w.nameBox = W::NameBox{true, false}, w.canUndo = false;
       },
       {redo, cut, copy}},
      {[](W&, S& s) { s.reUseFileWindow = true; }, {newTextWindow}},
  };
  for (const auto& [change, greyed] : cases) {
    WindowFacts window = busy;
    Settings settings;
    settings.findText = "x";
    change(window, settings);
    Commands left = all;
    for (const Command id : greyed) left.erase(id);
    EXPECT_EQ(enabled(window, settings), left) << int(*greyed.begin());
  }
}

TEST(MenuState, AWindowThatIsComparingCanOnlyBeClosed) {
  WindowFacts window;
  window.busy = window.showsComparison = window.hasFile = true;
  EXPECT_EQ(enabled(window, {}), (Commands{Command::close, Command::exit}));
}

TEST(CommandTable, EachKeyIsOneCommandsInAWindowThatHasIt) {
  struct Key {
    Command command;
    std::string windows, key;
  };
  const Key keys[] = {
#define KEY(name, windows, ...) {Command::name, #windows, #__VA_ARGS__},
#include "resources/commands.inc"
  };
  std::set<std::pair<WindowKind, std::string>> taken;
  for (const auto& [command, windows, key] : keys) {
    for (const WindowKind kind : {WindowKind::text, WindowKind::folder}) {
      const bool here = windows == (kind == WindowKind::text ? "text" : "folder") || windows == "both";
      if (!here && !(windows == "pane" && kind == WindowKind::text)) continue;
      EXPECT_TRUE(taken.emplace(kind, key).second) << key;
      EXPECT_TRUE(findCommand(command)->livesIn(kind)) << key;
    }
  }
}

/// The lines of resources/menus.rc, with the one macro in it expanded.
std::vector<std::string> menuLines() {
  std::ifstream file(MERIVANE_SOURCE_DIR "/resources/menus.rc");
  std::vector<std::string> lines, macro;
  bool defining = false;
  for (std::string line; std::getline(file, line);) {
    defining = defining || line.starts_with("#define FILE_ITEMS");
    if (line == "    FILE_ITEMS") {
      lines.insert(lines.end(), macro.begin(), macro.end());
    } else {
      (defining ? macro : lines).push_back(line);
    }
    defining = defining && line.ends_with('\\');
  }
  return lines;
}

TEST(CommandTable, MenusNameCommandsOfTheirWindowWithTheirKeyAndAMnemonicOnce) {
  const std::map<std::string, Command> commands = {
#define COMMAND(name, ...) {"CMD_" #name, Command::name},
#include "resources/commands.inc"
  };
  const std::regex menu("^(\\d+) MENU.*"), item("^ *(POPUP|MENUITEM) \"([^\"]*)\"(, (\\w+))?.*");
  WindowKind kind = {};
  std::vector<std::set<char>> mnemonics;  // of the open menus, the innermost last
  int items = 0;
  std::smatch found;
  for (const std::string& line : menuLines()) {
    if (std::regex_match(line, found, menu))
      kind = found[1] == "1120" ? WindowKind::folder : WindowKind::text;
    if (line.ends_with("BEGIN")) mnemonics.emplace_back();
    if (line.ends_with("END")) mnemonics.pop_back();
    if (!std::regex_match(line, found, item)) continue;
    const std::string label = found[2];
    if (const size_t mark = label.find('&'); mark != label.npos) {
      const char letter = static_cast<char>(std::tolower(label[mark + 1]));
      EXPECT_TRUE(mnemonics.back().insert(letter).second) << line;
    }
    if (found[1] == "POPUP") continue;
    const auto command = commands.find(found[4]);
    ASSERT_NE(command, commands.end()) << line;
    const std::string key = commandKey(command->second);
    EXPECT_EQ(label.substr(std::min(label.find("\\t"), label.size())), key.empty() ? "" : "\\t" + key);
    EXPECT_TRUE(findCommand(command->second)->livesIn(kind)) << line;
    ++items;
  }
  EXPECT_GT(items, 60);
}

}  // namespace
}  // namespace merivane
