// What is remembered from one run to the next: settings, the next tip, the names a user gave, and the boxes
// that offer them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "shell/name_box.h"
#include "shell/settings_table.h"
#include "shell/tips.h"
#include "tests/support/memory_files.h"
#include "tests/support/memory_values.h"
#include "tests/support/random.h"

namespace merivane {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;

class SettingsTest : public testing::Test {
 protected:
  const Settings& loaded() {
    LoadSettings(store, facts, settings.emplace());
    return *settings;
  }

  MemoryValues values;
  SettingsStore store{values};
  std::set<std::string> fonts;
  const SystemFacts facts{{{{0, 0, 1024, 768}, {0, 0, 1024, 740}}},
                          [this](const char* face) { return fonts.contains(face); }};
  std::optional<Settings> settings;
};

TEST_F(SettingsTest, ValuesAreReadFromWhateverBytesThereAre) {
  // The number is 99 where there are more than four bytes.
  const std::tuple<std::string, std::string, int32_t> cases[] = {{"\x84\3\2\1", "\x84\3\2\1", 0x01020384},
                                                                 {"7\0"s, "7", 0x37},
                                                                 {"\1\0\xFF\xFF"s, "\1", -0xFFFF},
                                                                 {"", "", 0},
                                                                 {"true\0"s, "true", 99},
                                                                 {"true"s, "true", 0x65757274},
                                                                 {"a\0b\0c"s, "a", 99}};
  for (const auto& [bytes, text, number] : cases) {
    values.write("V", ValueType::text, bytes);
    EXPECT_EQ(store.GetNumber("V", 99), number) << testing::PrintToString(bytes);
    EXPECT_EQ(store.GetString("V"), text);
    EXPECT_EQ(store.GetBool("V", true), text == "true") << testing::PrintToString(bytes);
  }

  EXPECT_TRUE(store.SetNumber("N", 0x12B45678));
  EXPECT_TRUE(store.SetString("T", "caf\xE9"));
  EXPECT_TRUE(store.SetBool("B", true));
  EXPECT_EQ(values.values["N"], std::pair(ValueType::number, "\x78\x56\xB4\x12"s));
  EXPECT_EQ(values.values["T"], std::pair(ValueType::text, "caf\xE9\0"s));
  EXPECT_EQ(store.GetString("B"), "true");

  MemoryValues otherValues;
  SettingsStore other(otherValues);
  store.SetString("InstallDir", "here");
  EXPECT_EQ(InstallDir(other, store), "here");
  values.readOnly = true;
  EXPECT_FALSE(store.SetBool("B", false));
}

/// Which rows two records differ in.
std::set<std::string> differences(const Settings& a, const Settings& b) {
  const auto same = [&](const auto& kind) {
    if constexpr (std::is_same_v<decltype(kind), const HistorySetting&>) {
      return (a.*kind.member).entries() == (b.*kind.member).entries();
    } else {
      return a.*kind.member == b.*kind.member;
    }
  };
  std::set<std::string> keys;
  for (const SettingsRow& row : settingsRows()) {
    if (!std::visit(same, row.kind)) keys.insert(row.key);
  }
  return keys;
}

TEST_F(SettingsTest, WhateverIsStoredLoadsAsSomethingThatCanBeSaved) {
  EXPECT_EQ(differences(loaded(), Settings()), std::set{"FontFace"s});
  EXPECT_TRUE(values.values.empty());
  Random random(1);
  std::string anyBytes;
  for (int byte = 0; byte < 256; ++byte) anyBytes += static_cast<char>(byte);
  std::set<std::string> everDifferent;
  for (int round = 0; round < 200; ++round) {
    for (const SettingsRow& row : settingsRows()) {
      for (const char* end : {"", ".0", ".15", ".count"}) {
        const std::string few = random.text(anyBytes, 4), many = random.text(anyBytes, 1000);
        const auto number = static_cast<char>(random.below(60));
        const std::string placement = formatPlacement({{-9, -5, 500, 10 * number}, true, true});
        const std::string any[] = {"true\0"s, "false\0"s, few, many, placement, {number, '\0'}};
        values.write(row.key + std::string(end), ValueType::text, any[random.below(6)]);
      }
    }
    Settings before, again;
    LoadSettings(store, facts, before);
    everDifferent.merge(differences(before, Settings()));
    values.values.clear();
    SaveSettings(store, before);
    LoadSettings(store, facts, again);
    EXPECT_EQ(differences(before, again), std::set<std::string>());
  }
  EXPECT_EQ(everDifferent.size(), settingsRows().size());
}

TEST_F(SettingsTest, NumbersStayInTheirRanges) {
  for (const SettingsRow& row : settingsRows()) {
    const auto* kind = std::get_if<NumberSetting>(&row.kind);
    if (kind == nullptr || kind->lowest == INT32_MIN) continue;
    for (const int32_t number : {kind->lowest - 1, kind->highest + 1, INT32_MIN, INT32_MAX}) {
      store.SetNumber(row.key, number);
      EXPECT_EQ(loaded().*kind->member, Settings().*kind->member) << row.key << " " << number;
    }
  }
}

TEST_F(SettingsTest, TheTextToFindIsCutBetweenCharacters) {
  for (const std::string character : {"x", "\xC3\xA4", "\xF0\x9F\x98\x80"}) {
    std::string most;
    for (int i = 0; i < 255; ++i) most += character;
    store.SetString("FindText", most);
    EXPECT_EQ(loaded().findText, most);
    store.SetString("FindText", most + character);
    EXPECT_EQ(loaded().findText, most);
  }
}

TEST_F(SettingsTest, HistoriesAreCutAndKnowWhetherCaseCounts) {
  for (const std::string list : {"LeftFileHistory.", "ExcludeFilterHistory."}) {
    store.SetNumber(list + "count", 60);
    for (int i = 0; i < 60; ++i) store.SetString(list + std::to_string(i), "n" + std::to_string(i));
  }
  EXPECT_EQ(loaded().leftFileHistory.Count(), 40);
  for (HistoryList* list : {&settings->leftFileHistory, &settings->excludeFilterHistory}) list->Add("N1");
  EXPECT_EQ(settings->leftFileHistory.entries().back(), "n39");
  EXPECT_EQ(settings->excludeFilterHistory.entries().back(), "n18");
}

TEST_F(SettingsTest, ChoicesThatShutEachOtherOutAreBothDropped) {
  Settings both;
  both.compareQuick = both.compareFull = both.haveIncludeFilter = both.haveExcludeFilter = true;
  for (HistoryList* list : {&both.includeFilterHistory, &both.excludeFilterHistory}) list->Add("*.cpp");
  SaveSettings(store, both);
  const auto flags = [&] {
    const Settings& s = loaded();
    return std::vector{s.compareQuick, s.compareFull, s.haveIncludeFilter, s.haveExcludeFilter};
  };
  EXPECT_THAT(flags(), ElementsAre(false, false, false, false));
  store.SetBool("CompareQuick", false);
  store.SetBool("HaveExcludeFilter", false);
  EXPECT_THAT(flags(), ElementsAre(false, true, true, false));
  store.SetNumber("IncludeFilterHistory.count", 0);
  EXPECT_THAT(flags(), ElementsAre(false, true, false, false)) << "a filter that is on needs one to use";
}

TEST_F(SettingsTest, DefaultsDependOnTheSystem) {
  EXPECT_EQ(loaded().fontFace, "Fixedsys");
  fonts = {"Courier", "Courier New"};
  EXPECT_EQ(loaded().fontFace, "Courier New");
  store.SetString("FontFace", "Arial");
  EXPECT_EQ(loaded().fontFace, "Arial");
}

TEST_F(SettingsTest, TipsTakeTurnsFromRunToRun) {
  const std::string_view tips = "One\r\nTwo\\nlines\\ \\\\here\t7\r\nThree\tx\r\n";
  const Tip first{"One"}, second{"Two\nlines here", 7}, third{"Three"};
  const std::tuple<int32_t, Tip, int32_t> cases[] = {
      {1, second, 2}, {2, third, 0}, {3, first, 1}, {-1, first, 1}};
  for (const auto& [index, tip, nextIndex] : cases) {
    store.SetNumber("TipOfTheDay.TipIndex", index);
    TipsOfTheDay run(tips, store);
    EXPECT_EQ(run.next(), tip) << index;
    EXPECT_EQ(store.GetNumber("TipOfTheDay.TipIndex", -1), nextIndex) << index;
  }
  TipsOfTheDay run(tips, store);
  for (const Tip& tip : {second, third, first, second}) EXPECT_EQ(run.next(), tip);
  EXPECT_EQ(TipsOfTheDay("", store).next(), std::nullopt);
}

struct CountingView final : HistoryView {
  void refill(const HistoryList& list) override { shown = list.entries(), ++refills; }
  std::vector<std::string> shown;
  int refills = 0;
};

TEST(HistoryList, AddedNamesMoveToTheFront) {
  HistoryList list;
  CountingView view;
  list.attach(view);
  for (const char* name : {"a", "b", "", "c", "B", "b"}) list.Add(name);
  EXPECT_THAT(view.shown, ElementsAre("B", "c", "a")) << "of the newest not even the case changes";
  EXPECT_EQ(view.refills, 4);
  list.SetMaximum(2);
  EXPECT_THAT(view.shown, ElementsAre("B", "c"));
  list.detach(view);
  list.SetMaximum(0);
  list.Add("unlimited");
  EXPECT_EQ(list.Count(), 3);
}

TEST(NameBox, TheShortestThenNewestNameCompletes) {
  HistoryList list;
  NameCompletion box;
  for (const char* name : {"C:\\dir\\long.txt", "c:\\dir\\a.c", "C:\\DIR\\b.c", "D:\\x"}) list.Add(name);
  EXPECT_EQ(box.onEdit("c:\\d", list), (Completion{1, 4, 10}));
  EXPECT_EQ(box.onEdit("d:\\X", list), (Completion{0, 4, 4}));
  for (const char* other : {"", "D:\\xy"}) EXPECT_EQ(box.onEdit(other, list), std::nullopt) << other;
  // Nothing comes back that was deleted.
  box.onKey(true);
  EXPECT_EQ(box.onEdit("c:\\", list), std::nullopt);
  box.onKey(false);
  EXPECT_EQ(box.onEdit("C:\\dir\\l", list), (Completion{3, 8, 15}));
  box.onCut();
  EXPECT_EQ(box.onEdit("c:", list), std::nullopt);
  // Characters count as the edit field counts them, and only A to Z have a case.
  list.Add("\xD0\x96\xF0\x9F\x98\x80x.txt");
  EXPECT_EQ(NameCompletion().onEdit("\xD0\x96\xF0\x9F\x98\x80X", list), (Completion{0, 4, 8}));
  EXPECT_EQ(NameCompletion().onEdit("\xD0\xB6", list), std::nullopt);
}

TEST(NameBox, QuotesAndBlanksRoundANameAreNoPartOfIt) {
  const std::pair<const char*, const char*> cases[] = {{" C:\\a b \t", "C:\\a b"}, {"\"C:\\a b\"", "C:\\a b"},
                                                       {"  \" a \" ", "a"},        {"\"a", "\"a"},
                                                       {"a\"b\"", "a\"b\""},       {"\"", "\""}};
  for (const auto& [typed, meant] : cases) EXPECT_EQ(meantName(typed), meant) << typed;
}

TEST(NameBox, ADialogBeginsAtWhatTheBoxNames) {
  MemoryFiles files;
  files.folder = "C:\\here\\";
  for (const char* const folder : {"C:\\", "C:\\here\\", "C:\\here\\sub\\", "C:\\here\\sub"})
    files.files[folder].kind = FileKind::folder;
  const std::pair<const char*, BrowseStart> cases[] = {
      {"a?b", {}},
      {"C:\\here\\sub", {"C:\\here\\sub", ""}},
      {"C:\\here\\sub\\a.txt", {"C:\\here\\sub\\", "a.txt"}},
      {"new.txt", {"C:\\here\\", "new.txt"}},
      {"C:\\here\\gone\\a.txt", {"C:\\here\\", ""}},
      {"D:\\a.txt", {}},
  };
  for (const auto& [name, start] : cases) EXPECT_EQ(browseStart(files, name), start) << name;
}

TEST(NameBox, GoesUpNoHigherThanTheRoot) {
  const std::pair<const char*, const char*> cases[] = {
      {"C:\\a\\b", "C:\\a\\"}, {"C:\\a\\b\\\\", "C:\\a\\"},
      {"C:\\a", "C:\\"},       {"\\\\server\\share\\x", "\\\\server\\share\\"},
      {"\\a", "\\"},           {"a\\b", "a\\"}};
  for (const auto& [path, above] : cases) EXPECT_EQ(upOneFolder(path), above) << path;
  for (const char* path : {"C:\\", "C:", "\\", "\\\\server\\share\\", "\\\\server", "a", "dir\\", ""}) {
    EXPECT_EQ(upOneFolder(path), std::nullopt) << path;
  }
}

}  // namespace
}  // namespace merivane
