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

// The frame of every window.

/// The sizes that a window's layout starts from, in pixels; 0 for what is hidden.
struct FrameMetrics {
  int32_t width = 0;  // of the client area
  int32_t height = 0;
  int32_t toolBarHeight = 0;
  int32_t statusBarHeight = 0;
  int32_t nameBoxHeight = 0;
  int32_t margin = 0;  // around and between the name boxes and their buttons
};

/// What the window's own contents get: all between the row of names and the status bar.
Area layOutContents(const FrameMetrics& metrics);

/// Where the two names stand, from edge to edge of the window.
struct NameRowLayout {
  Area nameBox[2];
  Area browse[2];
  Area upOneFolder[2];

  bool operator==(const NameRowLayout&) const = default;
};

/// The left name ends at `leftEnd`, the right one begins at `rightStart`.
NameRowLayout layOutNames(const FrameMetrics& metrics, int32_t leftEnd, int32_t rightStart);

// The contents of a text window.

/// The sizes of what stands around the panes, in pixels; 0 for what is hidden.
struct PaneMetrics {
  int32_t verticalBarWidth = 0;  // the text view's own scroll bar
  int32_t horizontalBarHeight = 0;
  int32_t summaryWidth = 0;
};

/// The text view and the summary bar, above the horizontal scroll bars.
struct ViewLayout {
  Area view;  // with its vertical scroll bar
  Area summary;
};
ViewLayout layOutView(const Area& contents, const PaneMetrics& metrics);

/// What follows the split between the panes: the horizontal scroll bars and the thumb between them.
struct SplitLayout {
  Area scrollBar[2];
  Area thumb;

  bool operator==(const SplitLayout&) const = default;
};

/// The left pane ends at `leftPaneEnd`, the right one begins at `rightPaneStart`.
SplitLayout layOutSplit(const Area& contents, const PaneMetrics& metrics, int32_t leftPaneEnd,
                        int32_t rightPaneStart);

/// The right edges of the status bar's four parts in a window of this width in pixels, without the size
/// grip's while the window is not maximized, on a screen of `resolution` pixels an inch. In a text window the
/// second part holds the caret's place; in a folder window the last three hold what is selected, the filter
/// and how many entries could not be compared.
std::array<int32_t, 4> statusPartEdges(int32_t width, int32_t resolution);
std::array<int32_t, 4> folderStatusPartEdges(int32_t width, int32_t resolution);

/// These edges where parts that show nothing leave their room to the first; `empty` has a bit for each part.
std::array<int32_t, 4> withoutEmptyParts(const std::array<int32_t, 4>& edges, unsigned empty);

}  // namespace merivane
