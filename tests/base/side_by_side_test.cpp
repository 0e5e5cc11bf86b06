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
  runSideBySide([&] { countLeaves(depth - 1, leaves); }, [&] { countLeaves(depth - 1, leaves); });
}

TEST(SideBySide, AllIsDoneOnceAndFailuresComeBack) {
  std::atomic<int> leaves = 0;
  countLeaves(7, leaves);
  EXPECT_EQ(leaves, 128);

  // The other is done nevertheless, and many failures leave the processors where they were.
  for (int round = 0; round < 20; ++round) {
    bool done = false;
    EXPECT_THROW(runSideBySide([] { throw std::bad_alloc(); }, [&] { done = true; }), std::bad_alloc);
    EXPECT_TRUE(done);
    EXPECT_THROW(runSideBySide([] {}, [] { throw std::length_error(""); }), std::length_error);
  }
}

}  // namespace
}  // namespace merivane
