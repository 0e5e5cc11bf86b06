#include "shell/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "shell/settings_table.h"
#include "tests/support/memory_values.h"

namespace merivane {
namespace {

SystemFacts facts(std::string installed = "Courier") {
  return {{0, 0, 1024, 740}, [installed](const char* face) { return face == installed; }};
}

/// Which rows two records differ in.
struct SameRow {
  const Settings& a;
  const Settings& b;

  bool operator()(const HistorySetting& kind) const {
    return (a.*kind.member).entries() == (b.*kind.member).entries();
  }
  bool operator()(const auto& kind) const { return a.*kind.member == b.*kind.member; }
};

std::vector<std::string> differences(const Settings& a, const Settings& b) {
  std::vector<std::string> keys;
  for (const SettingsRow& row : settingsRows()) {
    if (!std::visit(SameRow{a, b}, row.kind)) keys.push_back(row.key);
  }
  return keys;
}

/// Gives a row any value that may be saved.
struct Randomizer {
  Settings& settings;
  std::mt19937& random;

  int32_t number(int32_t from, int32_t to) const { return std::uniform_int_distribution(from, to)(random); }
  std::string text(int32_t longest) const {
    std::string result(static_cast<size_t>(number(0, longest)), '\0');
    for (char& c : result) c = static_cast<char>(number(1, 255));
    return result;
  }
  void operator()(const ColourSetting& kind) const { settings.*kind.member = random(); }
  void operator()(const CustomColourSetting& kind) const {
    for (Colour& colour : settings.*kind.member) colour = random();
  }
  void operator()(const BoolSetting& kind) const { settings.*kind.member = number(0, 1) == 1; }
  void operator()(const NumberSetting& kind) const {
    settings.*kind.member = number(kind.lowest, kind.highest);
  }
  void operator()(const TextSetting& kind) const { settings.*kind.member = text(255); }
  void operator()(const HistorySetting& kind) const {
    for (int i = number(1, 60); i > 0; --i) (settings.*kind.member).Add("x" + text(20));
  }
  void operator()(const PlacementSetting& kind) const {
    const int32_t left = number(-900, 900), top = number(-700, 700);
    settings.*kind.member = {
        {left, top, left + number(901, 2000), top + number(701, 2000)}, true, number(0, 1) == 1};
  }
};

TEST(Settings, TheFirstRunHasTheDefaults) {
  MemoryValues values;
  Settings loaded;
  LoadSettings(SettingsStore(values), facts(), loaded);
  EXPECT_THAT(differences(loaded, Settings()), testing::ElementsAre("FontFace"));
  EXPECT_TRUE(values.values.empty());
}

TEST(Settings, WhatIsSavedIsLoaded) {
  std::mt19937 random(1);
  for (int i = 0; i < 100; ++i) {
    Settings saved, loaded;
    for (const SettingsRow& row : settingsRows()) std::visit(Randomizer{saved, random}, row.kind);
    if (saved.compareQuick) saved.compareFull = false;
    if (saved.haveIncludeFilter) saved.haveExcludeFilter = false;
    MemoryValues values;
    SettingsStore store(values);
    SaveSettings(store, saved);
    LoadSettings(store, facts(), loaded);
    EXPECT_THAT(differences(loaded, saved), testing::IsEmpty());
  }
}

TEST(Settings, NothingStoredCanLeaveTheRanges) {
  struct Case {
    const char* key;
    int32_t Settings::*member;
    int32_t lowest, highest, fallback;
  };
  const Case cases[] = {
      {"TabStop", &Settings::tabStop, 1, 16, 4},
      {"ShowLineNumbers", &Settings::showLineNumbers, 0, 2, 2},
      {"FontSize", &Settings::fontSize, 1, 200, 8},
      {"ExportHow", &Settings::exportHow, 0, 2, 0},
      {"PrintScale", &Settings::printScale, 25, 100, 100},
  };
  for (const Case& c : cases) {
    const int64_t numbers[] = {c.lowest, c.highest, c.lowest - 1, c.highest + 1, INT32_MIN, INT32_MAX};
    for (const int64_t number : numbers) {
      MemoryValues values;
      SettingsStore store(values);
      store.SetNumber(c.key, static_cast<int32_t>(number));
      Settings loaded;
      LoadSettings(store, facts(), loaded);
      const bool inRange = number >= c.lowest && number <= c.highest;
      EXPECT_EQ(loaded.*c.member, inRange ? number : c.fallback) << c.key << " " << number;
    }
  }
  size_t ranged = 0;
  for (const SettingsRow& row : settingsRows()) {
    const auto* kind = std::get_if<NumberSetting>(&row.kind);
    if (kind != nullptr && kind->highest != INT32_MAX) ++ranged;
  }
  EXPECT_EQ(ranged, std::size(cases));
}

TEST(Settings, ValuesOfAnyWrongShapeLoadAsSomethingValid) {
  using namespace std::string_literals;
  for (const std::string& bytes :
       {""s, "\0"s, "true"s, "TRUE\0"s, "\xFF\xFF\xFF\xFF"s, std::string(1000, 'z')}) {
    MemoryValues values;
    SettingsStore store(values);
    for (const SettingsRow& row : settingsRows()) {
      for (const char* end : {"", ".0", ".15", ".count"}) {
        values.write(row.key + std::string(end), ValueType::text, bytes);
      }
    }
    Settings loaded, again;
    LoadSettings(store, facts(), loaded);
    EXPECT_LE(loaded.findText.size(), 255u);
    SaveSettings(store, loaded);
    LoadSettings(store, facts(), again);
    EXPECT_THAT(differences(again, loaded), testing::IsEmpty()) << testing::PrintToString(bytes);
  }
}

TEST(Settings, ChoicesThatShutEachOtherOutAreBothDropped) {
  MemoryValues values;
  SettingsStore store(values);
  for (const char* key : {"CompareQuick", "CompareFull", "HaveIncludeFilter", "HaveExcludeFilter"}) {
    store.SetBool(key, true);
  }
  for (const char* list : {"IncludeFilterHistory", "ExcludeFilterHistory"}) {
    store.SetNumber(list + std::string(".count"), 2);
    store.SetString(list + std::string(".0"), "*.cpp");
    store.SetString(list + std::string(".1"), "*.CPP");
  }
  const auto flags = [&] {
    Settings s;
    LoadSettings(store, facts(), s);
    EXPECT_EQ(s.includeFilterHistory.Count(), 2);
    return std::vector<bool>{s.compareQuick, s.compareFull, s.haveIncludeFilter, s.haveExcludeFilter};
  };
  EXPECT_THAT(flags(), testing::ElementsAre(false, false, false, false));
  store.SetBool("CompareQuick", false);
  store.SetBool("HaveExcludeFilter", false);
  EXPECT_THAT(flags(), testing::ElementsAre(false, true, true, false));
  // A filter that is on needs one to use.
  store.SetBool("HaveIncludeFilter", false);
  store.SetBool("HaveExcludeFilter", true);
  store.SetNumber("ExcludeFilterHistory.count", 0);
  EXPECT_THAT(flags(), testing::ElementsAre(false, true, false, false));
}

TEST(Settings, LongHistoriesAreCutWhenLoaded) {
  MemoryValues values;
  SettingsStore store(values);
  for (const char* list : {"LeftFileHistory", "RightFolderHistory", "ExcludeFilterHistory"}) {
    store.SetNumber(list + std::string(".count"), 60);
    for (int i = 0; i < 60; ++i) store.SetString(list + ("." + std::to_string(i)), "n" + std::to_string(i));
  }
  Settings loaded;
  LoadSettings(store, facts(), loaded);
  EXPECT_EQ(loaded.leftFileHistory.entries().back(), "n39");
  EXPECT_EQ(loaded.rightFolderHistory.Count(), 40);
  EXPECT_EQ(loaded.excludeFilterHistory.Count(), 20);
  loaded.leftFileHistory.Add("new");
  EXPECT_EQ(loaded.leftFileHistory.Count(), 40);
  EXPECT_EQ(loaded.leftFileHistory.entries().back(), "n38");
}

TEST(Settings, TheFirstInstalledFontOfTheListIsTaken) {
  MemoryValues values;
  SettingsStore store(values);
  const auto face = [&](const SystemFacts& system) {
    Settings loaded;
    LoadSettings(store, system, loaded);
    return loaded.fontFace;
  };
  EXPECT_EQ(face(facts("Lucida Console")), "Lucida Console");
  EXPECT_EQ(face({{}, [](const char*) { return true; }}), "Andale Mono");
  EXPECT_EQ(face(facts("Arial")), "Fixedsys");
  store.SetString("FontFace", "Arial");
  EXPECT_EQ(face(facts()), "Arial");
}

TEST(Settings, AnOffScreenPlacementGivesWayToTheDefault) {
  MemoryValues values;
  SettingsStore store(values);
  store.SetString("SessionWindow", "0,1000,0,1100,64");
  store.SetString("CompareWindow", "1,1000,0,1100,64");
  store.SetString("PreviewWindow", "1,0,0,64,64");
  Settings loaded;
  LoadSettings(store, facts(), loaded);
  EXPECT_EQ(loaded.sessionWindow, (WindowPlacement{{50, 50, 500, 600}, true, false}));
  EXPECT_EQ(loaded.compareWindow, WindowPlacement());
  EXPECT_EQ(loaded.previewWindow, (WindowPlacement{{0, 0, 100, 100}, true, true}));
}

}  // namespace
}  // namespace merivane
