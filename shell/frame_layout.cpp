#include "shell/frame_layout.h"

#include <algorithm>

namespace merivane {
namespace {

int32_t boxesHeight(const FrameMetrics& metrics) { return metrics.nameBoxHeight + 2 * metrics.margin; }

int32_t viewWidth(const FrameMetrics& metrics) { return std::max(0, metrics.width - metrics.summaryWidth); }

int32_t viewTop(const FrameMetrics& metrics) { return metrics.toolBarHeight + boxesHeight(metrics); }

int32_t viewBottom(const FrameMetrics& metrics) {
  return std::max(viewTop(metrics), metrics.height - metrics.statusBarHeight - metrics.horizontalBarHeight);
}

}  // namespace

ViewLayout layOutView(const FrameMetrics& metrics) {
  const int32_t top = viewTop(metrics);
  const int32_t height = viewBottom(metrics) - top;
  const int32_t width = viewWidth(metrics);
  return {{0, top, width, height}, {width, top, metrics.summaryWidth, height}};
}

SplitLayout layOutSplit(const FrameMetrics& metrics, int32_t leftPaneEnd, int32_t rightPaneStart) {
  SplitLayout layout;
  const int32_t margin = metrics.margin;
  const int32_t button = metrics.nameBoxHeight;  // the buttons are square
  const int32_t boxTop = metrics.toolBarHeight + margin;
  const int32_t starts[2] = {margin, rightPaneStart};
  const int32_t ends[2] = {leftPaneEnd, metrics.width - margin};
  for (const int side : {0, 1}) {
    const int32_t up = ends[side] - button;
    const int32_t browse = up - button - margin / 2;
    layout.upOneFolder[side] = {up, boxTop, button, button};
    layout.browse[side] = {browse, boxTop, button, button};
    layout.nameBox[side] = {starts[side], boxTop, std::max(0, browse - margin - starts[side]), button};
  }

  const int32_t barTop = viewBottom(metrics);
  const int32_t barHeight = metrics.horizontalBarHeight;
  const int32_t panesEnd = std::max(rightPaneStart, viewWidth(metrics) - metrics.verticalBarWidth);
  layout.scrollBar[0] = {0, barTop, std::max(0, leftPaneEnd), barHeight};
  layout.thumb = {leftPaneEnd, barTop, rightPaneStart - leftPaneEnd, barHeight};
  layout.scrollBar[1] = {rightPaneStart, barTop, panesEnd - rightPaneStart, barHeight};
  return layout;
}

std::array<int32_t, 4> statusPartEdges(int32_t width, int32_t resolution) {
  const auto fromRight = [&](int32_t pixels) { return width - pixels * resolution / 96; };
  return {fromRight(375), fromRight(215), fromRight(140), width};
}

}  // namespace merivane
