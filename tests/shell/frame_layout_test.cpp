#include "shell/frame_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace merivane {
namespace {

constexpr FrameMetrics metricsOf(int32_t width, int32_t height) {
  return {width, height, 30, 22, 24, 4, 17, 17, 28};
}

bool overlap(const Area& a, const Area& b) {
  return a.left < b.right() && b.left < a.right() && a.top < b.bottom() && b.top < a.bottom();
}

std::vector<Area> allAreas(const ViewLayout& view, const SplitLayout& split) {
  std::vector<Area> areas = {view.view, view.summary, split.thumb};
  for (const int side : {0, 1}) {
    areas.insert(areas.end(),
                 {split.nameBox[side], split.browse[side], split.upOneFolder[side], split.scrollBar[side]});
  }
  return areas;
}

TEST(FrameLayout, NothingOverlapsOrLeavesTheWindow) {
  for (const int32_t width : {400, 640, 1280, 3840}) {
    for (const int32_t height : {240, 480, 2160}) {
      const FrameMetrics metrics = metricsOf(width, height);
      const int32_t viewWidth = width - metrics.summaryWidth - metrics.verticalBarWidth;
      for (const int32_t split : {100, viewWidth / 2, viewWidth - 100}) {
        const auto areas = allAreas(layOutView(metrics), layOutSplit(metrics, split - 10, split + 10));
        for (size_t i = 0; i < areas.size(); ++i) {
          SCOPED_TRACE(testing::Message() << width << "x" << height << " at " << split << ", area " << i);
          EXPECT_GE(areas[i].left, 0);
          EXPECT_GE(areas[i].top, metrics.toolBarHeight);
          EXPECT_LE(areas[i].right(), width);
          EXPECT_LE(areas[i].bottom(), height - metrics.statusBarHeight);
          for (size_t j = 0; j < i; ++j) EXPECT_FALSE(overlap(areas[i], areas[j])) << "with area " << j;
        }
      }
    }
  }
}

TEST(FrameLayout, BarsAndBoxesFollowThePanes) {
  const FrameMetrics metrics = metricsOf(1000, 700);
  const ViewLayout view = layOutView(metrics);
  const SplitLayout split = layOutSplit(metrics, 300, 320);
  EXPECT_EQ(view.view.left, 0) << "the splitter's x is the view's";
  EXPECT_EQ(view.view.right(), view.summary.left);
  EXPECT_EQ(view.view.height, view.summary.height) << "the bands stand beside the scroll bar's track";
  EXPECT_EQ(split.scrollBar[0].right(), 300);
  EXPECT_EQ(split.thumb, (Area{300, view.view.bottom(), 20, metrics.horizontalBarHeight}));
  EXPECT_EQ(split.scrollBar[1].left, 320);
  EXPECT_EQ(split.scrollBar[1].right(), view.view.right() - metrics.verticalBarWidth);
  EXPECT_EQ(split.upOneFolder[0].right(), 300);
  EXPECT_EQ(split.nameBox[1].left, 320);
}

TEST(FrameLayout, WhatIsHiddenTakesNoRoom) {
  FrameMetrics metrics = metricsOf(1000, 700);
  const Area with = layOutView(metrics).view;
  metrics.toolBarHeight = metrics.statusBarHeight = metrics.summaryWidth = 0;
  const Area without = layOutView(metrics).view;
  EXPECT_EQ(without.width, 1000);
  EXPECT_EQ(without.top, with.top - 30);
  EXPECT_EQ(without.bottom(), with.bottom() + 22);
}

}  // namespace
}  // namespace merivane
