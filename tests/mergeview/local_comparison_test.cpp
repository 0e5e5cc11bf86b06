// Which rows an edit compares anew, and what comes of it.

#include "mergeview/local_comparison.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "base/file_system.h"
#include "mergeview/edit.h"
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
      {rows(200), {100, 101}, {60, 141}},
      {rows(200), {100, 120}, {60, 160}},
      // At the ends.
      {rows(200), {39, 40}, {0, 80}},
      {rows(200), {160, 161}, {120, 200}},
      {rows(1), {0, 1}, {0, 1}},
      // On through what differs, the first equal row included.
      {rows(55) + rows(6, '<') + rows(139), {100, 101}, {54, 141}},
      {rows(140) + rows(5, '!') + rows(55), {100, 101}, {60, 146}},
      {rows(200, '>'), {100, 101}, {40, 161}},
      {rows(50, '!') + rows(100) + rows(50, '<'), {60, 140}, {0, 200}},
      {rows(55) + rows(5, '<') + rows(140), {100, 101}, {60, 141}},
  };
  for (const auto& [pattern, changed, window] : cases) {
    EXPECT_EQ(comparisonWindow(modelOf(pattern), changed), window) << pattern << ' ' << changed.begin;
  }
}

/// What the user does to long texts, held against comparing them as a whole after every step.
class AgainstFreshComparison : public testing::Test {
 protected:
  static std::string rowsOf(const DiffModel& model) {
    std::string rows = patternOf(model);
    for (uint32_t row = 0; row < model.rowCount(); ++row) {
      for (const int side : {0, 1}) rows += ' ' + std::to_string(model.position(side, row));
    }
    return rows;
  }

  static DiffModel freshly(const EditRun& run) {
    DiffModel fresh;
    EXPECT_EQ(compareTexts(run.text(0), run.text(1), {}, nullptr, fresh), Result::success);
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

TEST_F(AgainstFreshComparison, RandomEditsOfGeneratedTextsStayAligned) {
  Random random(3);
  std::string texts[2];
  for (int line = 0; line < 3000; ++line) {
    const std::string common = random.text("abcdefgh ", 30) + "\n";
    const uint32_t kind = random.below(12);
    if (kind != 0) texts[0] += common;
    if (kind != 1) texts[1] += kind == 2 ? random.text("abcdefgh ", 9) + common : common;
  }
  expectNearlyFresh(texts[0], texts[1], 60, 0.2);
}

TEST_F(AgainstFreshComparison, RandomEditsOfRealTextsStayAligned) {
  // The readme's sides differ most: there a window misses more than elsewhere.
  constexpr std::pair<const char*, double> pairs[] = {
      {"database-?.cc", 0.2}, {"readme-?.md", 4}, {"header-?.hpp", 0.2}};
  for (const auto& [name, percent] : pairs) {
    SCOPED_TRACE(name);
    ByteArray texts[2];
    for (const size_t side : {0, 1}) {
      std::string path = MERIVANE_SOURCE_DIR "/../shared/corpus/text/" + std::string(name);
      path[path.find('?')] = "ab"[side];
      std::unique_ptr<InputFile> file;
      if (systemFiles().open(path, file) != 0) GTEST_SKIP() << "no corpus beside the checkout";
      ASSERT_EQ(readToEnd(*file, texts[side]), 0u);
    }
    expectNearlyFresh(texts[0].view(), texts[1].view(), 25, percent);
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

}  // namespace
}  // namespace merivane
