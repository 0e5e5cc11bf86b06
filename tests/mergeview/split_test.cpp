#include "mergeview/split.h"

#include <gtest/gtest.h>

namespace merivane {
namespace {

TEST(Split, KeepsItsShareAndItsDistanceFromTheSides) {
  Split split;
  split.recompute(1000);
  EXPECT_EQ(split.splitX(), 500);
  split.setFromX(300, 1000);
  EXPECT_EQ(split.splitX(), 300);
  split.recompute(2000);
  EXPECT_EQ(split.splitX(), 601);  // the middle of pixel 300 of 1000
  split.setFromX(-50, 1000);
  EXPECT_EQ(split.splitX(), 100);
  split.setFromX(5000, 1000);
  EXPECT_EQ(split.splitX(), 900);
  EXPECT_FLOAT_EQ(split.splitFraction(), 0.9005f);
  split.centre(1000);
  EXPECT_EQ(split.splitX(), 500);
  split.recompute(150);
  EXPECT_EQ(split.splitX(), 100) << "the left limit wins";
  EXPECT_FLOAT_EQ(split.splitFraction(), 100.5f / 150);
  for (int32_t x = 100; x <= 900; ++x) {
    split.setFromX(x, 1000);
    ASSERT_EQ(split.splitX(), x);
  }
}

TEST(Split, PanesLeaveRoomForSplitterAndGutter) {
  FontMetrics font;
  font.digitWidth = 7;
  EXPECT_EQ(gutterWidth(LineNumbers::none, 1000, font), 8);
  EXPECT_EQ(gutterWidth(LineNumbers::rows, 0, font), 12);
  EXPECT_EQ(gutterWidth(LineNumbers::rows, 999, font), 3 * 7 + 12);
  EXPECT_EQ(gutterWidth(LineNumbers::lines, 1000, font), 4 * 7 + 12);
  EXPECT_EQ(paneEdges(0, 500, 1000, 33, font), (PaneEdges{0, 33, 490}));
  EXPECT_EQ(paneEdges(1, 500, 1000, 33, font), (PaneEdges{510, 543, 1000}));
  font.resolutionX = 144;
  EXPECT_EQ(gutterWidth(LineNumbers::rows, 9, font), 7 + 18);
  EXPECT_EQ(paneEdges(1, 500, 1000, 8, font), (PaneEdges{515, 523, 1000}));
}

}  // namespace
}  // namespace merivane
