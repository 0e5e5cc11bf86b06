#pragma once

#include <windows.h>

#include <vector>

#include "mergeview/row_layout.h"
#include "mergeview/split.h"
#include "mergeview/win/view_fonts.h"

namespace merivane {

/// Draws laid-out rows on a device: screen, paper or preview.
class RowPainter {
 public:
  /// Both must outlive the painter.
  RowPainter(HDC dc, const ViewFonts& fonts) : dc_(dc), fonts_(fonts) {}

  /// Lays out and draws one side of a row, gutter included, from pixel line `y` on.
  void paint(const RowSource& source, uint32_t row, const RowWindow& window, const PaneEdges& pane, int y);

 private:
  void fill(int left, int right, int y, Colour colour);
  void paintGutter(const PaneEdges& pane, int y);
  void paintText(const PaneEdges& pane, int y);

  HDC dc_;
  const ViewFonts& fonts_;
  RowLayout layout_;  // reused from row to row
  std::vector<INT> advances_;
};

}  // namespace merivane
