#include "engine/diff_model.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

std::string randomPattern(std::mt19937& random) {
  std::string pattern(random() % 12, '=');
  for (char& c : pattern) c = "==<>!"[random() % 5];
  return pattern;
}

int64_t scanFromHint(const DiffModel& model, int side, uint32_t position, uint32_t hint) {
  const int64_t count = model.rowCount();
  if (count == 0) return -1;
  int64_t row = hint;
  if (model.position(side, hint) <= position) {
    while (row < count && model.position(side, static_cast<uint32_t>(row)) <= position) ++row;
    return row - 1;
  }
  for (--row; row >= 0; --row) {
    if (model.position(side, static_cast<uint32_t>(row)) <= position) return row;
  }
  return 0;
}

int64_t scanFromTop(const DiffModel& model, int side, uint32_t position) {
  if (model.rowCount() < 2) return int64_t{model.rowCount()} - 1;
  uint32_t passed = 0;
  while (passed + 1 < model.rowCount() && model.position(side, passed + 1) <= position &&
         model.position(side, passed) != position) {
    ++passed;
  }
  return passed;
}

TEST(DiffModel, FindsRowsByPositionAsPlainScansDo) {
  std::mt19937 random(2);
  for (int round = 0; round < 500; ++round) {
    const std::string pattern = randomPattern(random);
    DiffModel model = modelOf(pattern);
    const uint32_t shift = random() % 3;
    for (const int side : {0, 1}) {
      model.shiftPositions(side, 0, shift);  // a first row need not start at 0
      for (uint32_t position = 0; position < 2 + kPatternLine * pattern.size() + shift; ++position) {
        ASSERT_EQ(model.rowAtPositionFromTop(side, position), scanFromTop(model, side, position))
            << pattern << " side " << side << " position " << position;
        for (uint32_t hint = 0; hint == 0 || hint < model.rowCount(); ++hint) {
          ASSERT_EQ(model.rowAtPosition(side, position), scanFromHint(model, side, position, hint))
              << pattern << " side " << side << " position " << position << " hint " << hint;
        }
      }
    }
  }
}

TEST(DiffModel, ReplacesAndShiftsRowsAsAVectorDoes) {
  struct Row {
    RowStatus status;
    uint32_t position[2];
    uint32_t marks;  // how many, which tells rows apart
  };
  std::mt19937 random(3);
  uint32_t made = 0;
  const auto addRandomRow = [&](DiffModel& model, std::vector<Row>& rows) {
    ++made;
    rows.push_back({static_cast<RowStatus>(random() % 4), {1000 + made, 2000 + made}, made % 40});
    model.addRow(rows.back().status, 1000 + made, 2000 + made, RowMarks::allocate(made % 40, 1));
  };
  DiffModel model;
  std::vector<Row> rows;
  for (int round = 0; round < 1000; ++round) {
    const auto begin = static_cast<uint32_t>(random() % (rows.size() + 1));
    const auto end = begin + static_cast<uint32_t>(random() % (rows.size() - begin + 1));
    DiffModel replacement;
    std::vector<Row> fresh;
    for (auto left = random() % 8; left > 0; --left) addRandomRow(replacement, fresh);
    model.replaceRows({begin, end}, std::move(replacement));
    rows.erase(rows.begin() + begin, rows.begin() + end);
    rows.insert(rows.begin() + begin, fresh.begin(), fresh.end());

    const int side = static_cast<int>(random() % 2);
    const int delta = static_cast<int>(random() % 21) - 10;
    model.shiftPositions(side, begin, delta);
    for (size_t row = begin; row < rows.size(); ++row)
      rows[row].position[side] += static_cast<uint32_t>(delta);

    ASSERT_EQ(model.rowCount(), rows.size());
    for (uint32_t row = 0; row < rows.size(); ++row) {
      ASSERT_EQ(model.status(row), rows[row].status) << row;
      ASSERT_EQ(model.position(0, row), rows[row].position[0]) << row;
      ASSERT_EQ(model.position(1, row), rows[row].position[1]) << row;
      ASSERT_EQ(model.marks(row).side(0).size(), rows[row].marks) << row;
    }
  }
}

TEST(DiffModel, NumbersLinesOfEachSide) {
  const DiffModel model = modelOf("=<<>!=>");
  const uint32_t expected[2][7] = {{0, 1, 2, kNoLine, 3, 4, kNoLine}, {0, kNoLine, kNoLine, 1, 2, 3, 4}};
  for (const int side : {0, 1}) {
    for (uint32_t row = 0; row < 7; ++row) EXPECT_EQ(model.lineNumber(side, row), expected[side][row]) << row;
  }
}

TEST(DiffModel, CountsBlocksAndSumsThemUp) {
  const struct {
    const char* pattern;
    const char* summary;
  } cases[] = {
      {"", "No differences"},           {"==", "No differences"},     {"!", "Diffs: 1, Lines: 1"},
      {"<<>>", "Diffs: 2, Lines: 4"},   {"!<", "Diffs: 2, Lines: 2"}, {"=!!=!!=", "Diffs: 2, Lines: 4"},
      {">=<<!>", "Diffs: 4, Lines: 5"},
  };
  for (const auto& c : cases) EXPECT_EQ(summaryText(modelOf(c.pattern)), c.summary) << c.pattern;

  DiffModel model = modelOf("!=!");
  model.countDifferences();
  EXPECT_EQ(model.differenceBlocks(), 2u) << "counting again starts over";
  model.clear();
  EXPECT_EQ(summaryText(model), "No differences");
}

TEST(DiffModel, BlockAroundARowIsItsRun) {
  const DiffModel model = modelOf("==<<>!!!=");
  const RowRange runs[] = {{0, 2}, {2, 4}, {4, 5}, {5, 8}, {8, 9}};
  for (const RowRange& run : runs) {
    for (uint32_t row = run.begin; row < run.end; ++row) EXPECT_EQ(model.blockAround(row), run) << row;
  }
}

TEST(DiffModel, LineEndsAtTheNextRowOrTheTextsEnd) {
  const DiffModel model = modelOf("=>=");
  EXPECT_EQ(model.endPosition(0, 0, 3), 2u);
  EXPECT_EQ(model.endPosition(0, 1, 3), 2u);
  EXPECT_EQ(model.endPosition(0, 2, 3), 3u);
  EXPECT_EQ(model.endPosition(1, 1, 6), 4u);
}

TEST(RowMarks, KeepTheTwoSidesApart) {
  RowMarks marks = RowMarks::allocate(3, 0);
  EXPECT_EQ(marks.side(0).size(), 3u);
  EXPECT_TRUE(marks.side(1).empty());
  marks = RowMarks::allocate(2, 5);
  for (uint8_t& mark : marks.side(0)) mark = kDiffersMark;
  EXPECT_EQ(marks.side(1).size(), 5u);
  for (const uint8_t mark : marks.side(1)) EXPECT_EQ(mark, 0);
  RowMarks taken = std::move(marks);
  EXPECT_EQ(taken.side(0)[1], kDiffersMark);
  EXPECT_TRUE(marks.none());
  EXPECT_TRUE(marks.side(0).empty());
}

}  // namespace
}  // namespace merivane
