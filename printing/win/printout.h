#pragma once

#include <windows.h>

#include <array>
#include <string>

#include "display/sections.h"
#include "mergeview/view_state.h"
#include "mergeview/win/view_fonts.h"
#include "printing/page_geometry.h"
#include "printing/printed_lines.h"
#include "printing/win/printer_dc.h"

namespace merivane {

/// What is printed, and how.
struct PrintStyle {
  ViewOptions options;  // for paper
  std::string fontFace;
  int32_t points = 0;
  int32_t scale = 100;  // percent
  ExportScope scope = ExportScope::everything;
  std::array<std::string, 2> names;  // for the header
  std::string time;                  // for the footer
};

/// A comparison divided into the pages of a printer, which printing and preview share. Reads texts and rows
/// where the panes have them: these must stay as they are for as long as the printout lives.
class Printout {
 public:
  /// `device` is only asked for its sizes and fonts.
  Printout(const PrinterDc& device, const ViewState& view, PrintStyle style);

  const PageDevice& device() const { return device_; }
  uint32_t pages() const { return pageCount(lines_.count(), geometry_); }

  /// What names the printout, as in its header.
  std::string title() const;

  /// Draws a page, one-based. The context's logical units are the printer's pixels, and its origin is that of
  /// the area that the printer can print on.
  void paintPage(HDC dc, uint32_t page) const;

 private:
  void paintFrame(HDC dc, uint32_t page) const;
  void paintLines(HDC dc, uint32_t page) const;
  void paintTitle(HDC dc, uint32_t row, int y) const;

  const ViewState& view_;
  PrintStyle style_;
  PageDevice device_;
  ViewFonts fonts_;
  PageGeometry geometry_;
  LineRuler ruler_;
  PrintedLines lines_;
  PaneEdges panes_[2];
};

}  // namespace merivane
