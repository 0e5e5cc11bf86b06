#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <variant>

#include "shell/settings.h"

namespace merivane {

struct ColourSetting {
  Colour Settings::*member;
};

/// Sixteen values "Key.0" to "Key.15".
struct CustomColourSetting {
  decltype(Settings::customColors) Settings::*member;
};

struct BoolSetting {
  bool Settings::*member;
};

/// A number outside [lowest, highest] gives way to the default.
struct NumberSetting {
  int32_t Settings::*member;
  int32_t lowest = INT32_MIN;
  int32_t highest = INT32_MAX;
};

struct TextSetting {
  std::string Settings::*member;
  size_t longest = std::string::npos;  // characters; a longer text loses its end
};

struct HistorySetting {
  HistoryList Settings::*member;
  int32_t maximum;
  bool caseSensitive = false;
};

/// A placement that is not acceptable gives way to the default.
struct PlacementSetting {
  WindowPlacement Settings::*member;
};

/// One key. The kind tells how it is kept and checked; its default is what a fresh record holds.
struct SettingsRow {
  const char* key;
  std::variant<ColourSetting, CustomColourSetting, BoolSetting, NumberSetting, TextSetting, HistorySetting,
               PlacementSetting>
      kind;
};

/// Every setting, in the order of loading and saving.
std::span<const SettingsRow> settingsRows();

}  // namespace merivane
