#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "engine/comparison.h"
#include "mergeview/edited_file.h"
#include "mergeview/line_ruler.h"
#include "mergeview/row_layout.h"
#include "mergeview/split.h"
#include "mergeview/undo_history.h"
#include "mergeview/view_changes.h"
#include "mergeview/view_host.h"
#include "mergeview/view_options.h"

namespace merivane {

/// Where the view goes when it takes over a comparison.
enum class AfterComparison { top, keepPlace, firstDifference };

/// The state of one comparison's two panes, without their window: texts and rows, caret and selection, what
/// is scrolled into view, and where the panes are. What has to be shown of an action is collected in its
/// changes.
///
/// The caret is on the active side, in a row of the model, at a text position from the row's start to its
/// end, never inside a character; in a filler row at the row's start, which holds no text. It may stand after
/// the very last "\n" of a side, where an edit can leave it. The selection is the active side's text between
/// anchor and caret. All lengths are pixels, of the client area where they are coordinates.
class ViewState {
 public:
  explicit ViewState(ViewHost& host);
  ViewState(const ViewState&) = delete;
  ViewState& operator=(const ViewState&) = delete;

  ViewHost& host() { return host_; }

  /// What has changed since it was last taken, to be added to by whoever changes something else here.
  ViewChanges& changes() { return changes_; }
  ViewChanges takeChanges() { return std::exchange(changes_, {}); }

  /// Whoever changes texts or rows says so with rowsChanged() or caretPlaced() before anything is drawn.
  EditedPair& pair() { return pair_; }
  const EditedPair& pair() const { return pair_; }
  EditedFile& file(int side) { return pair_.files[side]; }
  const EditedFile& file(int side) const { return pair_.files[side]; }
  const DiffModel& model() const { return pair_.model; }
  const TextBuffer& text(int side) const { return pair_.files[side].text; }
  uint32_t rowCount() const { return model().rowCount(); }

  /// Takes over texts and rows and the paths that the texts came from, copying nothing. Never fails.
  void take(FileComparison&& comparison, std::array<std::string, 2>&& paths, AfterComparison after);

  /// Starts at the top of texts and rows that are others, with a side active.
  void restart(int side);

  /// Exchanges the sides, the caret staying in its text; `model` is how they align that way round.
  void swapSides(DiffModel&& model);

  // Settings and geometry.

  const ViewOptions& options() const { return options_; }
  const LineRuler& ruler() const { return ruler_; }
  const FontMetrics& font() const { return ruler_.font(); }
  void setOptions(const ViewOptions& options);
  void setFont(const FontMetrics& font);

  /// What counts as equal where an edit has its rows compared anew.
  const CompareOptions& compareOptions() const { return compareOptions_; }
  void setCompareOptions(const CompareOptions& options);
  void resize(int32_t width, int32_t height);

  int32_t width() const { return width_; }
  int32_t height() const { return height_; }
  float splitFraction() const { return split_.splitFraction(); }
  int32_t splitX() const { return split_.splitX(); }
  void setSplitFromX(int32_t x);
  void centreSplit();
  const PaneEdges& pane(int side) const { return panes_[side]; }

  // Rows and positions.

  uint32_t rowStart(int side, uint32_t row) const { return model().position(side, row); }

  /// After the row's last character, its "\n" included, and before that "\n".
  uint32_t rowEnd(int side, uint32_t row) const { return model().endPosition(side, row, text(side).size()); }
  uint32_t lineEnd(int side, uint32_t row) const;
  bool isFiller(int side, uint32_t row) const { return fillerSide(model().status(row)) == side; }

  /// The row in which a caret at a position shows: at the end of a text without a last "\n" the row of that
  /// line, not a filler after it.
  uint32_t rowOf(int side, uint32_t position) const { return pair_.rowOf(side, position); }

  /// The characters of a row or of a part of it that begins at one of them. They hold until the next change.
  RowCharacters characters(int side, uint32_t begin, uint32_t end) const;

  /// Whether a character beyond ASCII goes into a side's text as UTF-8.
  bool holdsUtf8(int side) const {
    return isUnicode(encodingBeyondAscii(file(side).encoding, file(1 - side).encoding));
  }

  /// Where a position of a row shows, or the character that it is in. As all places outside the ruler, its
  /// position is one of the side's text.
  LinePlace placeAt(int side, uint32_t row, uint32_t position) const;

  // Caret and selection.

  int activeSide() const { return activeSide_; }
  uint32_t caretRow() const { return caretRow_; }
  uint32_t caretColumn() const { return caret_.column; }
  uint32_t caretPos(int side) const { return side == activeSide_ ? caret_.position : otherCaretPos_; }
  uint32_t anchor() const { return anchor_; }
  int32_t caretX() const;  // from the left of the text area
  int32_t caretY() const;
  bool hasSelection() const { return anchor_ != caret_.position; }
  uint32_t selectionBegin() const { return anchor_ < caret_.position ? anchor_ : caret_.position; }
  uint32_t selectionEnd() const { return anchor_ < caret_.position ? caret_.position : anchor_; }

  /// Moves the caret to a place, clamped to the rows and the row's text; inside a character to its start.
  /// Extending leaves the anchor, else it comes along. Does not scroll.
  void moveCaret(uint32_t row, uint32_t position, bool extend);

  /// Moves the caret to where `desiredX` falls in a row, which moving up and down keeps.
  void moveCaretVertically(uint32_t row, bool extend);

  /// Makes a side the active one. The caret stays in its row, at `desiredX`; the selection goes.
  void activate(int side);

  // Scrolling.

  uint32_t topRow() const { return topRow_; }
  uint32_t visibleRows() const { return visibleRows_; }  // whole ones, at least 1
  uint32_t maxTopRow() const { return rowCount() > visibleRows_ ? rowCount() - visibleRows_ : 0; }
  uint32_t hScroll(int side) const { return hScroll_[side]; }
  uint32_t visibleColumns(int side) const;  // whole ones, at least 1
  uint32_t maxHScroll(int side) const;

  /// Clamped to what there is to scroll to. Sideways both sides go together with syncScroll.
  void scrollTo(int64_t topRow);
  void scrollColumnsTo(int side, int64_t column);

  /// Scrolls no more than it takes to see the caret; sideways a quarter of the pane beyond.
  void showCaret();

  /// Scrolls a side sideways, by no more than it takes to see a position of a row.
  void showPosition(int side, uint32_t row, uint32_t position);

  /// Centres rows that are not well within view, as jumps do; the top row counts as not in view.
  void showRows(RowRange rows);

  /// Jumps to the start of the first of some rows, and brings them into view.
  void goToBlock(RowRange block);

  // Editing, which changes pair().

  /// Whether typing takes the place of the characters at the caret.
  bool overwrite() const { return overwrite_; }
  void toggleOverwrite();

  /// Puts caret and anchor at a place of a side, which becomes the active one, after texts or rows have
  /// changed; where that has made a position one inside a character, at its end.
  void placeCaret(int side, const CaretPlace& place);

  /// The row count or rows may be others: lays out the gutter, clamps the scrolling and takes in the widths
  /// of these rows.
  void rowsChanged(RowRange rows);

  /// What a side's rows are drawn from: in the panes, or elsewhere by another ruler and with other options.
  RowSource source(int side) const { return source(side, ruler_, options_); }
  RowSource source(int side, const LineRuler& ruler, const ViewOptions& options) const;
  RowWindow window(int side) const;

 private:
  /// What the scroll bars depend on.
  struct ScrollRanges {
    uint32_t rows = 0;
    uint32_t visibleRows = 0;
    uint32_t maxHScroll[2] = {0, 0};
    uint32_t visibleColumns[2] = {0, 0};
    bool operator==(const ScrollRanges&) const = default;
  };

  void layOut();
  void showX(int side, int64_t x);
  void setRuler(const FontMetrics& font);
  void measure(int side, RowRange rows);
  void remeasure();
  void setCaret(uint32_t row, const LinePlace& place, bool extend);
  uint32_t characterEnd(int side, uint32_t row, uint32_t position) const;
  LinePlace placeInRow(int side, uint32_t row, int64_t x) const;

  ViewHost& host_;
  ViewChanges changes_;
  EditedPair pair_;
  ViewOptions options_;
  CompareOptions compareOptions_;
  LineRuler ruler_;

  int32_t width_ = 0;
  int32_t height_ = 0;
  Split split_;
  PaneEdges panes_[2];
  int64_t widest_[2] = {0, 0};  // pixels that the longest line so far takes

  int activeSide_ = 0;
  uint32_t caretRow_ = 0;
  LinePlace caret_;
  uint32_t otherCaretPos_ = 0;
  uint32_t anchor_ = 0;
  int64_t desiredX_ = 0;
  bool overwrite_ = false;

  uint32_t topRow_ = 0;
  uint32_t visibleRows_ = 1;
  uint32_t hScroll_[2] = {0, 0};
  ScrollRanges scrollRanges_;
};

}  // namespace merivane
