#include "shell/icon_drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace merivane {
namespace {

TEST(IconDrawing, EveryIconIsItsOwnPictureInEverySize) {
  for (const int size : {16, 24, 33}) {
    std::set<std::vector<uint32_t>> seen;
    for (int icon = 0; icon < kIconCount; ++icon) {
      SCOPED_TRACE(testing::Message() << "icon " << icon << " of size " << size);
      const auto pixels = drawIcon(static_cast<IconId>(icon), size);
      ASSERT_EQ(pixels.size(), static_cast<size_t>(size * size));
      EXPECT_TRUE(seen.insert(pixels).second) << "as another one";
      const auto covered =
          std::count_if(pixels.begin(), pixels.end(), [](uint32_t p) { return p >> 24 > 127; });
      EXPECT_GT(covered, size * size / 10);
      EXPECT_LT(covered, size * size * 9 / 10);
      for (const uint32_t pixel : pixels) {
        for (const int shift : {0, 8, 16}) {
          ASSERT_LE(pixel >> shift & 255, pixel >> 24) << "not multiplied by its alpha";
        }
      }
    }
  }
}

TEST(IconDrawing, AGreyedIconHasTheShapeWithoutTheColour) {
  const auto coloured = drawIcon(IconId::save, 24);
  const auto greyed = drawIcon(IconId::save, 24, true);
  for (size_t i = 0; i < greyed.size(); ++i) {
    EXPECT_EQ(greyed[i] >> 24, coloured[i] >> 24);
    EXPECT_EQ(greyed[i] & 255, greyed[i] >> 16 & 255);
  }
}

}  // namespace
}  // namespace merivane
