#include "shell/tips.h"

#include <charconv>
#include <iterator>

namespace merivane {
namespace {

constexpr const char* indexKey = "TipOfTheDay.TipIndex";
constexpr const char* startupKey = "TipOfTheDay.ShowOnStartup";

Tip tipOf(std::string_view line) {
  Tip tip;
  const std::string_view words = line.substr(0, line.find('\t'));
  const std::string_view number = line.substr(words.size() < line.size() ? words.size() + 1 : line.size());
  std::from_chars(number.data(), number.data() + number.size(), tip.picture);
  for (size_t i = 0; i < words.size(); ++i) {
    if (words[i] != '\\') {
      tip.text += words[i];
    } else if (words.substr(i + 1).starts_with('n')) {
      tip.text += '\n';
      ++i;
    }
  }
  return tip;
}

}  // namespace

IconId tipPicture(int32_t number) {
  constexpr IconId pictures[] = {
      IconId::newTextWindow, IconId::nextDiff, IconId::copyRight,       IconId::browse, IconId::cut,
      IconId::paste,         IconId::copy,     IconId::switchSides,     IconId::undo,   IconId::save,
      IconId::options,       IconId::saveAll,  IconId::newFolderWindow, IconId::find,   IconId::refresh};
  const bool known = number >= 0 && number < static_cast<int32_t>(std::size(pictures));
  return pictures[known ? number : 0];
}

TipsOfTheDay::TipsOfTheDay(std::string_view tips, SettingsStore& store)
    : tips_(tips), left_(tips), index_(0), store_(store) {
  const int32_t wanted = store.GetNumber(indexKey, 0);
  while (index_ < wanted && !left_.empty()) takeLine();
  if (left_.empty()) goToStart();
}

std::optional<Tip> TipsOfTheDay::next() {
  if (tips_.empty()) return std::nullopt;
  const Tip tip = tipOf(takeLine());
  if (left_.empty()) goToStart();
  store_.SetNumber(indexKey, index_);
  return tip;
}

std::string_view TipsOfTheDay::takeLine() {
  const size_t end = left_.find('\n');
  std::string_view line = left_.substr(0, end);
  left_.remove_prefix(end == left_.npos ? left_.size() : end + 1);
  ++index_;
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

void TipsOfTheDay::goToStart() {
  left_ = tips_;
  index_ = 0;
}

bool showsTipOnStartup(const SettingsStore& store) { return store.GetBool(startupKey, true); }

void setShowTipOnStartup(SettingsStore& store, bool show) { store.SetBool(startupKey, show); }

}  // namespace merivane
