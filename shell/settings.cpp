#include "shell/settings.h"

#include "base/utf8.h"
#include "shell/settings_table.h"

namespace merivane {
namespace {

std::string numberedKey(const char* key, size_t number) { return key + ("." + std::to_string(number)); }

Colour loadColour(const SettingsStore& store, const std::string& key, Colour fallback) {
  return static_cast<Colour>(store.GetNumber(key, static_cast<int32_t>(fallback)));
}

void saveColour(SettingsStore& store, const std::string& key, Colour colour) {
  store.SetNumber(key, static_cast<int32_t>(colour));
}

/// As much of a text as has no more than `count` characters.
std::string_view firstCharacters(std::string_view text, size_t count) {
  std::string_view rest = text;
  for (; count > 0 && !rest.empty(); --count) rest.remove_prefix(utf8Length(rest));
  return text.substr(0, text.size() - rest.size());
}

/// Reads one row into a record that still holds the row's default.
struct Loader {
  const SettingsStore& store;
  const SystemFacts& facts;
  const char* key;
  Settings& settings;

  void operator()(const ColourSetting& kind) const {
    settings.*kind.member = loadColour(store, key, settings.*kind.member);
  }
  void operator()(const CustomColourSetting& kind) const {
    auto& colours = settings.*kind.member;
    for (size_t i = 0; i < colours.size(); ++i) {
      colours[i] = loadColour(store, numberedKey(key, i), colours[i]);
    }
  }
  void operator()(const BoolSetting& kind) const {
    settings.*kind.member = store.GetBool(key, settings.*kind.member);
  }
  void operator()(const NumberSetting& kind) const {
    const int32_t number = store.GetNumber(key, settings.*kind.member);
    if (number >= kind.lowest && number <= kind.highest) settings.*kind.member = number;
  }
  void operator()(const TextSetting& kind) const {
    if (const auto text = store.GetString(key))
      settings.*kind.member = std::string(firstCharacters(*text, kind.longest));
  }
  void operator()(const HistorySetting& kind) const {
    HistoryList& list = settings.*kind.member;
    list.Load(store);
    list.SetMaximum(kind.maximum);
  }
  void operator()(const PlacementSetting& kind) const {
    WindowPlacement placement;
    LoadPlacement(store, key, facts.monitors, placement);
    if (placement.valid) settings.*kind.member = placement;
  }
};

struct Saver {
  SettingsStore& store;
  const char* key;
  const Settings& settings;

  void operator()(const ColourSetting& kind) const { saveColour(store, key, settings.*kind.member); }
  void operator()(const CustomColourSetting& kind) const {
    const auto& colours = settings.*kind.member;
    for (size_t i = 0; i < colours.size(); ++i) saveColour(store, numberedKey(key, i), colours[i]);
  }
  void operator()(const BoolSetting& kind) const { store.SetBool(key, settings.*kind.member); }
  void operator()(const NumberSetting& kind) const { store.SetNumber(key, settings.*kind.member); }
  void operator()(const TextSetting& kind) const { store.SetString(key, settings.*kind.member); }
  void operator()(const HistorySetting& kind) const { (settings.*kind.member).Save(store); }
  void operator()(const PlacementSetting& kind) const { SavePlacement(store, key, settings.*kind.member); }
};

/// Two ways of doing one thing that shut each other out: a store that has both has neither.
void dropIfBoth(bool& one, bool& other) {
  if (one && other) one = other = false;
}

std::string firstInstalledFont(const SystemFacts& facts) {
  for (const char* face : {"Andale Mono", "Lucida Console", "Courier New", "Courier"}) {
    if (facts.fontExists(face)) return face;
  }
  return "Fixedsys";
}

}  // namespace

Settings::Settings() {
  for (const SettingsRow& row : settingsRows()) {
    if (const auto* kind = std::get_if<HistorySetting>(&row.kind)) {
      HistoryList& list = this->*kind->member;
      list.SetName(row.key);
      list.SetMaximum(kind->maximum);
      list.SetCaseSensitive(kind->caseSensitive);
    }
  }
}

CompareOptions Settings::compareOptions() const {
  auto blanks = static_cast<uint32_t>(ignoreBlanks2);
  if ((blanks & kIgnoreAllBlanks) != 0) blanks = kIgnoreAllBlanks;
  return {ignoreCase, blanks, compareChanges};
}

FolderOptions Settings::folderOptions() const {
  FolderOptions options;
  options.subfolders = compareSubfolders;
  options.ignoreNameCase = ignoreNameCase;
  options.date = compareDate;
  options.size = compareSize;
  options.attributes = compareAttribs;
  options.folderDate = compareFolderDate;
  options.folderAttributes = compareFolderAttribs;
  options.quickContents = compareQuick;
  options.fullContents = compareFull;
  options.hasIncludeFilter = haveIncludeFilter;
  options.hasExcludeFilter = haveExcludeFilter;
  if (haveIncludeFilter) options.includeFilter = includeFilterHistory.First();
  if (haveExcludeFilter) options.excludeFilter = excludeFilterHistory.First();
  if (compareFull) options.text = compareOptions();
  return options;
}

RowLook Settings::look() const {
  return {static_cast<uint32_t>(tabStop),
          showWhiteSpace,
          lineNumbers(),
          {sameBkColor, emptyBkColor, leftBkColor, rightBkColor, changeBkColor, drawArrows}};
}

ViewOptions Settings::viewOptions() const {
  ViewOptions options = {look()};
  options.highlightChanges = highlightChanges;
  options.wrapAround = wrapAround;
  options.syncScroll = syncScroll;
  options.textColour = textColor;
  options.readOnlyColour = readOnlyColor;
  return options;
}

WriterOptions Settings::writerOptions() const {
  WriterOptions options;
  options.look = look();
  options.scope = static_cast<ExportScope>(exportHow);
  return options;
}

void LoadSettings(const SettingsStore& store, const SystemFacts& facts, Settings& settings) {
  for (const SettingsRow& row : settingsRows()) std::visit(Loader{store, facts, row.key, settings}, row.kind);
  dropIfBoth(settings.compareQuick, settings.compareFull);
  dropIfBoth(settings.haveIncludeFilter, settings.haveExcludeFilter);
  if (settings.includeFilterHistory.Count() == 0) settings.haveIncludeFilter = false;
  if (settings.excludeFilterHistory.Count() == 0) settings.haveExcludeFilter = false;
  if (!store.GetString("FontFace")) settings.fontFace = firstInstalledFont(facts);
}

void SaveSettings(SettingsStore& store, const Settings& settings) {
  for (const SettingsRow& row : settingsRows()) std::visit(Saver{store, row.key, settings}, row.kind);
}

}  // namespace merivane
