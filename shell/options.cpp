#include "shell/options.h"

#include <algorithm>
#include <charconv>

namespace merivane {
namespace {

using S = Settings;

constexpr int32_t kMinFontSize = 1;
constexpr int32_t kMaxFontSize = 200;
constexpr int32_t kFontSizeForNonsense = 9;

constexpr Colour Settings::*colourMembers[] = {&S::textColor,    &S::readOnlyColor, &S::sameBkColor,
                                               &S::emptyBkColor, &S::leftBkColor,   &S::rightBkColor,
                                               &S::changeBkColor};

constexpr OptionRow::Condition whileOn(int control) { return {control, true}; }
constexpr OptionRow::Condition whileOff(int control) { return {control, false}; }

const OptionRow textFileOptions[] = {
    {10100, CheckOption{&S::ignoreCase}},
    {10101, BlanksOption{kIgnoreAllBlanks}},
    {10102, BlanksOption{kIgnoreMultipleBlanks}, whileOff(10101)},
    {10103, BlanksOption{kIgnoreBlanksAtStart}, whileOff(10101)},
    {10104, BlanksOption{kIgnoreBlanksAtEnd}, whileOff(10101)},
    {10105, CheckOption{&S::compareChanges}},
    {10106, CheckOption{&S::highlightChanges}, whileOn(10105)},
};

const OptionRow folderOptions[] = {
    {10200, CheckOption{&S::folderUndo}},
    {10201, CheckOption{&S::ignoreNameCase}},
    {10202, CheckOption{&S::compareSubfolders}},
    {10203, CheckOption{&S::compareAttribs}},
    {10204, CheckOption{&S::compareDate}},
    {10205, CheckOption{&S::compareSize}},
    {10206, CheckOption{&S::compareQuick, &S::compareFull}},
    {10207, CheckOption{&S::compareFull, &S::compareQuick}},
    {10208, CheckOption{&S::compareFolderAttribs}},
    {10209, CheckOption{&S::compareFolderDate}},
    {10210, CheckOption{&S::haveIncludeFilter}},
    {10211, FilterOption{&S::includeFilterHistory, &S::haveIncludeFilter}},
    {10212, CheckOption{&S::haveExcludeFilter}},
    {10213, FilterOption{&S::excludeFilterHistory, &S::haveExcludeFilter}},
};

const OptionRow displayOptions[] = {
    {10300, FontFaceOption{}},
    {10301, FontSizeOption{}},
    {10302, TabSizeOption{}},
    {10303, ColourOption{&S::textColor}},
    {10304, ColourOption{&S::readOnlyColor}},
    {10305, ColourOption{&S::sameBkColor}},
    {10306, ColourOption{&S::emptyBkColor}},
    {10307, ColourOption{&S::leftBkColor}},
    {10308, ColourOption{&S::rightBkColor}},
    {10309, ColourOption{&S::changeBkColor}},
    {10310, ColourSetOption{defaultColours}},
    {10311, ColourSetOption{redGreenSafeColours}},
    {10407, CheckOption{&S::drawArrows}},
    {10406, CheckOption{&S::drawCaretBox}},
};

const OptionRow miscOptions[] = {
    {10400, CheckOption{&S::identicalMessage}}, {10401, CheckOption{&S::scrollToFirst}},
    {10402, CheckOption{&S::wrapAround}},       {10403, CheckOption{&S::askConfirmation}},
    {10404, CheckOption{&S::reUseFileWindow}},  {10405, CheckOption{&S::reUseFolderWindow}},
    {10408, CheckOption{&S::escQuitsApp}},
};

const OptionsPageRow pages[] = {
    {TextId::textFilesPage, 1142, "options.html", textFileOptions},
    {TextId::foldersPage, 1143, "folderoptions.html", folderOptions},
    {TextId::displayPage, 1145, "displayoptions.html", displayOptions},
    {TextId::miscPage, 1144, "miscoptions.html", miscOptions},
};

ColourSet coloursOf(const Settings& settings) {
  ColourSet colours;
  std::ranges::transform(colourMembers, colours.begin(), [&](auto member) { return settings.*member; });
  return colours;
}

/// The number that a text begins with, if it does.
int32_t fontSizeOf(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  int32_t size = 0;
  std::from_chars(text.data(), text.data() + text.size(), size);
  return size >= kMinFontSize && size <= kMaxFontSize ? size : kFontSizeForNonsense;
}

/// Fills in what a kind of control shows.
struct Shower {
  const Settings& settings;
  OptionState& state;

  void operator()(const CheckOption& kind) const { state.checked = settings.*kind.member; }
  void operator()(const BlanksOption& kind) const {
    state.checked = (settings.ignoreBlanks2 & kind.bit) != 0;
  }
  void operator()(const FilterOption& kind) const { state.text = (settings.*kind.history).First(); }
  void operator()(const FontFaceOption&) const { state.text = settings.fontFace; }
  void operator()(const FontSizeOption&) const { state.text = std::to_string(settings.fontSize); }
  void operator()(const TabSizeOption&) const { state.text = std::to_string(settings.tabStop); }
  void operator()(const ColourOption& kind) const { state.colour = settings.*kind.member; }
  void operator()(const ColourSetOption& kind) const {
    state.checked = coloursOf(settings) == kind.colours();
  }
};

struct Changer {
  const OptionState& shown;
  Settings& settings;

  void operator()(const CheckOption& kind) const {
    settings.*kind.member = shown.checked;
    if (shown.checked && kind.excludes != nullptr) settings.*kind.excludes = false;
  }
  void operator()(const BlanksOption& kind) const {
    const int32_t others = settings.ignoreBlanks2 & ~kind.bit;
    settings.ignoreBlanks2 = shown.checked ? others | kind.bit : others;
  }
  void operator()(const FilterOption& kind) const {
    (settings.*kind.history).Add(shown.text);
    if (shown.text.empty()) settings.*kind.on = false;
  }
  void operator()(const FontFaceOption&) const { settings.fontFace = shown.text; }
  void operator()(const FontSizeOption&) const { settings.fontSize = fontSizeOf(shown.text); }
  void operator()(const TabSizeOption&) const { settings.tabStop = std::stoi(shown.text); }
  void operator()(const ColourOption& kind) const { settings.*kind.member = shown.colour; }
  void operator()(const ColourSetOption& kind) const {
    const ColourSet& colours = kind.colours();
    for (size_t i = 0; i < colours.size(); ++i) settings.*colourMembers[i] = colours[i];
  }
};

}  // namespace

const ColourSet& defaultColours() {
  static const ColourSet colours = coloursOf(Settings());
  return colours;
}

const ColourSet& redGreenSafeColours() {
  static constexpr ColourSet colours = {0x000000, 0x404040, 0xFFFFFF, 0xF4F4F4, 0x46A0F0, 0xFFC896, 0xA0F5FF};
  return colours;
}

std::span<const OptionsPageRow> optionsPages() { return pages; }

const OptionRow* findOption(int control) {
  for (const OptionsPageRow& page : pages) {
    const auto found = std::ranges::find(page.options, control, &OptionRow::control);
    if (found != page.options.end()) return &*found;
  }
  return nullptr;
}

OptionState optionState(const OptionRow& option, const Settings& settings) {
  OptionState state;
  std::visit(Shower{settings, state}, option.kind);
  if (const OptionRow* const other = findOption(option.condition.control)) {
    state.enabled = optionState(*other, settings).checked == option.condition.on;
    state.checked = state.checked && state.enabled;
  }
  return state;
}

void changeOption(const OptionRow& option, const OptionState& shown, Settings& settings) {
  std::visit(Changer{shown, settings}, option.kind);
}

std::vector<std::string> optionChoices(const OptionRow& option) {
  std::vector<std::string> choices;
  if (std::holds_alternative<FontSizeOption>(option.kind)) {
    for (const int size : {6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 36, 48, 72}) {
      choices.push_back(std::to_string(size));
    }
  } else if (std::holds_alternative<TabSizeOption>(option.kind)) {
    for (uint32_t size = kMinTabStop; size <= kMaxTabStop; ++size) choices.push_back(std::to_string(size));
  }
  return choices;
}

}  // namespace merivane
