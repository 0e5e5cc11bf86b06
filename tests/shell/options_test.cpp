// The Options dialog without its windows: what its controls show, and what they do to the settings.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/options.h"
#include "tests/support/memory_values.h"

namespace merivane {
namespace {

using testing::ElementsAre;

/// The values that are not the defaults in the registry.
std::vector<std::string> changedValues(const Settings& settings) {
  MemoryValues usual, values;
  SettingsStore usualStore(usual), store(values);
  SaveSettings(usualStore, {});
  SaveSettings(store, settings);
  std::vector<std::string> names;
  for (const auto& [name, value] : values.values) {
    if (usual.values[name] != value) names.push_back(name);
  }
  return names;
}

OptionState shown(int control, const Settings& settings) {
  return optionState(*findOption(control), settings);
}

void check(int control, bool on, Settings& settings) {
  changeOption(*findOption(control), {.checked = on}, settings);
  EXPECT_EQ(shown(control, settings).checked, on) << control;
}

void enter(int control, const std::string& text, Settings& settings) {
  changeOption(*findOption(control), {.text = text}, settings);
}

TEST(Options, EachCheckBoxIsForOneSetting) {
  // With the result in which it shows once it is changed, of files or of folders.
  std::string boxes;
  for (const OptionsPageRow& page : optionsPages()) {
    for (const OptionRow& row : page.options) {
      const bool isBox = std::holds_alternative<CheckOption>(row.kind);
      if (!isBox && !std::holds_alternative<BlanksOption>(row.kind)) continue;
      Settings settings;
      const Settings before;
      check(row.control, !shown(row.control, before).checked, settings);
      boxes += std::to_string(row.control);
      for (const std::string& name : changedValues(settings)) boxes += ' ' + name;
      if (settings.compareOptions() != before.compareOptions()) boxes += " files";
      if (settings.folderOptions() != before.folderOptions()) boxes += " folders";
      boxes += ", ";
      check(row.control, shown(row.control, before).checked, settings);
      EXPECT_THAT(changedValues(settings), ElementsAre()) << row.control;
    }
  }
  EXPECT_EQ(
      boxes,
      "10100 IgnoreCase files, 10101 IgnoreBlanks2 files, 10102 IgnoreBlanks2 files, 10103 IgnoreBlanks2 "
      "files, 10104 IgnoreBlanks2 files, 10105 CompareChanges files, 10106 HighlightChanges, 10200 "
      "FolderUndo, 10201 IgnoreNameCase folders, 10202 CompareSubfolders folders, 10203 CompareAttribs "
      "folders, 10204 CompareDate folders, 10205 CompareSize folders, 10206 CompareQuick folders, 10207 "
      "CompareFull folders, 10208 CompareFolderAttribs folders, 10209 CompareFolderDate folders, 10210 "
      "HaveIncludeFilter folders, 10212 HaveExcludeFilter folders, 10407 DrawArrows, 10406 DrawCaretBox, "
      "10400 IdenticalMessage, 10401 ScrollToFirst, 10402 WrapAround, 10403 AskConfirmation, 10404 "
      "ReUseFileWindow, 10405 ReUseFolderWindow, 10408 EscQuitsApp, ");
}

TEST(Options, WhatAnotherMakesVoidIsGreyedAndKept) {
  Settings settings;
  settings.ignoreBlanks2 = 0x7FFFFFF0;
  for (const int control : {10102, 10104}) check(control, true, settings);
  const CompareOptions some = settings.compareOptions();
  check(10101, true, settings);
  for (const int control : {10102, 10103, 10104}) {
    EXPECT_EQ(shown(control, settings), OptionState{.enabled = false}) << control;
  }
  check(10101, false, settings);
  EXPECT_EQ(settings.compareOptions(), some);
  for (const auto& [control, on] : {std::pair(10102, true), {10103, false}, {10104, true}}) {
    EXPECT_EQ(shown(control, settings), OptionState{.checked = on}) << control;
  }

  check(10105, false, settings);
  EXPECT_EQ(shown(10106, settings), OptionState{.enabled = false});

  check(10207, true, settings);
  EXPECT_EQ(settings.folderOptions().text, settings.compareOptions());
  check(10206, true, settings);
  EXPECT_FALSE(shown(10207, settings).checked);
  check(10207, true, settings);
  EXPECT_FALSE(shown(10206, settings).checked);
  check(10207, false, settings);
  EXPECT_FALSE(settings.folderOptions().comparesContents());
}

TEST(Options, ListsTakeWhatIsChosenOrTyped) {
  Settings settings;
  const std::pair<const char*, int32_t> sizes[] = {{"1", 1}, {"200", 200},   {"0", 9},          {"201", 9},
                                                   {"", 9},  {" 12 pt", 12}, {"99999999999", 9}};
  for (const auto& [typed, size] : sizes) {
    enter(10301, typed, settings);
    EXPECT_EQ(settings.fontSize, size) << typed;
    EXPECT_EQ(shown(10301, settings).text, std::to_string(size));
  }
  const std::vector<std::string> tabs = optionChoices(*findOption(10302));
  enter(10302, tabs.back(), settings);
  EXPECT_EQ(settings.tabStop, 16);
  EXPECT_EQ(shown(10302, settings).text, tabs.back());

  for (const auto& [on, filter] : {std::pair(10210, 10211), {10212, 10213}}) {
    Settings filtered;
    enter(filter, "*.cpp", filtered);
    EXPECT_EQ(filtered.folderOptions(), Settings().folderOptions()) << "not switched on";
    check(on, true, filtered);
    const FolderOptions before = filtered.folderOptions();
    enter(filter, "*.CPP", filtered);
    EXPECT_NE(filtered.folderOptions(), before);
    enter(filter, "", filtered);
    EXPECT_FALSE(shown(on, filtered).checked);
    EXPECT_EQ(shown(filter, filtered).text, "*.CPP") << "what checking the box again would bring back";
  }
}

TEST(Options, ColoursAreChosenOneByOneOrAsASet) {
  const int buttons[] = {10303, 10304, 10305, 10306, 10307, 10308, 10309};
  Settings settings;
  EXPECT_TRUE(shown(10310, settings).checked);
  check(10311, true, settings);
  EXPECT_FALSE(shown(10310, settings).checked);
  for (const int button : buttons) {
    changeOption(*findOption(button), {.colour = 0x123456}, settings);
    EXPECT_EQ(shown(button, settings).colour, 0x123456u);
    EXPECT_FALSE(shown(10311, settings).checked) << button;
  }
  EXPECT_EQ(changedValues(settings).size(), 7u);
  check(10310, true, settings);
  EXPECT_THAT(changedValues(settings), ElementsAre());
}

}  // namespace
}  // namespace merivane
