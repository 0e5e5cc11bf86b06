// Which rows an edit compares anew, and what comes of it.

#include "mergeview/local_comparison.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "base/file_system.h"
#include "mergeview/edit.h"
#include "mergeview/exact_marks.h"
#include "tests/support/edit_run.h"
#include "tests/support/random.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

TEST(LocalComparison, WindowReachesFortyRowsAndTwentyMoreThatDiffer) {
  const auto rows = [](uint32_t count, char status = '=') { return std::string(count, status); };
  const struct {
    std::string rows;
    RowRange changed, window;
  } cases[] = {
      {rows(200), {100, 120}, {60, 160}},
      // At the ends.
      {rows(200), {39, 40}, {0, 80}},
      // On through what differs, the first equal row included.
      {rows(55) + rows(6, '<') + rows(139), {100, 101}, {54, 141}},
      {rows(140) + rows(5, '!') + rows(55), {100, 101}, {60, 146}},
      {rows(200, '>'), {100, 101}, {40, 161}},
      {rows(55) + rows(5, '<') + rows(140), {100, 101}, {60, 141}},
  };
  for (const auto& [pattern, changed, window] : cases) {
    EXPECT_EQ(comparisonWindow(modelOf(pattern), changed), window) << pattern << ' ' << changed.begin;
  }
}

/// What the user does to long texts, held against comparing them as a whole after every step.
class AgainstFreshComparison : public testing::Test {
 protected:
  static std::string rowsOf(const DiffModel& model, bool withMarks = false) {
    std::string rows = patternOf(model);
    for (uint32_t row = 0; row < model.rowCount(); ++row) {
      for (const int side : {0, 1}) {
        rows += ' ' + std::to_string(model.position(side, row));
        const auto marks = model.marks(row).side(side);
        if (withMarks) rows.append(marks.begin(), marks.end());
      }
    }
    return rows;
  }

  static DiffModel freshly(EditRun& run) {
    DiffModel fresh;
    EXPECT_EQ(compareTexts(run.text(0), run.text(1), run.view().compareOptions(), nullptr, fresh),
              Result::success);
    return fresh;
  }

  void edit(EditRun& run, Random& random) {
    ViewState& view = run.view();
    const uint32_t row = random.below(view.rowCount());
    view.activate(static_cast<int>(random.below(2)));
    const auto go = [&view](uint32_t to, bool extend) {
      view.moveCaret(to, view.rowStart(view.activeSide(), std::min(to, view.rowCount() - 1)), extend);
    };
    go(row, false);
    switch (random.below(6)) {
      case 0:
        run.press("next-difference");
        return run.press(random.below(2) == 0 ? "copy-block-left" : "copy-block-right");
      case 1:  // some lines go somewhere else
        go(row + random.below(300), true);
        run.press("cut");
        go(random.below(view.rowCount()), false);
        return run.press("paste");
      case 2:
        go(row + random.below(200), true);
        return run.press("delete undo redo");
      case 3:
        return run.press("next-difference delete-block");
      case 4:
        return run.press("undo");
      default:
        return run.press("x y enter z");
    }
  }

  void expectNearlyFresh(std::string_view left, std::string_view right, int steps, double percent) {
    EditRun run(left, right);
    const std::string before = rowsOf(run.view().model());
    Random random(7);
    double excess = 0, rows = 0;
    for (int step = 0; step < steps; ++step) {
      edit(run, random);
      const DiffModel fresh = freshly(run);
      excess += run.view().model().differingRows() - double{1} * fresh.differingRows();
      rows += fresh.differingRows();
    }
    EXPECT_LE(100 * excess, percent * rows) << excess << " rows of " << rows;
    while (undo(run.view(), run.history())) continue;
    EXPECT_EQ(rowsOf(run.view().model()), before);
  }
};

TEST_F(AgainstFreshComparison, RandomEditsStayAligned) {
  Random random(3);
  std::string texts[2];
  for (int line = 0; line < 3000; ++line) {
    const std::string common = random.text("abcdefgh ", 30) + "\n";
    const uint32_t kind = random.below(12);
    if (kind != 0) texts[0] += common;
    if (kind != 1) texts[1] += kind == 2 ? random.text("abcdefgh ", 9) + common : common;
  }
  expectNearlyFresh(texts[0], texts[1], 60, 0.2);
  // Where a shortest script moves hundreds of lines for the sake of some that came to stand far away, no
  // comparison of the rows around the edit finds it: with a reach of 400 rows the readme's sides are left
  // with 0.3 %, with 800 rows 0.01 %.
  constexpr std::pair<const char*, double> pairs[] = {
      {"database-?.cc", 0.2}, {"readme-?.md", 4}, {"header-?.hpp", 0.2}};
  for (const auto& [name, percent] : pairs) {
    SCOPED_TRACE(name);
    for (const size_t side : {0, 1}) {
      std::string path = MERIVANE_SOURCE_DIR "/../shared/corpus/text/" + std::string(name);
      path[path.find('?')] = "ab"[side];
      std::unique_ptr<InputFile> file;
      ByteArray text;
      if (systemFiles().open(path, file) != 0) GTEST_SKIP() << "no corpus beside the checkout";
      ASSERT_EQ(readToEnd(*file, text), 0u);
      texts[side] = text.view();
    }
    expectNearlyFresh(texts[0], texts[1], 25, percent);
  }
}

TEST_F(AgainstFreshComparison, WhatMakesTheTextsEqualLeavesNoDifference) {
  std::string left, tail;
  for (int line = 0; line < 1000; ++line) (line < 510 ? left : tail) += "line " + std::to_string(line) + "\n";
  EditRun run(left, left + tail);
  for (const char* place : {"C-end", "C-home C-end up up up up up up up", "C-home next-difference"}) {
    ASSERT_TRUE(run.host().clipboard.assign(tail));
    run.press(place);
    run.press("paste");
    EXPECT_EQ(run.view().model().differingRows(), 0u) << place;
    run.press("undo");
    EXPECT_EQ(run.view().model().differingRows(), 490u) << place;
  }
  run.press("select-all cut paste");
  EXPECT_EQ(run.view().model().differingRows(), 490u);
  run.press("switch-sides undo undo next-difference copy-block-right");
  EXPECT_EQ(run.view().model().differingRows(), 0u);
}

/// Typing in lines that are too long to be compared with every key.
class LongLines : public AgainstFreshComparison {
 protected:
  /// Whether the characters without a mark are the same on both sides.
  static bool marksAlign(EditRun& run, uint32_t row) {
    std::string kept[2];
    for (const int side : {0, 1}) {
      const uint32_t start = run.view().rowStart(side, row);
      const auto marks = run.view().model().marks(row).side(side);
      for (size_t i = 0; i < marks.size(); ++i) {
        const char c = run.view().text(side).charAt(start + static_cast<uint32_t>(i));
        const bool ignored = isBlank(c) && run.view().compareOptions().ignoreBlanks != 0;
        if (marks[i] == 0 && !ignored) kept[side] += c;
      }
    }
    return kept[0] == kept[1];
  }

  static std::string exactly(EditRun& run) {
    while (const auto marks = ExactMarks::of(run.view())) {
      EXPECT_TRUE(marks->isOf(run.view()));
      marks->find(nullptr);
      EXPECT_TRUE(marks->apply(run.view(), run.history()));
    }
    EXPECT_EQ(run.fault(), "");
    return rowsOf(run.view().model(), true);
  }

  static std::string fresh(EditRun& run) { return rowsOf(freshly(run), true); }
};

TEST_F(LongLines, MarksAlignTheLinesAtOnceAndAreThoseOfAComparisonLater) {
  for (const CompareOptions& options : {CompareOptions(), CompareOptions{true, kIgnoreAllBlanks, true}}) {
    Random random(5);
    std::string texts[2] = {"first\n", "first\n"};
    for (int i = 0; i < 40000; ++i) {
      const char c = "abcdefghijkl "[random.below(13)];
      if (i % 150 != 7) texts[0] += c;
      if (i % 170 != 9) texts[1] += c;
    }
    EditRun run(texts[0] + "\nlast", texts[1] + "\nlast", options);
    const std::string before = fresh(run);
    std::string state;
    for (int step = 0; step < 24; ++step) {
      run.view().activate(static_cast<int>(random.below(2)));
      const int side = run.view().activeSide();
      const uint32_t start = run.view().rowStart(side, 1), length = run.view().lineEnd(side, 1) - start;
      const uint32_t places[] = {0, length, random.below(length), length - random.below(30)};
      const uint32_t at = places[random.below(4)];
      run.view().moveCaret(1, start + at, false);
      if (random.below(4) == 0) run.view().moveCaret(1, start + at + random.below(9000), true);
      run.press(random.below(3) == 0 && at > 0 ? "backspace" : random.below(4) == 0 ? "undo" : "a b");
      ASSERT_EQ(run.fault(), "") << step;
      ASSERT_TRUE(marksAlign(run, 1)) << step;
      if (step % 12 == 11) {
        ASSERT_EQ(exactly(run), fresh(run)) << step;
      }
    }
    EXPECT_EQ(run.undoAndRedoAll(), "");
    while (undo(run.view(), run.history())) continue;
    EXPECT_EQ(exactly(run), before);
  }
}

TEST_F(LongLines, LinesThatAreAlikeNoMoreComeApartLaterAndUndoingBringsThemTogether) {
  Random random(6);
  std::string line;
  while (line.size() < 40000) line += random.text("abcdefghijklmnop", 9);
  EditRun run(line + "x\nsame\n", line + "y\nsame\n");
  const std::string before = fresh(run);
  run.view().moveCaret(0, static_cast<uint32_t>(line.size()) / 5, true);
  run.press("delete C-home");
  run.view().moveCaret(0, static_cast<uint32_t>(line.size()) * 3 / 4, true);
  const auto outdated = ExactMarks::of(run.view());
  run.press("delete");
  ASSERT_NE(outdated, nullptr);
  EXPECT_FALSE(outdated->isOf(run.view()));
  EXPECT_EQ(patternOf(run.view().model()), "!=");
  EXPECT_EQ(exactly(run), fresh(run));
  EXPECT_EQ(patternOf(run.view().model()), "<>=");
  run.press("undo undo");
  EXPECT_EQ(exactly(run), before);
}

}  // namespace
}  // namespace merivane
