#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "engine/diff_model.h"

namespace merivane {
namespace {

struct PlainRow {
  RowStatus status;
  uint32_t position[2];
  uint32_t markedLength;  // of the left marks; 0 without marks
};

/// The same rows in a plain array, renumbered and recounted from the start after every edit.
struct PlainModel {
  std::vector<PlainRow> rows;

  void expectEqual(const DiffModel& model) const {
    ASSERT_EQ(model.rowCount(), rows.size());
    uint32_t next[2] = {0, 0};
    uint32_t blocks = 0, differing = 0;
    RowStatus previous = RowStatus::same;
    for (uint32_t row = 0; row < model.rowCount(); ++row) {
      const PlainRow& expected = rows[row];
      ASSERT_EQ(model.status(row), expected.status) << row;
      ASSERT_EQ(model.marks(row).side(0).size(), expected.markedLength) << row;
      for (const int side : {0, 1}) {
        ASSERT_EQ(model.position(side, row), expected.position[side]) << row;
        const bool filler = fillerSide(expected.status) == side;
        ASSERT_EQ(model.lineNumber(side, row), filler ? kNoLine : next[side]++) << row;
      }
      if (expected.status != RowStatus::same) {
        ++differing;
        if (expected.status != previous) ++blocks;
      }
      previous = expected.status;
    }
    ASSERT_EQ(model.differenceBlocks(), blocks);
    ASSERT_EQ(model.differingRows(), differing);
  }

  int64_t rowAt(int side, uint32_t position) const {
    int64_t row = static_cast<int64_t>(rows.size()) - 1;
    while (row > 0 && rows[static_cast<size_t>(row)].position[side] > position) --row;
    return row;
  }
};

class Random {
 public:
  uint32_t below(uint32_t limit) { return engine_() % limit; }

  /// Rows whose lines run on from these positions; both stand behind the last line then.
  DiffModel rows(uint32_t count, uint32_t (&position)[2], std::vector<PlainRow>& plain) {
    DiffModel model;
    for (uint32_t i = 0; i < count; ++i) {
      const auto status = static_cast<RowStatus>(below(3) == 0 ? below(4) : 0);
      const uint32_t marked = status == RowStatus::changed ? below(5) : 0;
      plain.push_back({status, {position[0], position[1]}, marked});
      model.addRow(status, position[0], position[1],
                   marked == 0 ? RowMarks() : RowMarks::allocate(marked, 1));
      for (const int side : {0, 1}) {
        if (fillerSide(status) != side) position[side] += 1 + below(9);
      }
    }
    return model;
  }

 private:
  std::mt19937 engine_{7};
};

TEST(DiffModelEdits, EqualAPlainArrayRedoneAfterEveryEdit) {
  Random random;
  PlainModel plain;
  uint32_t end[2] = {0, 0};
  DiffModel model = random.rows(200, end, plain.rows);
  model.numberLines();
  model.countDifferences();
  for (int step = 0; step < 3000; ++step) {
    const uint32_t count = model.rowCount();
    const uint32_t begin = random.below(count + 1);
    const RowRange range{begin, begin + std::min(random.below(12), count - begin)};
    uint32_t position[2];
    uint32_t old[2];
    for (const int side : {0, 1}) {
      position[side] = begin < count ? model.position(side, begin) : end[side];
      old[side] = model.endPosition(side, range.end == 0 ? count : range.end - 1, end[side]);
      if (range.empty()) old[side] = position[side];
    }
    std::vector<PlainRow> fresh;
    DiffModel replacement = random.rows(random.below(count > 400 ? 6 : 13), position, fresh);
    if (random.below(2) == 0) replacement.shiftPositions(0, 0, 0);
    for (const int side : {0, 1}) {
      const int64_t delta = int64_t{position[side]} - old[side];
      model.shiftPositions(side, range.end, delta);
      for (size_t row = range.end; row < plain.rows.size(); ++row) {
        plain.rows[row].position[side] = static_cast<uint32_t>(plain.rows[row].position[side] + delta);
      }
      end[side] = static_cast<uint32_t>(end[side] + delta);
    }
    model.replaceRows(range, std::move(replacement));
    EXPECT_EQ(replacement.rowCount(), 0u);
    plain.rows.erase(plain.rows.begin() + range.begin, plain.rows.begin() + range.end);
    plain.rows.insert(plain.rows.begin() + range.begin, fresh.begin(), fresh.end());
    ASSERT_NO_FATAL_FAILURE(plain.expectEqual(model)) << "step " << step;
    for (const int side : {0, 1}) {
      const uint32_t anywhere = random.below(end[side] + 2);
      ASSERT_EQ(model.rowAtPosition(side, anywhere), plain.rowAt(side, anywhere));
    }
  }
  // Appending goes on behind an edit in the middle.
  if (model.rowCount() > 2) model.shiftPositions(0, 1, 0);
  model.addRow(RowStatus::leftOnly, end[0], end[1]);
  model.numberLines();
  model.countDifferences();
  plain.rows.push_back({RowStatus::leftOnly, {end[0], end[1]}, 0});
  plain.expectEqual(model);
}

TEST(DiffModelEdits, ARowTakesNoMoreRoomThanItsFields) {
  EXPECT_LE(sizeof(DiffRow), sizeof(void*) == 8 ? 32u : 24u);
}

}  // namespace
}  // namespace merivane
