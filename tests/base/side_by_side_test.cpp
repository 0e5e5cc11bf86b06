#include "base/side_by_side.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <stdexcept>

namespace merivane {
namespace {

/// Counts the leaves of a tree of calls, of which there are many more than processors.
void countLeaves(int depth, std::atomic<int>& leaves) {
  if (depth == 0) {
    ++leaves;
    return;
  }
  const auto half = [&] { countLeaves(depth - 1, leaves); };
  if (trySideBySide(half, half)) return;
  half();
  half();
}

TEST(SideBySide, AllIsDoneOnceAndFailuresComeBack) {
  std::atomic<int> leaves = 0;
  countLeaves(7, leaves);
  EXPECT_EQ(leaves, 128);

  // Many failures leave the processors where they were, and the other piece is done nevertheless.
  const bool spare = trySideBySide([] {}, [] {});
  for (int round = 0; spare && round < 20; ++round) {
    bool done = false;
    EXPECT_THROW(trySideBySide([] { throw std::bad_alloc(); }, [&] { done = true; }), std::bad_alloc);
    EXPECT_TRUE(done);
    EXPECT_THROW(trySideBySide([] {}, [] { throw std::length_error(""); }), std::length_error);
  }
  EXPECT_EQ(trySideBySide([] {}, [] {}), spare);
}

}  // namespace
}  // namespace merivane
