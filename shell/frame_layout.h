#pragma once

#include <array>
#include <cstdint>

namespace merivane {

/// In pixels of the window's client area.
struct Area {
  int32_t left = 0;
  int32_t top = 0;
  int32_t width = 0;
  int32_t height = 0;

  int32_t right() const { return left + width; }
  int32_t bottom() const { return top + height; }
  bool operator==(const Area&) const = default;
};

/// The sizes that a text window's layout starts from, in pixels; 0 for what is hidden.
struct FrameMetrics {
  int32_t width = 0;  // of the client area
  int32_t height = 0;
  int32_t toolBarHeight = 0;
  int32_t statusBarHeight = 0;
  int32_t nameBoxHeight = 0;
  int32_t margin = 0;            // around and between the name boxes and their buttons
  int32_t verticalBarWidth = 0;  // the text view's own scroll bar
  int32_t horizontalBarHeight = 0;
  int32_t summaryWidth = 0;
};

/// Where the text view and the summary bar stand: below the name boxes, above the horizontal scroll bars.
/// The view starts at the window's left edge, so that x means the same in both.
struct ViewLayout {
  Area view;  // with its vertical scroll bar
  Area summary;
};
ViewLayout layOutView(const FrameMetrics& metrics);

/// Where everything stands that follows the split between the panes.
struct SplitLayout {
  Area nameBox[2];
  Area browse[2];
  Area upOneFolder[2];
  Area scrollBar[2];
  Area thumb;  // between the scroll bars

  bool operator==(const SplitLayout&) const = default;
};

/// The left pane ends at `leftPaneEnd`, the right one begins at `rightPaneStart`, in the view.
SplitLayout layOutSplit(const FrameMetrics& metrics, int32_t leftPaneEnd, int32_t rightPaneStart);

/// The right edges of the status bar's four parts in a window of this width in pixels, without the size
/// grip's while the window is not maximized, on a screen of so many pixels an inch. The second part holds the
/// caret's place.
std::array<int32_t, 4> statusPartEdges(int32_t width, int32_t resolution);

}  // namespace merivane
