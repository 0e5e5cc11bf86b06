#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "shell/settings_store.h"

namespace merivane {

class HistoryList;

/// Shows a history, as a combo box does.
class HistoryView {
 public:
  virtual ~HistoryView() = default;

  /// The entries changed: show the new ones and keep the text being edited.
  virtual void refill(const HistoryList& list) = 0;
};

/// The names a user gave, the latest first, kept from one run to the next.
class HistoryList {
 public:
  HistoryList() = default;
  HistoryList(const HistoryList&) = delete;
  HistoryList& operator=(const HistoryList&) = delete;

  /// Sets the base name of the values: "Name.count", "Name.0", "Name.1", ...
  void SetName(std::string_view name) { name_ = name; }

  /// Sets the limit, which is 10 at first; less than 1 means none. Drops the oldest entries beyond it and
  /// refills the views.
  void SetMaximum(int32_t count);

  void SetCaseSensitive(bool on) { caseSensitive_ = on; }

  /// Reads the entries, however many they are; a number without an entry leaves no gap.
  void Load(const SettingsStore& store);

  /// Writes the entries. Where the list was longer before, its further values stay, beyond the count.
  void Save(SettingsStore& store) const;

  /// Makes `text` the newest entry, moving it there if it is an older one. Nothing happens when it is empty
  /// or the newest already.
  void Add(std::string_view text);

  int32_t Count() const { return static_cast<int32_t>(entries_.size()); }

  /// The newest entry; empty when there is none.
  std::string First() const { return entries_.empty() ? std::string() : entries_.front(); }

  const std::vector<std::string>& entries() const { return entries_; }

  /// Returns the index of the shortest entry that begins with `prefix`, of the newest among equally short
  /// ones; -1 when there is none.
  int32_t FindCompletion(std::string_view prefix) const;

  /// The views are not owned and must be detached before they go.
  void attach(HistoryView& view) { views_.push_back(&view); }
  void detach(HistoryView& view) { std::erase(views_, &view); }

 private:
  void trim();
  void refillViews();

  std::string name_;
  int32_t maximum_ = 10;
  bool caseSensitive_ = false;
  std::vector<std::string> entries_;
  std::vector<HistoryView*> views_;
};

}  // namespace merivane
