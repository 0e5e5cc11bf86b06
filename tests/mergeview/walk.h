#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "tests/support/edit_run.h"

namespace merivane {

/// Presses keys and expects what stands in brackets after them: "(a|b/)" is the active side as
/// EditRun::marked() has it, "(a|b/ # ab/)" both sides, "(1,3)" without a caret in it EditRun::place(), and
/// "{.lb}" is what the view's changes tell, "{*}" whatever that is. All of it can be undone and done again.
inline void expectWalk(EditRun& run, std::string_view walk) {
  for (size_t begin; (begin = walk.find_first_of("({")) != std::string_view::npos;) {
    const size_t end = walk.find_first_of(")}", begin);
    const std::string_view expected = walk.substr(begin + 1, end - begin - 1);
    const auto has = [expected](std::string_view sign) { return expected.find(sign) != std::string::npos; };
    run.press(walk.substr(0, begin));
    if (walk[begin] == '{') {
      const std::string changes = changesText(run.view().takeChanges());
      EXPECT_EQ(has("*") ? "*" : changes, expected) << "at " << walk;
    } else if (!has("|")) {
      EXPECT_EQ(run.place(), expected) << "at " << walk;
    } else if (has(" # ")) {
      EXPECT_EQ(run.marked(0) + " # " + run.marked(1), expected) << "at " << walk;
    } else {
      EXPECT_EQ(run.marked(run.view().activeSide()), expected) << "at " << walk;
    }
    EXPECT_EQ(run.fault(), "") << "at " << walk;
    walk.remove_prefix(end + 1);
  }
  EXPECT_EQ(run.undoAndRedoAll(), "");
  EXPECT_EQ(run.host().outOfMemory, 0);
}

inline void expectWalk(EditRun&& run, std::string_view walk) { expectWalk(run, walk); }

/// The same in "left # right" with "/" for line ends.
inline void expectWalk(std::string texts, std::string_view walk) {
  SCOPED_TRACE(texts);
  std::replace(texts.begin(), texts.end(), '/', '\n');
  const size_t left = texts.find(" # ");
  expectWalk(EditRun(texts.substr(0, left), texts.substr(left + 3)), walk);
}

/// 100 lines of text on both sides, but for some rows that only the right one has.
inline EditRun longRun(std::string_view onRight = {}) {
  std::string texts[2];
  for (int row = 0; row < 100; ++row) {
    const std::string line = std::to_string(row);
    const bool onlyRight = onRight.find(' ' + line + ' ') != std::string_view::npos;
    for (const int side : {0, 1}) texts[side] += side == 0 && onlyRight ? "" : line + "\n";
  }
  return EditRun(texts[0], texts[1]);
}

}  // namespace merivane
