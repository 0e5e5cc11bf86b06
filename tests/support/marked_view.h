#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mergeview/editor.h"
#include "mergeview/merge_commands.h"
#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"

namespace merivane {

/// Writes down what the view asks of its window.
class FakeHost : public ViewHost {
 public:
  struct Invalidated {
    RowRange rows;
    Panes panes;
    bool operator==(const Invalidated&) const = default;
  };

  void invalidateRows(RowRange rows, Panes panes) override { invalidated.push_back({rows, panes}); }
  void refreshAll() override { ++refreshed; }
  void panesMoved() override { ++moved; }
  void updateScrollBars() override { ++scrollBars; }
  void caretMoved() override { ++caretMoves; }
  void beep() override { ++beeps; }
  bool setClipboardText(std::string_view text) override;
  bool clipboardText(ByteArray& text) override { return clipboard && text.assign(*clipboard); }
  void reportOutOfMemory() override { ++outOfMemory; }

  bool wasInvalidated(uint32_t row, Panes panes) const;

  std::vector<Invalidated> invalidated;
  std::optional<std::string> clipboard;
  int refreshed = 0, moved = 0, scrollBars = 0, caretMoves = 0, beeps = 0, outOfMemory = 0;
};

class FakeUndoOwner : public UndoOwner {
 public:
  void onHistoryChanged(bool modifiedChanged) override { modifiedChanges += modifiedChanged; }
  void onUndone() override { ++undone; }

  int modifiedChanges = 0, undone = 0;
};

/// A comparison of two in-memory texts.
FileComparison comparisonOf(std::string_view left, std::string_view right);

/// A side's whole text.
inline std::string textOf(const ViewState& view, int side) {
  const auto [head, tail] = view.text(side).stretch(0, view.text(side).size());
  return std::string(head) + std::string(tail);
}

/// A view of two panes of 400 by 160 pixels, ten rows of 40 columns besides gutter and splitter, written as
/// marked text: rows are separated by " / " and sides by " # ", "-" is a filler, "~" at the end of a cell
/// means no line end, "|" is the caret and "[" the anchor where it is elsewhere. The rows have to be those
/// that the comparison of the texts gives.
class MarkedView {
 public:
  explicit MarkedView(std::string_view marked);

  ViewState& state() { return *state_; }
  FakeHost& host() { return host_; }

  /// What the view has come to.
  std::string marked() const;

  UndoHistory& history() { return history_; }

  /// Presses keys, separated by blanks, with "C-" and "S-" before those that Ctrl or Shift goes with: the
  /// names of keys, characters to type, "undo" and "redo", and merge commands such as "copy-line-left",
  /// "delete-block" or "clip-line".
  MarkedView& press(std::string_view keys);

 private:
  FakeHost host_;
  FakeUndoOwner owner_;
  UndoHistory history_{owner_};
  std::unique_ptr<ViewState> state_;
};

}  // namespace merivane
