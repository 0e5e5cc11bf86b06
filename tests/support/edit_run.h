#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "mergeview/editor.h"
#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"
#include "tests/support/marked_view.h"

namespace merivane {

/// A host that needs no memory but for its clipboard, so that what fails is never the host.
class QuietHost final : public ViewHost {
 public:
  void invalidateRows(RowRange, Panes) override {}
  void refreshAll() override {}
  void panesMoved() override {}
  void updateScrollBars() override {}
  void caretMoved() override {}
  void beep() override {}
  bool setClipboardText(std::string_view text) override;
  bool clipboardText(ByteArray& text) override;
  void reportOutOfMemory() override { ++outOfMemory; }

  ByteArray clipboard;
  int outOfMemory = 0;
};

/// Two texts and the user at work on them.
class EditRun {
 public:
  EditRun(std::string_view left, std::string_view right, const CompareOptions& options);

  ViewState& view() { return *view_; }
  UndoHistory& history() { return history_; }
  QuietHost& host() { return host_; }
  std::string text(int side) const { return textOf(*view_, side); }

  /// Does something that the user might do; `below(n)` chooses among n.
  using Choice = std::function<uint32_t(uint32_t bound)>;
  void step(const Choice& below);

  /// Copies to a side, or deletes on it, difference by difference until there is none. False when that does
  /// not come to an end.
  bool mergeAll(int to, const Choice& below);

  /// The first thing that is wrong with rows, counts, caret or anchor; an empty string if nothing is.
  std::string fault() const;

  /// All that an edit may change, in one string.
  std::string state() const;

  /// Undoes everything, does it again, and tells what was wrong on the way or is different at the ends.
  std::string undoAndRedoAll();

 private:
  void edit(const Choice& below);
  void merge(const Choice& below);

  QuietHost host_;
  FakeUndoOwner owner_;
  UndoHistory history_{owner_};
  std::unique_ptr<ViewState> view_;
  std::string first_[2];
};

}  // namespace merivane
