#pragma once

#include <windows.h>

#include <vector>

#include "mergeview/diff_arrows.h"
#include "mergeview/row_layout.h"
#include "mergeview/split.h"
#include "mergeview/win/view_fonts.h"

namespace merivane {

/// Draws the rows of both panes and what ties them together in the gap between: on the screen, on paper, in a
/// preview. Everything is in the device context's logical units, which the fonts' metrics are in too: where
/// its origin is, and how it is scaled, is the caller's matter.
class PanePainter {
 public:
  /// Both must outlive the painter.
  PanePainter(HDC dc, const ViewFonts& fonts) : dc_(dc), fonts_(fonts) {}

  /// Lays out and draws one side of some rows, gutter included, the first of them from line `y` on.
  void paintRows(const RowSource& source, RowRange rows, const RowWindow& window, const PaneEdges& pane,
                 int y);

  /// Draws the arrows of the differences that are in the gap. They may begin above it and end below.
  void paintArrows(const DiffModel& model, const RowColours& colours, const GapWindow& gap);

  void fill(const RECT& area, Colour colour);

 private:
  void paintRow(const PaneEdges& pane, int y);
  void paintGutter(const PaneEdges& pane, int y);
  void paintText(const PaneEdges& pane, int y);
  void paintCut(const PaneEdges& pane, int y);
  void polygon(const std::vector<POINT>& corners, Colour colour);

  HDC dc_;
  const ViewFonts& fonts_;
  RowLayout layout_;  // reused from row to row
};

}  // namespace merivane
