#include "engine/diff_model.h"

#include <gtest/gtest.h>

#include "tests/support/random.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

TEST(DiffModel, FindsRowsByPositionAsPlainScansDo) {
  EXPECT_EQ(DiffModel().rowAtPosition(0, 0), -1);
  Random random(2);
  for (int round = 0; round < 500; ++round) {
    DiffModel model = modelOf(random.text("==<>!", 12));
    // A first row need not start at 0, and an edit may have been anywhere.
    const uint32_t shift = random.below(3), count = model.rowCount();
    for (const int side : {0, 1}) {
      model.shiftPositions(side, 0, shift);
      model.shiftPositions(side, random.below(count + 1), 0);
      for (uint32_t position = 0; position < 2 + 2 * count + shift; ++position) {
        int64_t last = int64_t{count} - 1;
        while (last > 0 && model.position(side, static_cast<uint32_t>(last)) > position) --last;
        ASSERT_EQ(model.rowAtPosition(side, position), last) << patternOf(model) << position;
        int64_t first = last;
        for (uint32_t row = count; row-- > 0;) first = model.position(side, row) == position ? row : first;
        ASSERT_EQ(model.rowAtPositionFromTop(side, position), first) << patternOf(model) << position;
      }
    }
  }
}

TEST(DiffModel, ARowTakesNoMoreRoomThanItsFields) {
  EXPECT_LE(sizeof(DiffRow), sizeof(void*) == 8 ? 32u : 24u);
}

}  // namespace
}  // namespace merivane
