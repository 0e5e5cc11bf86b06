#include "shell/frame_layout.h"

#include <algorithm>

namespace merivane {

Area layOutContents(const FrameMetrics& metrics) {
  const int32_t top = metrics.toolBarHeight + metrics.nameBoxHeight + 2 * metrics.margin;
  return {0, top, metrics.width, std::max(0, metrics.height - metrics.statusBarHeight - top)};
}

NameRowLayout layOutNames(const FrameMetrics& metrics, int32_t leftEnd, int32_t rightStart) {
  NameRowLayout layout;
  const int32_t margin = metrics.margin;
  const int32_t button = metrics.nameBoxHeight;  // the buttons are square
  const int32_t top = metrics.toolBarHeight + margin;
  const int32_t starts[2] = {margin, rightStart};
  const int32_t ends[2] = {leftEnd, metrics.width - margin};
  for (const int side : {0, 1}) {
    const int32_t up = ends[side] - button;
    const int32_t browse = up - button - margin / 2;
    layout.upOneFolder[side] = {up, top, button, button};
    layout.browse[side] = {browse, top, button, button};
    layout.nameBox[side] = {starts[side], top, std::max(0, browse - margin - starts[side]), button};
  }
  return layout;
}

ViewLayout layOutView(const Area& contents, const PaneMetrics& metrics) {
  const int32_t height = std::max(0, contents.height - metrics.horizontalBarHeight);
  const int32_t width = std::max(0, contents.width - metrics.summaryWidth);
  return {{contents.left, contents.top, width, height},
          {contents.left + width, contents.top, metrics.summaryWidth, height}};
}

SplitLayout layOutSplit(const Area& contents, const PaneMetrics& metrics, int32_t leftPaneEnd,
                        int32_t rightPaneStart) {
  const Area view = layOutView(contents, metrics).view;
  const int32_t top = view.bottom();
  const int32_t height = metrics.horizontalBarHeight;
  const int32_t panesEnd = std::max(rightPaneStart, view.right() - metrics.verticalBarWidth);
  SplitLayout layout;
  layout.scrollBar[0] = {view.left, top, std::max(0, leftPaneEnd - view.left), height};
  layout.thumb = {leftPaneEnd, top, rightPaneStart - leftPaneEnd, height};
  layout.scrollBar[1] = {rightPaneStart, top, panesEnd - rightPaneStart, height};
  return layout;
}

std::array<int32_t, 4> statusPartEdges(int32_t width, int32_t resolution) {
  const auto fromRight = [&](int32_t pixels) { return width - pixels * resolution / 96; };
  // The longest texts fit where room is left for the help text; line ends with encodings are those.
  const bool roomy = width >= 640 * resolution / 96;
  const bool wide = width >= 800 * resolution / 96;
  const int32_t differences = 140, lineEnds = wide ? 195 : roomy ? 140 : 75, caret = roomy ? 200 : 160;
  return {fromRight(differences + lineEnds + caret), fromRight(differences + lineEnds),
          fromRight(differences), width};
}

std::array<int32_t, 4> folderStatusPartEdges(int32_t width, int32_t resolution) {
  const auto fromRight = [&](int32_t pixels) { return width - pixels * resolution / 96; };
  const bool roomy = width >= 640 * resolution / 96;
  return {fromRight(roomy ? 490 : 300), fromRight(roomy ? 310 : 130), fromRight(roomy ? 170 : 65), width};
}

std::array<int32_t, 4> withoutEmptyParts(const std::array<int32_t, 4>& edges, unsigned empty) {
  std::array<int32_t, 4> result = edges;
  for (size_t part = edges.size() - 1; part > 0; --part) {
    const int32_t room = (empty >> part & 1) != 0 ? 0 : edges[part] - edges[part - 1];
    result[part - 1] = std::max(0, result[part] - room);
  }
  return result;
}

}  // namespace merivane
