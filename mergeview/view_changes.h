#pragma once

#include <algorithm>

#include "engine/diff_model.h"

namespace merivane {

/// What has changed in the panes since it was last shown. An action collects it while it runs; the window
/// takes it when the action is over and brings itself up to date once.
struct ViewChanges {
  RowRange rows[2];           // of each side, whose text, marks or selection look different
  bool caret = false;         // the caret or the selection is another, or the caret has the other shape
  bool scrolled = false;      // the panes show other rows or columns
  bool scrollRanges = false;  // there is more or less to scroll to
  bool edges = false;         // the panes lie elsewhere
  bool looks = false;         // all of the same rows looks different: options or font
  bool everything = false;    // texts or rows: nothing that is shown can be relied on
  bool history = false;       // there is another action to undo or redo
  bool modified = false;      // a side has become modified or is so no longer

  bool operator==(const ViewChanges&) const = default;

  void addRows(int side, RowRange more) {
    RowRange& range = rows[side];
    range = range.empty() ? more : RowRange{std::min(range.begin, more.begin), std::max(range.end, more.end)};
  }

  /// Takes in what changed after this.
  void add(const ViewChanges& later) {
    for (const int side : {0, 1}) {
      if (!later.rows[side].empty()) addRows(side, later.rows[side]);
    }
    caret |= later.caret;
    scrolled |= later.scrolled;
    scrollRanges |= later.scrollRanges;
    edges |= later.edges;
    looks |= later.looks;
    everything |= later.everything;
    history |= later.history;
    modified |= later.modified;
  }
};

}  // namespace merivane
