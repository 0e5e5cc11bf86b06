#include "engine/comparison.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <numeric>

#include "engine/line_keys.h"
#include "engine/row_builder.h"
#include "tests/support/comparison_oracle.h"
#include "tests/support/corpus.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/memory_files.h"
#include "tests/support/random.h"
#include "tests/support/reference_diff.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

/// The lines of both sides that are not the same: a changed row has two.
size_t differingLines(const DiffModel& model) {
  size_t lines = 0;
  for (const char status : patternOf(model)) lines += status == '=' ? 0 : status == '!' ? 2 : 1;
  return lines;
}

CompareOptions optionsOf(uint32_t bits) { return {(bits & 16) != 0, bits & 15, (bits & 32) == 0}; }

TEST(Comparison, RowsRebuildBothTexts) {
  constexpr int rounds = 1500;
  Random random(5);
  for (int i = 0; i < rounds; ++i) {
    const std::string alphabet = i % 2 == 0 ? "\n\n\naAb  \t\r\xe4" : "\naaaaabbb c";
    std::string left = random.text(alphabet, 60), right = random.text(alphabet, 60);
    // Most pairs have a start and an end in common, some have an empty side.
    if (random.below(4) != 0) right = left.substr(0, left.size() / 2) + right + left.substr(left.size() / 2);
    if (random.below(20) == 0) left.clear();
    for (uint32_t bits = 0; bits < 64; ++bits) {
      const CompareOptions options = optionsOf(bits);
      DiffModel model;
      ASSERT_EQ(compareTexts(left, right, options, nullptr, model), Result::success);
      const std::string input = testing::PrintToString(left) + testing::PrintToString(right);
      ASSERT_EQ(comparisonFault(model, left, right, options), "") << input << " options " << bits;
      const std::vector<uint32_t> keys[2] = {tableLines(left, options).keys, tableLines(right, options).keys};
      size_t flags = 0;
      for (const auto& changed : ReferenceDiff<uint32_t>(keys[0], keys[1]).changed) {
        flags += std::accumulate(changed.begin(), changed.end(), size_t{0});
      }
      ASSERT_EQ(differingLines(model), flags) << input << " options " << bits;
    }
  }
}

TEST(Comparison, RowsOfAHunkAreInOrder) {
  struct Case {
    std::string left, right, statuses;
    CompareOptions options;
  };
  const CompareOptions noChanges{false, 0, false};
  const Case cases[] = {
      {"", "", "=", {}},
      {"a\nb", "a\nb", "==", {}},
      {"a\nb\n", "", "<<", {}},
      {"", "a\nb", ">>", {}},
      {"a\nc\n", "a\nb\nc\n", "=>=", {}},
      {"a\nb\nc\n", "b\n", "<=<", {}},
      // One line a side.
      {"hello\n", "hallo\n", "!", {}},
      {"hello\n", "hallo\n", "<>", noChanges},
      {"x\nhello\ny\n", "x\nthing\ny\n", "=<>=", {}},
      {"a\nb", "a\nb\n", "=!", {}},
      // As many lines on both: paired up to the first that are not alike.
      {"line 1\nline 2\n", "line 3\nline 4\n", "!!", {}},
      {"line 1\nabcdef\nline 2\nz\n", "line 3\nuvwxyz\nline 4\nz\n", "!<<>>=", {}},
      {"abcdef\nline 2\n", "uvwxyz\nline 4\n", "<<>>", {}},
      {"line 1\nline 2\n", "line 3\nline 4\n", "<<>>", noChanges},
      // More on one: the longer side first, however alike.
      {"line 1\nline 2\n", "line 3\n", "<<>", {}},
      {"line 1\nz\n", "line 3\nline 4\nz\n", ">><=", {}},
      {"k\nline 1\n", "k\nline 3\nline 4\n", "=>><", {}},
  };
  for (const Case& c : cases) {
    DiffModel model;
    ASSERT_EQ(compareTexts(c.left, c.right, c.options, nullptr, model), Result::success);
    EXPECT_EQ(patternOf(model), c.statuses) << c.left << "----\n" << c.right;
    EXPECT_EQ(comparisonFault(model, c.left, c.right, c.options), "") << c.left << "----\n" << c.right;
  }
}

/// How many lines an external minimal diff of two files tells; -1 when there is no such program.
int64_t linesOfMinimalDiff(const CorpusPair& pair) {
#ifdef _WIN32
  (void)pair;
  return -1;
#else
  const std::string command = "diff --text --minimal '" + pair.paths[0] + "' '" + pair.paths[1] + "' 2>&1";
  FILE* const output = popen(command.c_str(), "r");
  if (output == nullptr) return -1;
  int64_t lines = 0;
  bool atStart = true;
  for (int c; (c = std::fgetc(output)) != EOF; atStart = c == '\n')
    lines += atStart && (c == '<' || c == '>');
  return WEXITSTATUS(pclose(output)) <= 1 ? lines : -1;
#endif
}

TEST(Comparison, HoldsOnRealFiles) {
  const std::vector<CorpusPair> pairs = corpusPairs();
  if (pairs.empty()) GTEST_SKIP() << "no corpus beside the checkout";
  for (const CorpusPair& pair : pairs) {
    const std::string_view left = pair.texts[0].view(), right = pair.texts[1].view();
    for (const uint32_t bits : {0, 32, 16 + 1, 2 + 4 + 8, 16 + 15}) {
      DiffModel model;
      ASSERT_EQ(compareTexts(left, right, optionsOf(bits), nullptr, model), Result::success);
      EXPECT_EQ(comparisonFault(model, left, right, optionsOf(bits)), "")
          << pair.paths[0] << " options " << bits;
      const int64_t lines = bits == 0 ? linesOfMinimalDiff(pair) : -1;
      if (lines >= 0) {
        EXPECT_EQ(differingLines(model), lines) << pair.paths[0];
      }
    }
    DiffModel same;
    ASSERT_EQ(compareTexts(left, left, {}, nullptr, same), Result::success);
    EXPECT_EQ(same.differingRows(), 0u);
  }
}

/// Rows that no comparison below leaves, to see whether they stay.
constexpr const char* earlierRows = "<><";

constexpr std::string_view sampleLeft = "same\nthe line\nb\nonly here\n", sampleRight = "same\nthe lime\nc\n";

TEST(Comparison, LeavesTheModelWhenMemoryRunsOut) {
  DiffModel model;
  for (const uint32_t bits : {0, 16 + 4}) {
    failEachAllocation([&] { model = modelOf(earlierRows); },
                       [&] { return compareTexts(sampleLeft, sampleRight, optionsOf(bits), nullptr, model); },
                       [&](Result result) {
                         // Only marks can be done without.
                         if (result == Result::success) {
                           EXPECT_EQ(comparisonFault(model, sampleLeft, sampleRight, optionsOf(bits)), "");
                         } else {
                           EXPECT_EQ(result, Result::outOfMemory);
                           EXPECT_EQ(patternOf(model), earlierRows);
                         }
                       });
    EXPECT_EQ(comparisonFault(model, sampleLeft, sampleRight, optionsOf(bits)), "");
  }
}

TEST(Comparison, StopsWhenAskedTo) {
  AbortFlag abort;
  abort.raise();
  DiffModel model = modelOf(earlierRows);
  for (const std::string_view right : {sampleLeft, sampleRight, std::string_view()}) {
    EXPECT_EQ(compareTexts(sampleLeft, right, {}, &abort, model), Result::cancelled);
    EXPECT_EQ(patternOf(model), earlierRows);

    // As when asked after the search.
    const LineTable tables[2] = {tableLines(sampleLeft, {}), tableLines(right, {})};
    EditScript script;
    ASSERT_TRUE(findEditScript(std::span(tables[0].keys), std::span(tables[1].keys), nullptr, script));
    DiffModel rows;
    EXPECT_FALSE(
        buildRows({sampleLeft, right}, {tables[0].starts, tables[1].starts}, script, {}, &abort, rows));
  }
}

TEST(Comparison, OfFilesLeavesOneEmptyRowOnFailure) {
  MemoryFiles files;
  files.files["left"] = {std::string(sampleLeft)};
  files.files["right"] = {std::string(sampleRight)};
  FileComparison comparison;
  const auto compare = [&](const char* right) {
    return compareFiles(files, {"left", right}, {}, nullptr, comparison).result;
  };
  const auto expectNothing = [&] {
    EXPECT_EQ(patternOf(comparison.model), "=");
    for (const int side : {0, 1}) {
      EXPECT_EQ(comparison.documents[side].text.size(), 0u);
      EXPECT_EQ(comparison.model.lineNumber(side, 0), 0u);
    }
  };
  EXPECT_EQ(compare("right"), Result::success);
  EXPECT_EQ(comparisonFault(comparison.model, sampleLeft, sampleRight, {}), "");
  EXPECT_EQ(compare("missing"), Result::rightUnreadable);
  expectNothing();
  failEachAllocation([&] { ASSERT_EQ(compare("missing"), Result::rightUnreadable); },
                     [&] { return compare("right"); },
                     [&](Result result) {
                       if (result == Result::success) {
                         EXPECT_EQ(comparisonFault(comparison.model, sampleLeft, sampleRight, {}), "");
                       } else {
                         // A text that finds no room is a file that cannot be loaded.
                         EXPECT_TRUE(result == Result::outOfMemory || result == Result::leftUnreadable ||
                                     result == Result::rightUnreadable);
                         expectNothing();
                       }
                     });
}

}  // namespace
}  // namespace merivane
