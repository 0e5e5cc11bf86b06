#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "base/texts.h"
#include "shell/settings.h"

namespace merivane {

/// The seven colours of the panes, in the order of their settings.
using ColourSet = std::array<Colour, 7>;

/// What a fresh record of settings has.
const ColourSet& defaultColours();

/// Tells the kinds of rows apart by blue, yellow and lightness alone, for eyes that are weak at red and
/// green.
const ColourSet& redGreenSafeColours();

// What a control of the Options dialog is for.

/// A check box. Checking it switches off what it excludes.
struct CheckOption {
  bool Settings::*member;
  bool Settings::*excludes = nullptr;
};

/// A check box for one of the IgnoreBlanks bits.
struct BlanksOption {
  int32_t bit;
};

/// A name box for a filter. What is entered becomes the newest entry of the history and so the filter in
/// force; an emptied box switches the filter off.
struct FilterOption {
  HistoryList Settings::*history;
  bool Settings::*on;
};

/// A list of the screen's fonts.
struct FontFaceOption {};

/// An editable list. A text that is no number from 1 to 200 means 9.
struct FontSizeOption {};

/// A list of the sizes 1 to 16.
struct TabSizeOption {};

/// A button that shows a colour and opens the picker.
struct ColourOption {
  Colour Settings::*member;
};

/// A button for all seven colours at once. It shows as checked while they are those of its set.
struct ColourSetOption {
  const ColourSet& (*colours)();
};

/// One control.
struct OptionRow {
  int control;  // its number in the dialog
  std::variant<CheckOption, BlanksOption, FilterOption, FontFaceOption, FontSizeOption, TabSizeOption,
               ColourOption, ColourSetOption>
      kind;
  /// The check box, if any, that has to be on or off for this one to mean anything. It is greyed otherwise.
  struct Condition {
    int control = 0;
    bool on = true;
  } condition = {};
};

/// One page of the dialog.
struct OptionsPageRow {
  TextId name;
  int dialog;  // the number of its resource
  const char* helpPage;
  std::span<const OptionRow> options;
};

/// The pages, in the order of the dialog's list.
std::span<const OptionsPageRow> optionsPages();

/// The option of a control, on whatever page; null for a number that has none.
const OptionRow* findOption(int control);

/// How a control shows. Of the last three members each kind of control has one.
struct OptionState {
  bool enabled = true;
  bool checked = false;
  std::string text{};
  Colour colour = 0;

  bool operator==(const OptionState&) const = default;
};

/// How a control shows for these settings. A greyed check box is unchecked, whatever its setting.
OptionState optionState(const OptionRow& option, const Settings& settings);

/// Has the settings follow a control that shows something else now; the other controls of its page may have
/// to show something else in turn. The windows follow by comparing the settings with what they show, so that
/// they redo only what is different.
void changeOption(const OptionRow& option, const OptionState& shown, Settings& settings);

/// What a list offers that does not depend on the system.
std::vector<std::string> optionChoices(const OptionRow& option);

}  // namespace merivane
