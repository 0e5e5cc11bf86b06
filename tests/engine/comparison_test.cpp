#include "engine/comparison.h"

#include <gtest/gtest.h>

#include "base/system_error.h"
#include "tests/support/comparison_oracle.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/memory_files.h"
#include "tests/support/random.h"
#include "tests/support/reference_diff.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

/// Expects rows that rebuild both texts and differ where the reference does.
void expectReferenceRows(const DiffModel& model, const std::string& left, const std::string& right,
                         const CompareOptions& options) {
  ASSERT_EQ(comparisonFault(model, left, right, options), "");
  const LineTable tables[2] = {tableLines(left, options), tableLines(right, options)};
  const ReferenceDiff<uint32_t> reference(tables[0].keys, tables[1].keys);
  for (const int side : {0, 1}) {
    // A flag for each line and one more. The one row of an empty model is no line.
    std::vector<uint8_t> differ;
    for (uint32_t row = 0; row < model.rowCount(); ++row) {
      if (fillerSide(model.status(row)) != side) differ.push_back(model.status(row) != RowStatus::same);
    }
    differ.resize(tables[side].keys.size() + 1, 0);
    ASSERT_EQ(differ, reference.changed[side]);
  }
}

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
      ASSERT_NO_FATAL_FAILURE(expectReferenceRows(model, left, right, options));
    }
  }
}

TEST(Comparison, RowsOfAHunkAreInOrder) {
  const CompareOptions noChanges{false, 0, false};
  const std::tuple<std::string, std::string, std::string, CompareOptions> cases[] = {
      // Hunks with as many lines on both sides pair up to the first lines that are not alike.
      {"x\nhello\ny\n", "x\nthing\ny\n", "=<>=", {}},
      {"line 1\nabcdef\nline 2\nz\n", "line 3\nuvwxyz\nline 4\nz\n", "!<<>>=", {}},
      {"line 1\nline 2\n", "line 3\nline 4\n", "<<>>", noChanges},
      // In other hunks the longer side comes first, however alike the lines are.
      {"line 1\nline 2\n", "line 3\n", "<<>", {}},
      {"line 1\nz\n", "line 3\nline 4\nz\n", ">><=", {}},
  };
  for (const auto& [left, right, statuses, options] : cases) {
    DiffModel model;
    ASSERT_EQ(compareTexts(left, right, options, nullptr, model), Result::success);
    EXPECT_EQ(patternOf(model), statuses) << left << "----\n" << right;
  }
}

TEST(Comparison, LeavesTheModelWhenMemoryRunsOutOrItIsStopped) {
  const std::string_view texts[2] = {"same\nthe line\nb\nonly here\n", "same\nthe lime\nb\nonly"};
  DiffModel model;
  bool withoutMarks = false;
  for (const CompareOptions& options : {CompareOptions(), CompareOptions{true, kIgnoreBlanksAtStart}}) {
    failEachAllocation([&] { model = modelOf("<><"); },
                       [&] { return compareTexts(texts[0], texts[1], options, nullptr, model); },
                       [&](Result result) {
                         // A comparison succeeds without memory for marks alone.
                         withoutMarks |= result == Result::success;
                         EXPECT_EQ(patternOf(model), result == Result::success ? "=!=!" : "<><");
                         EXPECT_TRUE(result == Result::success || result == Result::outOfMemory);
                       });
  }
  EXPECT_EQ(withoutMarks, kMallocFails);
  AbortFlag abort;
  abort.raise();
  model = modelOf("<><");
  for (const std::string_view right : {texts[0], texts[1], std::string_view()}) {
    EXPECT_EQ(compareTexts(texts[0], right, {}, &abort, model), Result::cancelled);
    EXPECT_EQ(patternOf(model), "<><");
  }
}

class ComparisonOfFiles : public testing::Test {
 protected:
  ComparisonOfFiles() {
    files_.files["text"].contents = "left\r\nlines\r\n";
    files_.files["binary"].contents = "\1\2\3";
    files_.files["half a pair"].contents = std::string("\xFF\xFE\x3D\xD8", 4);
    files_.files["UTF-16 of control characters"].contents = std::string("\xFE\xFF\0\1\0\2", 6);
    files_.files["pipe"] = {std::string(5000, 'x') + "\n" + std::string(70000, 'y'), false, FileKind::other};
    files_.files["folder"].kind = FileKind::folder;
    files_.files["large"].contents = "some text\n";
    files_.files["large"].toldSize = uint64_t{1} << 32;
  }

  Outcome compare(const std::string& left, const std::string& right) {
    return compareFiles(files_, {left, right}, {}, nullptr, comparison_);
  }

  void expectNothing() {
    EXPECT_EQ(patternOf(comparison_.model), "=");
    EXPECT_EQ(comparisonFault(comparison_.model, "", "", {}), "");
    for (const TextDocument& document : comparison_.documents) EXPECT_EQ(document.text.size(), 0u);
  }

  MemoryFiles files_;
  FileComparison comparison_;
};

TEST_F(ComparisonOfFiles, StopsAtTheFirstCheckThatFails) {
  const std::string invalid = " file name is invalid.";
  const std::string binary = " file is a binary data file. Merivane can only compare text files.";
  const auto unreadable = [](SystemError error) { return " file.\n\nReason: " + systemErrorText(error); };
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"a?", "binary", "The left" + invalid},
      {"binary", "a:b", "The right" + invalid},
      {"binary", "missing", "The left" + binary},
      {"missing", "binary", "The right" + binary},
      {"text", "half a pair", "The right" + binary},
      {"UTF-16 of control characters", "text", "The left" + binary},
      {"missing", "missing", "Cannot load left" + unreadable(MemoryFiles::notFound)},
      {"text", "folder", "Cannot load right" + unreadable(MemoryFiles::denied)},
      // Too large, and refused before it is read.
      {"large", "text", "Cannot load left" + unreadable(kFileTooLarge)}};
  for (const auto& [left, right, message] : cases) {
    EXPECT_EQ(outcomeMessage(compare(left, right)), message) << left << ", " << right;
    expectNothing();
  }
  EXPECT_EQ(outcomeMessage({}), "");
  EXPECT_EQ(outcomeMessage({Result::cancelled}), "Operation aborted.");
}

TEST_F(ComparisonOfFiles, IsWholeOrOneEmptyRow) {
  const auto run = [this] { return compare("text", "pipe"); };
  const auto expectFailure = [this](const Outcome& outcome) {
    EXPECT_TRUE(outcome.result == Result::outOfMemory || outcome.error == notEnoughStorage());
    expectNothing();
  };
  const auto expectComparison = [this] {
    const auto& [left, right] = comparison_.documents;
    EXPECT_EQ(left.text.view(), "left\nlines\n");
    EXPECT_TRUE(right.text.view() == files_.files["pipe"].contents);
    EXPECT_EQ(left.lineEndKind, LineEndKind::crLf);
    EXPECT_FALSE(left.readOnly);
    EXPECT_TRUE(right.readOnly);
    EXPECT_EQ(comparisonFault(comparison_.model, left.text.view(), right.text.view(), {}), "");
  };
  // Each side takes an open and two reads.
  EXPECT_GE(failEachStep(files_, notEnoughStorage(), run, expectFailure), 6u);
  expectComparison();
  failEachAllocation([&] { compare("missing", "text"); }, run,
                     [&](const Outcome& outcome) {
                       // A failure to give memory back harms nobody.
                       outcome.succeeded() ? expectComparison() : expectFailure(outcome);
                     });
}

TEST_F(ComparisonOfFiles, KeepsTheStampOfWhatItHasRead) {
  // The file is written to between the look at its stamp and the end of reading.
  files_.files["text"].modified = 5;
  files_.onRead = [this] { files_.files["text"].modified = 6; };
  ASSERT_TRUE(compare("text", "pipe").succeeded());
  EXPECT_EQ(comparison_.documents[0].stamp.modified, 5);
  EXPECT_NE(comparison_.documents[0].stamp, files_.stamp("text"));
}

TEST_F(ComparisonOfFiles, LargeOnesAreWorkedOnSideBySideAndAlike) {
  // So large that both sides are read at once and the search has parts for a second processor.
  Random random(8);
  std::string left, right;
  for (int line = 0; line < 20000; ++line) {
    const auto text = [&] {
      return random.below(4) == 0 ? std::string(&"}{"[random.below(2)], 1)
                                  : "line " + std::to_string(random.below(9000));
    };
    const std::string both = text() + "\n";
    if (random.below(40) != 0) left += both;
    right += line / 16 % 2 == 0 ? both : random.below(3) == 0 ? both + text() + "\n" : text() + "\n";
  }
  files_.files["a"].contents = left;
  files_.files["b"].contents = right;
  ASSERT_GT(left.size() + right.size(), 300000u);
  ASSERT_TRUE(compare("a", "b").succeeded());
  expectReferenceRows(comparison_.model, left, right, {});
}

}  // namespace
}  // namespace merivane
