#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "tests/support/edit_run.h"

namespace merivane {

/// Presses keys and expects what stands in brackets behind them: "(1,3)" is EditRun::place(), "(1,3: a/b #
/// c)" the place and both texts with "/" for line ends, and "{.lb}" what has to be repainted, "{*}" whatever
/// that is. All of it can be undone and done again.
inline void expectWalk(EditRun& run, std::string_view walk) {
  for (size_t begin; (begin = walk.find_first_of("({")) != std::string_view::npos;) {
    const size_t end = walk.find_first_of(")}", begin);
    const std::string_view expected = walk.substr(begin + 1, end - begin - 1);
    run.press(walk.substr(0, begin));
    std::string found;
    if (walk[begin] == '{') {
      found = run.host().takeRepaints();
      if (expected == "*") found = expected;
    } else {
      found = run.place();
      if (expected.find(':') != std::string_view::npos) found += ": " + run.text(0) + " # " + run.text(1);
      std::replace(found.begin(), found.end(), '\n', '/');
    }
    EXPECT_EQ(found, expected) << "at " << walk;
    EXPECT_EQ(run.fault(), "") << "at " << walk;
    walk.remove_prefix(end + 1);
  }
  EXPECT_EQ(run.undoAndRedoAll(), "");
}

inline void expectWalk(EditRun&& run, std::string_view walk) { expectWalk(run, walk); }

/// The same in "left # right" with "/" for line ends.
inline void expectWalk(std::string texts, std::string_view walk) {
  SCOPED_TRACE(texts);
  std::replace(texts.begin(), texts.end(), '/', '\n');
  const size_t left = texts.find(" # ");
  expectWalk(EditRun(texts.substr(0, left), texts.substr(left + 3)), walk);
}

}  // namespace merivane
