#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "shell/icon_drawing.h"
#include "shell/settings_store.h"

namespace merivane {

/// A tip of the day.
struct Tip {
  std::string text;     // with "\n" as line breaks
  int32_t picture = 0;  // the number after the text; 0 without one

  bool operator==(const Tip&) const = default;
};

/// The picture beside a tip; every number has one.
IconId tipPicture(int32_t number);

/// The tips of the day, one after the other, and from one run of the program to the next. What is kept is
/// written at once.
class TipsOfTheDay {
 public:
  /// `tips` has one tip a line. In a line "\n" stands for a line break, any other backslash for nothing, and
  /// after a tab may come the number of a picture. It and the store must outlive this.
  TipsOfTheDay(std::string_view tips, SettingsStore& store);

  /// Returns the tip whose turn it is, after the last one the first again; none where there are no tips.
  std::optional<Tip> next();

 private:
  std::string_view takeLine();
  void goToStart();

  std::string_view tips_;
  std::string_view left_;
  int32_t index_;  // of the first line that is left
  SettingsStore& store_;
};

/// Whether a tip is to be shown when the program starts.
bool showsTipOnStartup(const SettingsStore& store);
void setShowTipOnStartup(SettingsStore& store, bool show);

}  // namespace merivane
