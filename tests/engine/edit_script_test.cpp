#include "engine/edit_script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "tests/support/failing_allocator.h"
#include "tests/support/random.h"
#include "tests/support/reference_diff.h"

namespace merivane {
namespace {

template <typename Element>
class EditScriptTest : public testing::Test {
 protected:
  using Sequence = std::vector<Element>;

  Sequence randomSequence(uint32_t alphabet, uint32_t size) {
    Sequence result(size);
    for (Element& element : result) element = static_cast<Element>(random_.below(alphabet));
    return result;
  }

  /// What some stretches of `sequence` replaced, dropped or put in leave.
  Sequence edited(Sequence sequence, uint32_t edits, uint32_t alphabet) {
    for (uint32_t i = 0; i < edits; ++i) {
      const auto at = sequence.begin() + random_.below(static_cast<uint32_t>(sequence.size() + 1));
      const auto end = at + std::min<ptrdiff_t>(random_.below(6), sequence.end() - at);
      const Sequence fresh = randomSequence(alphabet, random_.below(6));
      sequence.insert(sequence.erase(at, end), fresh.begin(), fresh.end());
    }
    return sequence;
  }

  /// Holds the script to the reference; answers its number of edits.
  size_t check(const Sequence& left, const Sequence& right) {
    const std::span<const Element> a(left), b(right);
    EditScript script;
    EXPECT_TRUE(findEditScript(a, b, nullptr, script));
    const ReferenceDiff<Element> reference(a, b);
    for (const int side : {0, 1}) EXPECT_EQ(script.changed[side], reference.changed[side]);
    size_t edits = 0;
    for (const auto& flags : script.changed) edits += std::accumulate(flags.begin(), flags.end(), size_t{0});
    return edits;
  }

  Random random_{20};
};

size_t fewestEdits(const auto& left, const auto& right) {
  std::vector<size_t> longest(right.size() + 1, 0);
  for (const auto& element : left) {
    size_t diagonal = 0;
    for (size_t j = 0; j < right.size(); ++j) {
      const size_t above = longest[j + 1];
      longest[j + 1] = element == right[j] ? diagonal + 1 : std::max(above, longest[j]);
      diagonal = above;
    }
  }
  return left.size() + right.size() - 2 * longest.back();
}

using Elements = testing::Types<uint32_t, char>;
TYPED_TEST_SUITE(EditScriptTest, Elements);

TYPED_TEST(EditScriptTest, IsTheReferenceScriptAndAsShortAsCanBe) {
  constexpr int rounds = 30000;
  for (int i = 0; i < rounds && !this->HasFailure(); ++i) {
    const uint32_t alphabet = 1 + this->random_.below(8);
    const auto left = this->randomSequence(alphabet, this->random_.below(41));
    const auto right = this->random_.below(2) == 0 ? this->randomSequence(alphabet, this->random_.below(41))
                                                   : this->edited(left, this->random_.below(4), alphabet);
    EXPECT_EQ(this->check(left, right), fewestEdits(left, right)) << "round " << i;
  }
}

TYPED_TEST(EditScriptTest, IsTheReferenceScriptOfLongSequences) {
  for (const uint32_t alphabet : {2, 4, 40, 250}) {
    for (const uint32_t edits : {0, 1, 20, 300}) {
      const auto left = this->randomSequence(alphabet, 300 + this->random_.below(1700));
      this->check(left, this->edited(left, edits, alphabet));
    }
    this->check(this->randomSequence(alphabet, 1500), this->randomSequence(alphabet, 300));
  }
}

TYPED_TEST(EditScriptTest, ThrowsWhereMemoryRunsOut) {
  const auto left = this->randomSequence(4, 100), right = this->randomSequence(4, 100);
  const auto run = [&] {
    EditScript script;
    try {
      return findEditScript(std::span<const TypeParam>(left), std::span<const TypeParam>(right), nullptr,
                            script);
    } catch (const std::bad_alloc&) {
      return false;
    }
  };
  failEachAllocation([] {}, run, [](bool found) { EXPECT_FALSE(found); });
}

TYPED_TEST(EditScriptTest, StopsWhenAskedTo) {
  AbortFlag abort;
  abort.raise();
  EditScript script;
  for (const uint32_t size : {0, 1, 30}) {
    // Also where there is nothing to search.
    const auto same = this->randomSequence(3, size), other = this->randomSequence(3, 40);
    EXPECT_FALSE(
        findEditScript(std::span<const TypeParam>(same), std::span<const TypeParam>(same), &abort, script));
    EXPECT_FALSE(
        findEditScript(std::span<const TypeParam>(same), std::span<const TypeParam>(other), &abort, script));
  }
}

}  // namespace
}  // namespace merivane
