#pragma once

#include <cstdint>

#include "mergeview/view_state.h"

namespace merivane {

/// A place in a side's text, by the row it shows in.
struct TextPlace {
  uint32_t row = 0;
  uint32_t position = 0;
};

/// The side of the split that a point of the client area lies on.
int sideAt(const ViewState& view, int32_t x);

/// The place of a side nearest to a point, and the one before the character under it. The point may lie
/// outside the pane: beside it in the nearest column, above and below in rows that are out of view.
TextPlace placeAt(const ViewState& view, int side, int32_t x, int32_t y);
TextPlace characterAt(const ViewState& view, int side, int32_t x, int32_t y);

/// Turns clicks and drags into caret and selection. One click selects by characters, two by words and three
/// by lines, and a drag goes on in the same way from what was clicked.
class MouseSelection {
 public:
  explicit MouseSelection(ViewState& view) : view_(view) {}

  /// The button went down the `clicks`-th time in the same place. Makes the side under it active. With Shift
  /// the selection reaches from its anchor to there, if that side was active before.
  void press(int32_t x, int32_t y, int clicks, bool shift);

  /// The mouse moved with the button down, or stayed outside the pane for another tick of the timer: every
  /// call then scrolls on.
  void drag(int32_t x, int32_t y);

 private:
  /// What one click takes; begin and end are the same place for characters.
  struct Unit {
    TextPlace begin;
    TextPlace end;
  };

  Unit unitAt(int32_t x, int32_t y) const;
  void select(const Unit& target);

  ViewState& view_;
  int clicks_ = 1;
  Unit origin_;
};

}  // namespace merivane
