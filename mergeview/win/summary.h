#pragma once

#include <windows.h>

#include "base/win/window.h"
#include "mergeview/summary_map.h"
#include "mergeview/win/text_view.h"

namespace merivane {

/// The summary bar: the whole comparison as coloured bands beside the text view's scroll bar, with a frame
/// around where the caret is. A left click or drag goes to that row, a right click to the nearest difference.
class Summary final : public Window {
 public:
  /// `view` is what it shows and steers; it must outlive the bar.
  explicit Summary(TextView& view) : view_(view) {}
  ~Summary() override;

  bool create(HWND parent);

  /// Without anything to show, as before the first comparison, the bar is plain.
  void setBlank(bool blank);

  /// Rows, colours or their scale are others.
  void redraw();

  /// Only the frame around the caret's row moves.
  void moveCaretMarker();

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void onPaint();
  void onLeftButtonDown(int y);
  void onMouseMove(int y);
  void onLeftButtonUp();
  void onRightButtonDown(int y);

  SummaryMap::Geometry geometry() const;
  bool isPlain() const { return blank_ || map_.mapHeight() <= 0; }
  RECT markerArea() const;
  void paintBands(HDC dc, const RECT& area, std::span<const SummaryLine> lines) const;
  void paintMarker(HDC dc, std::span<const SummaryLine> lines) const;

  const ViewState& state() const { return view_.state(); }
  void goToBlock(RowRange rows);

  TextView& view_;
  SummaryMap map_;
  RECT marker_ = {};  // where the frame was painted
  bool blank_ = true;
  bool dragging_ = false;
};

}  // namespace merivane
