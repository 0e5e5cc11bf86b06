#pragma once

#include <windows.h>

#include "mergeview/win/splitter_thumb.h"
#include "mergeview/win/summary.h"
#include "mergeview/win/text_view.h"
#include "shell/frame_layout.h"

namespace merivane {

/// The contents of a text window: the two panes, the summary beside them, and below them the horizontal
/// scroll bars with the splitter's thumb between.
class ComparePanes {
 public:
  /// `history` must outlive the panes.
  ComparePanes(TextViewOwner& owner, UndoHistory& history);

  /// Creates the controls, in the order of the Tab key. False when they cannot be created.
  bool create(HWND window);

  void layOut(const Area& area, bool showSummary, int dpi);
  bool showsSummary() const { return metrics_.summaryWidth > 0; }

  /// Lays out what stands along the split between the panes, and sets the horizontal scroll bars.
  void followSplit();

  /// A message of a horizontal scroll bar.
  void onHScroll(HWND bar, int request);

  TextView view;
  Summary summary;
  SplitterThumb thumb;

 private:
  void setScrollBar(int side);

  HWND scrollBars_[2] = {};
  Area area_;
  PaneMetrics metrics_;
  SplitLayout layout_;  // as it stands
};

}  // namespace merivane
