#include "shell/history_list.h"

#include <algorithm>

#include "base/names.h"

namespace merivane {
namespace {

// A damaged count must not keep the program from starting.
constexpr int32_t kMaxNumbersRead = 10000;

}  // namespace

void HistoryList::SetMaximum(int32_t count) {
  maximum_ = count;
  trim();
  refillViews();
}

void HistoryList::Load(const SettingsStore& store) {
  entries_.clear();
  const int32_t count = std::min(store.GetNumber(name_ + ".count", 0), kMaxNumbersRead);
  for (int32_t i = 0; i < count; ++i) {
    if (auto entry = store.GetString(name_ + "." + std::to_string(i))) entries_.push_back(std::move(*entry));
  }
}

void HistoryList::Save(SettingsStore& store) const {
  store.SetNumber(name_ + ".count", Count());
  for (int32_t i = 0; i < Count(); ++i) {
    store.SetString(name_ + "." + std::to_string(i), entries_[static_cast<size_t>(i)]);
  }
}

void HistoryList::Add(std::string_view text) {
  if (text.empty()) return;
  std::string added(text);  // the text may be one of the entries
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const std::string& entry) {
    return equalNames(entry, added, caseSensitive_);
  });
  if (found != entries_.end()) {
    if (found == entries_.begin()) return;
    entries_.erase(found);
  }
  entries_.insert(entries_.begin(), std::move(added));
  trim();
  refillViews();
}

int32_t HistoryList::FindCompletion(std::string_view prefix) const {
  int32_t best = -1;
  size_t shortest = std::string::npos;
  for (size_t i = 0; i < entries_.size(); ++i) {
    const std::string_view entry = entries_[i];
    if (entry.size() < prefix.size() || entry.size() >= shortest) continue;
    if (!equalNames(entry.substr(0, prefix.size()), prefix, caseSensitive_)) continue;
    best = static_cast<int32_t>(i);
    shortest = entry.size();
  }
  return best;
}

void HistoryList::trim() {
  if (maximum_ >= 1 && Count() > maximum_) entries_.resize(static_cast<size_t>(maximum_));
}

void HistoryList::refillViews() {
  for (HistoryView* view : views_) view->refill(*this);
}

}  // namespace merivane
