#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "mergeview/mouse_selection.h"
#include "mergeview/view_state.h"

namespace merivane {

/// A point of the client area.
struct ViewPoint {
  int32_t x;
  int32_t y;
};

/// What a screen reader is told of the active side: the rows around the caret as the text of an edit field,
/// a row a line. A filler reads as a text that says so, and a control character but a tab as "^". As readers
/// fetch the whole text for each step, it is no more than some hundred rows, and of a very long line no more
/// than a piece, the caret's within it.
///
/// The text and its offsets are in units of UTF-16; an offset inside a character stands for its start. Lines
/// and offsets are zero-based; between two lines stands CR LF. They hold until the view changes, and stay the
/// same while the caret moves within a page of rows, so that a reader sees where it went.
class SpokenText {
 public:
  explicit SpokenText(const ViewState& view);

  uint32_t lineCount() const { return static_cast<uint32_t>(lines_.size()); }  // at least 1
  uint32_t size() const { return lineEnd(lineCount() - 1); }
  std::u16string text() const;
  std::u16string lineText(uint32_t line) const;

  /// The line that an offset lies in, its CR LF included; the last one for what is beyond.
  uint32_t lineAt(uint32_t offset) const;

  /// Where a line starts, and where it ends before its CR LF.
  uint32_t lineStart(uint32_t line) const { return lines_[line].offset; }
  uint32_t lineEnd(uint32_t line) const { return lines_[line].offset + lines_[line].length; }

  /// Offsets and places of the side's text. What lies outside becomes the nearest one, in a filler its start.
  uint32_t offsetOf(const TextPlace& place) const;
  TextPlace placeOf(uint32_t offset) const;

  /// Where the character after an offset shows, and which shows nearest to a point.
  ViewPoint pointOf(uint32_t offset) const;
  uint32_t offsetAt(ViewPoint point) const;

  /// The topmost row in view as a line.
  uint32_t firstVisibleLine() const;

  uint32_t caret() const;
  uint32_t selectionBegin() const;
  uint32_t selectionEnd() const;

 private:
  struct Line {
    uint32_t offset;
    uint32_t length;    // in units
    uint32_t position;  // in the side's text
    uint32_t bytes;
    bool filler;
  };

  Line lineOf(uint32_t row, uint32_t offset) const;
  uint32_t anchor() const;
  RowCharacters characters(const Line& line) const;
  void append(std::u16string& to, const Line& line) const;

  const ViewState& view_;
  const int side_;
  uint32_t firstRow_;
  std::vector<Line> lines_;
};

/// Selects between two offsets of the spoken text, with the caret at the second one.
void selectSpoken(ViewState& view, uint32_t anchor, uint32_t caret);

/// What is said of the difference at a row: "Difference 3 of 12: 4 lines changed". Empty in a row without a
/// difference. Takes time with the rows before it.
std::string differenceText(const DiffModel& model, uint32_t row);

}  // namespace merivane
