#include "mergeview/diff_arrows.h"

#include <gtest/gtest.h>

#include <string_view>

namespace merivane {
namespace {

/// A model with a row for each character: '.' same, '<' left only, '>' right only, '!' changed.
DiffModel modelOf(std::string_view rows) {
  DiffModel model;
  for (const char row : rows) {
    const RowStatus status = row == '<'   ? RowStatus::leftOnly
                             : row == '>' ? RowStatus::rightOnly
                             : row == '!' ? RowStatus::changed
                                          : RowStatus::same;
    model.addRow(status, 0, 0);
  }
  return model;
}

constexpr GapWindow gap = {100, 120, 100, 10, 0};

TEST(DiffArrows, PointFromTheSideThatHasTheLines) {
  const RowColours colours;
  const auto arrows = diffArrows(modelOf(".<<>.!!."), colours, gap);
  ASSERT_EQ(arrows.size(), 3u);
  EXPECT_EQ(arrows[0].corners,
            (std::vector<GapPoint>{{100, 10}, {110, 10}, {120, 20}, {110, 30}, {100, 30}}));
  EXPECT_EQ(arrows[0].colour, colours.left);
  EXPECT_EQ(arrows[1].corners,
            (std::vector<GapPoint>{{120, 30}, {110, 30}, {100, 35}, {110, 40}, {120, 40}}));
  EXPECT_EQ(arrows[1].colour, colours.right);
  EXPECT_EQ(arrows[2].corners, (std::vector<GapPoint>{{100, 50}, {120, 50}, {120, 70}, {100, 70}}));
  EXPECT_EQ(arrows[2].colour, colours.changed);
}

TEST(DiffArrows, ReachBeyondTheView) {
  // The view shows rows 5 to 14 of a difference in rows 2 to 21.
  GapWindow window = gap;
  window.topRow = 5;
  const auto arrows = diffArrows(modelOf("..<<<<<<<<<<<<<<<<<<<<..<"), {}, window);
  ASSERT_EQ(arrows.size(), 1u) << "the last one is not in view";
  EXPECT_EQ(arrows[0].corners[0], (GapPoint{100, -30}));
  EXPECT_EQ(arrows[0].corners[2], (GapPoint{120, 70}));
  EXPECT_EQ(arrows[0].corners[4], (GapPoint{100, 170}));

  window.topRow = 200000;
  const auto distant = diffArrows(modelOf(std::string(500000, '<')), {}, window);
  ASSERT_EQ(distant.size(), 1u);
  EXPECT_LT(distant[0].corners[0].y, -5000) << "its ends are far off, and in pixels that can be drawn";
  EXPECT_GT(distant[0].corners[0].y, -100000);
}

TEST(DiffArrows, AreNotDrawnWhenTurnedOff) {
  RowColours colours;
  colours.drawArrows = false;
  EXPECT_TRUE(diffArrows(modelOf("<!>"), colours, gap).empty());
}

}  // namespace
}  // namespace merivane
