#include "engine/comparison.h"

#include <gtest/gtest.h>

#include "engine/row_builder.h"
#include "tests/support/comparison_oracle.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/memory_files.h"
#include "tests/support/random.h"
#include "tests/support/reference_diff.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

TEST(Comparison, RowsRebuildBothTextsAndDifferWhereTheReferenceDoes) {
  Random random(5);
  for (int i = 0; i < 1500; ++i) {
    const std::string alphabet = i % 2 == 0 ? "\n\n\naAb  \t\r\xe4" : "\naaaaabbb c";
    std::string left = random.text(alphabet, 60), right = random.text(alphabet, 60);
    // Most pairs have a start and an end in common, some have an empty side.
    if (random.below(4) != 0) right = left.substr(0, left.size() / 2) + right + left.substr(left.size() / 2);
    if (random.below(20) == 0) left.clear();
    for (uint32_t bits = 0; bits < 64; ++bits) {
      const CompareOptions options{(bits & 16) != 0, bits & 15, (bits & 32) == 0};
      SCOPED_TRACE(testing::PrintToString(left) + testing::PrintToString(right) + std::to_string(bits));
      DiffModel model;
      ASSERT_EQ(compareTexts(left, right, options, nullptr, model), Result::success);
      ASSERT_EQ(comparisonFault(model, left, right, options), "");
      const LineTable tables[2] = {tableLines(left, options), tableLines(right, options)};
      const ReferenceDiff<uint32_t> reference(tables[0].keys, tables[1].keys);
      for (const int side : {0, 1}) {
        std::vector<uint8_t> changed;
        for (uint32_t row = 0; row < model.rowCount(); ++row) {
          if (fillerSide(model.status(row)) != side) changed.push_back(model.status(row) != RowStatus::same);
        }
        changed.resize(tables[side].keys.size() + 1, 0);
        ASSERT_EQ(changed, reference.changed[side]);
      }
    }
  }
}

TEST(Comparison, RowsOfAHunkAreInOrder) {
  const CompareOptions noChanges{false, 0, false};
  const struct {
    std::string left, right, statuses;
    CompareOptions options;
  } cases[] = {
      {"", "", "=", {}},
      {"", "a\nb", ">>", {}},
      {"a\nb\nc\n", "b\n", "<=<", {}},
      {"a\nb", "a\nb\n", "=!", {}},
      // As many lines on both: paired up to the first that are not alike.
      {"x\nhello\ny\n", "x\nthing\ny\n", "=<>=", {}},
      {"line 1\nabcdef\nline 2\nz\n", "line 3\nuvwxyz\nline 4\nz\n", "!<<>>=", {}},
      {"line 1\nline 2\n", "line 3\nline 4\n", "<<>>", noChanges},
      // More on one: the longer side first, however alike.
      {"line 1\nline 2\n", "line 3\n", "<<>", {}},
      {"line 1\nz\n", "line 3\nline 4\nz\n", ">><=", {}},
  };
  for (const auto& c : cases) {
    DiffModel model;
    ASSERT_EQ(compareTexts(c.left, c.right, c.options, nullptr, model), Result::success);
    EXPECT_EQ(patternOf(model), c.statuses) << c.left << "----\n" << c.right;
  }
}

constexpr std::string_view sampleLeft = "same\nthe line\nb\nonly here\n", sampleRight = "same\nthe lime\nc\n";

TEST(Comparison, LeavesTheModelWhenMemoryRunsOutOrItIsStopped) {
  DiffModel model;
  for (const CompareOptions& options : {CompareOptions(), CompareOptions{true, kIgnoreBlanksAtStart}}) {
    failEachAllocation([&] { model = modelOf("<><"); },
                       [&] { return compareTexts(sampleLeft, sampleRight, options, nullptr, model); },
                       [&](Result result) {
                         // Only marks can be done without.
                         if (result == Result::success) {
                           EXPECT_EQ(comparisonFault(model, sampleLeft, sampleRight, options), "");
                         } else {
                           EXPECT_EQ(result, Result::outOfMemory);
                           EXPECT_EQ(patternOf(model), "<><");
                         }
                       });
  }
  AbortFlag abort;
  abort.raise();
  for (const std::string_view right : {sampleLeft, sampleRight, std::string_view()}) {
    model = modelOf("<><");
    EXPECT_EQ(compareTexts(sampleLeft, right, {}, &abort, model), Result::cancelled);
    EXPECT_EQ(patternOf(model), "<><");

    // As when asked after the search.
    const LineTable tables[2] = {tableLines(sampleLeft, {}), tableLines(right, {})};
    EditScript script;
    ASSERT_TRUE(findEditScript(std::span(tables[0].keys), std::span(tables[1].keys), nullptr, script));
    const std::vector<uint32_t> starts[2] = {tables[0].starts, tables[1].starts};
    EXPECT_FALSE(buildRows({sampleLeft, right}, starts, script, {}, &abort, model));
  }
}

TEST(Comparison, OfFilesLeavesOneEmptyRowOnFailure) {
  MemoryFiles files;
  files.files["left"].contents = sampleLeft;
  files.files["right"].contents = sampleRight;
  FileComparison comparison;
  const auto compare = [&] { return compareFiles(files, {"left", "right"}, {}, nullptr, comparison).result; };
  const auto checkFailure = [&](Result result) {
    if (result == Result::success) {
      EXPECT_EQ(comparisonFault(comparison.model, sampleLeft, sampleRight, {}), "");
      return;
    }
    // A text that finds no room is a file that cannot be loaded.
    EXPECT_TRUE(result == Result::outOfMemory || result == Result::leftUnreadable ||
                result == Result::rightUnreadable);
    EXPECT_EQ(comparisonFault(comparison.model, "", "", {}), "");
    for (const TextDocument& document : comparison.documents) EXPECT_EQ(document.text.size(), 0u);
  };
  EXPECT_EQ(compare(), Result::success);
  failEachStep(files, MemoryFiles::denied, compare, checkFailure);
  // Where there is no memory for an empty row, all stays as it was.
  failEachAllocation([&] { comparison = {{}, modelOf("=")}; }, compare, checkFailure);
  EXPECT_EQ(comparisonFault(comparison.model, sampleLeft, sampleRight, {}), "");
}

}  // namespace
}  // namespace merivane
