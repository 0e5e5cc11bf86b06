#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/diff_model.h"
#include "mergeview/line_ruler.h"
#include "mergeview/text_buffer.h"
#include "mergeview/view_options.h"

namespace merivane {

/// Characters of a row drawn in the same colours: opaque, each as wide as its advance says.
struct TextRun {
  uint32_t begin;  // in RowLayout::glyphs
  uint32_t end;
  int32_t left;  // pixels from the left of the text area; may begin left and end right of it
  int32_t right;
  Colour foreground;
  Colour background;
  bool rightToLeft = false;  // which way the characters go, which stand in the order in which they are read
  bool operator==(const TextRun&) const = default;
};

/// A part of a row's text area, in pixels.
struct SelectedPart {
  int32_t left;
  int32_t right;
  bool operator==(const SelectedPart&) const = default;
};

/// All there is to draw of one side of a row. From 0 to `textEnd` the runs cover the text area without a gap;
/// from there to its right it has the background.
struct RowLayout {
  Colour background = 0;  // of the gutter too
  Colour foreground = 0;  // of the gutter, and of the characters that do not differ
  std::string mark;       // at the gutter's left; empty for none
  std::string number;     // in the gutter, right-aligned; empty for none
  Glyphs glyphs;          // what the runs show
  std::vector<TextRun> runs;
  int32_t textEnd = 0;
  bool cut = false;                    // to be told by a mark at the text area's right: more text lies beyond
  std::vector<SelectedPart> selected;  // to be inverted, within the text area
};

/// What one side's rows are drawn from; shared by screen, print and preview.
struct RowSource {
  const DiffModel& model;
  const TextBuffer& text;
  const LineRuler& ruler;
  const ViewOptions& options;
  int side;
  bool readOnly;
  bool utf8;  // what the text's bytes are
};

/// The part of a row's text that is in view, in pixels, and the selected positions. An empty selection draws
/// as none. What cannot be scrolled into view, as on paper, needs a mark.
struct RowWindow {
  int64_t scrollX = 0;
  int32_t width = 0;
  uint32_t selectionBegin = 0;
  uint32_t selectionEnd = 0;
  bool marksCut = false;
};

/// Lays out what is in view of a row. Reuses the room that `layout` has; throws std::bad_alloc.
void layOutRow(const RowSource& source, uint32_t row, const RowWindow& window, RowLayout& layout);

/// The number that stands before a row; empty for none.
std::string rowNumber(const DiffModel& model, LineNumbers kind, int side, uint32_t row);

/// What tells the kind of a row on a side where colours cannot: "<" only left, ">" only right, "|" changed.
std::string rowMark(RowStatus status, int side);

/// A differing character's colours: the text colour inverted, and the row's darkened to 60%.
Colour invertedColour(Colour colour);
Colour darkenedColour(Colour colour);

}  // namespace merivane
