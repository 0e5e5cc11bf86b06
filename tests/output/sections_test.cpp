#include "output/sections.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

std::vector<RowRange> sectionsOf(const DiffModel& model, ExportScope scope) {
  std::vector<RowRange> sections;
  forEachSection(model, scope, [&](RowRange rows) { sections.push_back(rows); });
  return sections;
}

std::string written(const std::vector<RowRange>& sections) {
  std::string result;
  for (const RowRange& rows : sections) {
    result += (result.empty() ? "" : " ") + std::to_string(rows.begin) + "-" + std::to_string(rows.end);
  }
  return result;
}

TEST(Sections, EdgesOfEachScope) {
  struct Case {
    const char* pattern;
    const char* context;
    const char* differences;
  };
  const Case cases[] = {
      {"=", "", ""},
      {"=============", "", ""},
      {"!", "0-1", "0-1"},
      {"=====!=====", "0-11", "5-6"},
      {"======!======", "3-10", "6-7"},
      {"=========!", "6-10", "9-10"},
      {"!=========", "0-4", "0-1"},
      {"!=====!", "0-7", "0-1 6-7"},
      {"!======!", "0-4 4-8", "0-1 7-8"},
      {"!=======!", "0-4 5-9", "0-1 8-9"},
      {"=<<>>!!=", "0-8", "1-3 3-5 5-7"},
      {"======<=>======!======", "3-12 12-19", "6-7 8-9 15-16"},
  };
  for (const Case& c : cases) {
    const DiffModel model = modelOf(c.pattern);
    EXPECT_EQ(written(sectionsOf(model, ExportScope::context)), c.context) << c.pattern;
    EXPECT_EQ(written(sectionsOf(model, ExportScope::differences)), c.differences) << c.pattern;
    EXPECT_EQ(sectionsOf(model, ExportScope::everything), (std::vector<RowRange>{{0, model.rowCount()}}));
  }
}

/// Whether a context export shows a row: it lies near a difference, or in a run too short to be cut.
bool inContext(const DiffModel& model, uint32_t row) {
  if (model.differingRows() == 0) return false;
  const RowRange run = model.blockAround(row);
  if (model.status(row) != RowStatus::same || run.size() < 6) return true;
  return (run.begin > 0 && row < run.begin + 3) || (run.end < model.rowCount() && row + 3 >= run.end);
}

TEST(Sections, OfRandomModelsShowWhatTheyShould) {
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    std::string pattern;
    while (pattern.size() < random() % 60) pattern += std::string(random() % 9, "==<>!"[random() % 5]);
    const DiffModel model = modelOf(pattern);

    std::string shown(pattern.size(), '.');
    uint32_t end = 0;
    for (const RowRange& rows : sectionsOf(model, ExportScope::context)) {
      ASSERT_LE(end, rows.begin) << pattern;
      end = rows.end;
      ASSERT_LE(end, model.rowCount()) << pattern;
      const std::string section = pattern.substr(rows.begin, rows.size());
      ASSERT_NE(section.find_first_not_of('='), std::string::npos) << pattern;
      ASSERT_EQ(section.find("======"), std::string::npos) << pattern;
      shown.replace(rows.begin, rows.size(), section);
    }
    std::string expected = pattern;
    for (uint32_t row = 0; row < model.rowCount(); ++row) {
      if (!inContext(model, row)) expected[row] = '.';
    }
    ASSERT_EQ(shown, expected) << pattern;

    const auto blocks = sectionsOf(model, ExportScope::differences);
    ASSERT_EQ(blocks.size(), model.differenceBlocks()) << pattern;
    uint32_t rowsInBlocks = 0;
    for (const RowRange& rows : blocks) {
      ASSERT_EQ(rows, model.blockAround(rows.begin)) << pattern;
      ASSERT_NE(pattern[rows.begin], '=') << pattern;
      rowsInBlocks += rows.size();
    }
    ASSERT_EQ(rowsInBlocks, model.differingRows()) << pattern;
  }
}

}  // namespace
}  // namespace merivane
