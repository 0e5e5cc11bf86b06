#include "shell/win/compare_panes.h"

#include "base/win/dpi.h"
#include "base/win/messages.h"
#include "base/win/window.h"
#include "shell/win/controls.h"

namespace merivane {

ComparePanes::ComparePanes(TextViewOwner& owner, UndoHistory& history)
    : view(owner, history), summary(view), thumb(view) {}

bool ComparePanes::create(HWND window) {
  if (!view.create(window) || !summary.create(window) || !thumb.create(window)) return false;
  for (HWND& bar : scrollBars_) bar = createControl(window, "SCROLLBAR", SBS_HORZ, 0);
  // For screen readers, nowhere shown.
  const auto name = [](HWND control, TextId text) { SetWindowTextA(control, loadText(text).c_str()); };
  name(summary.handle(), TextId::summaryLabel);
  name(thumb.handle(), TextId::splitterLabel);
  name(scrollBars_[0], TextId::leftScrollLabel);
  name(scrollBars_[1], TextId::rightScrollLabel);
  return true;
}

void ComparePanes::layOut(const Area& area, bool showSummary, int dpi) {
  area_ = area;
  metrics_.verticalBarWidth = systemMetric(SM_CXVSCROLL, dpi);
  metrics_.horizontalBarHeight = systemMetric(SM_CYHSCROLL, dpi);
  metrics_.summaryWidth = showSummary ? scaled(28, dpi) : 0;
  showControl(summary.handle(), showSummary);
  const ViewLayout layout = layOutView(area_, metrics_);
  moveControl(summary.handle(), layout.summary);
  moveControl(view.handle(), layout.view);
  followSplit();
}

void ComparePanes::followSplit() {
  const ViewState& state = view.state();
  const SplitLayout layout = layOutSplit(area_, metrics_, state.pane(0).paneRight, state.pane(1).paneLeft);
  if (!(layout == layout_)) {
    layout_ = layout;
    for (const int side : {0, 1}) moveControl(scrollBars_[side], layout.scrollBar[side]);
    moveControl(thumb.handle(), layout.thumb);
  }
  for (const int side : {0, 1}) setScrollBar(side);
}

void ComparePanes::onHScroll(HWND bar, int request) {
  view.onHScroll(bar == scrollBars_[0] ? 0 : 1, bar, request);
}

void ComparePanes::setScrollBar(int side) {
  const ViewState& state = view.state();
  const uint32_t page = state.visibleColumns(side);
  // Of its own a control takes no part in this as long as it cannot be seen.
  EnableWindow(scrollBars_[side], state.maxHScroll(side) > 0);
  merivane::setScrollBar(scrollBars_[side], SB_CTL, static_cast<int>(state.maxHScroll(side) + page - 1), page,
                         static_cast<int>(state.hScroll(side)));
}

}  // namespace merivane
