#pragma once

#include <functional>
#include <new>
#include <string>
#include <string_view>

#include "mergeview/mouse_selection.h"
#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"

namespace merivane {

/// Counts what the view asks of its window. Needs no memory but for its clipboard, so that what fails is
/// never the host.
class FakeHost final : public ViewHost {
 public:
  void beep() override { ++beeps, throwIf(serviceThrows); }
  void refuse(const std::string& why) override { refused = why; }
  bool confirm(const std::string& question) override { return asked = question, confirms; }
  bool setClipboardText(std::string_view text) override {
    throwIf(serviceThrows);
    return orReport(clipboard.assign(text));
  }
  bool clipboardText(ByteArray& text) override {
    throwIf(serviceThrows);
    return orReport(text.assign(clipboard.view()));
  }
  void reportOutOfMemory() override { ++outOfMemory, throwIf(reportThrows); }

  ByteArray clipboard;
  std::string refused, asked;
  bool confirms = true;
  int beeps = 0, outOfMemory = 0;
  bool serviceThrows = false, reportThrows = false;  // std::bad_alloc

 private:
  static void throwIf(bool throws) {
    if (throws) throw std::bad_alloc();
  }
  bool orReport(bool done) { return outOfMemory += !done, done; }
};

/// Changes as one line: for each of the first rows "l" or "r" for a pane of it to be repainted, "b" for both
/// and "." for none; then the names of what else is set, "all" for everything.
std::string changesText(const ViewChanges& changes);

/// Two texts and the user at work on them, in two panes of 320 by 160 pixels besides gutter and splitter: ten
/// rows of 40 columns.
class EditRun {
 public:
  EditRun(std::string_view left, std::string_view right, const CompareOptions& options = {});

  ViewState& view() { return view_; }
  UndoHistory& history() { return history_; }
  FakeHost& host() { return host_; }
  std::string text(int side) const;

  /// Compares two other texts instead.
  void load(std::string_view left, std::string_view right, AfterComparison after = AfterComparison::top);

  /// Presses keys, separated by blanks, with "C-" and "S-" before those that Ctrl or Shift goes with: the
  /// names of keys, characters to type, commands such as "undo", "copy-line-left" or "delete-block", and for
  /// the mouse "click2@8,0", a double click at that point, or "drag@8,0".
  void press(std::string_view keys);

  /// Does something that the user might do; `below(n)` chooses among n.
  void step(const std::function<uint32_t(uint32_t bound)>& below);

  /// The caret as "row,column", after the row and offset of the anchor where that is elsewhere, and before
  /// the top row and first column where the view has been scrolled.
  std::string place() const;

  /// The side's text row by row with "/" for line ends and "~" for a filler; on the active side with "|" for
  /// the caret and, with a selection, "^" for the anchor.
  std::string marked(int side) const;

  /// The first thing that is wrong with rows, counts, caret or anchor; an empty string if nothing is.
  std::string fault() const;

  /// All that an edit may change, in one string.
  std::string state() const;

  /// Undoes everything, does it again, and tells what was wrong on the way or is different at the ends.
  std::string undoAndRedoAll();

 private:
  std::string sideState(int side) const { return text(side) + (history_.isModified(side) ? "*" : ""); }

  FakeHost host_;
  UndoHistory history_;
  ViewState view_{host_};
  MouseSelection mouse_{view_};
  std::string first_, swapped_;
  bool wellFormed_ = true;  // both texts were UTF-8 or ASCII
};

}  // namespace merivane
