#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <future>
#include <numeric>
#include <thread>

#include "base/file_system.h"
#include "engine/edit_script.h"
#include "engine/line_keys.h"
#include "engine/search/bit_row.h"
#include "tests/support/random.h"
#include "tests/support/reference_diff.h"

namespace merivane {
namespace {

using Sequence = std::vector<uint32_t>;

struct Way {
  const char* name;
  SearchCosts costs;
};

constexpr double never = 1e12, always = 1e-9;

/// Costs with which a search takes one way wherever that is possible.
constexpr Way ways[] = {
    {"as fitted", {}},
    {"plain", {.minPlainSteps = 1e15}},
    {"plain, then any", {.minPlainSteps = 20, .plainStepsPerElement = 0.5}},
    {"diagonals", {.minPlainSteps = 0, .plainStepsPerElement = 0, .perMatch = never, .perRow = never}},
    {"sparse", {.minPlainSteps = 0, .plainStepsPerElement = 0, .perMatch = always, .perRow = never}},
    {"banded table",
     {.minPlainSteps = 0,
      .plainStepsPerElement = 0,
      .perMatch = never,
      .perRow = always,
      .perBlock = always}},
};

class EditScriptSearch : public testing::Test {
 protected:
  /// Compares the results of all ways with the reference's, for keys of lines and for characters.
  void check(const Sequence& left, const Sequence& right) {
    checkAs<uint32_t>(left, right);
    checkAs<char>(left, right);
  }

  template <typename Element>
  void checkAs(const Sequence& left, const Sequence& right) {
    const std::vector<Element> a(left.begin(), left.end()), b(right.begin(), right.end());
    const ReferenceDiff<Element> reference{std::span(a), std::span(b)};
    for (const Way& way : ways) {
      EditScript script;
      ASSERT_TRUE(findEditScript(std::span(a), std::span(b), nullptr, script, way.costs));
      for (const int side : {0, 1}) {
        ASSERT_EQ(script.changed[side], reference.changed[side])
            << way.name << ", " << testing::PrintToString(left) << " " << testing::PrintToString(right);
      }
    }
  }

  /// Returns elements of an alphabet; `unique` in ten are others that never occur again.
  Sequence sequence(uint32_t alphabet, uint32_t size, uint32_t unique) {
    Sequence result(size);
    for (uint32_t& element : result) element = random_.below(10) < unique ? next_++ : random_.below(alphabet);
    return result;
  }

  Sequence halfChanged(Sequence other, uint32_t alphabet, uint32_t unique) {
    for (size_t at = 0; at < other.size();) {
      const size_t end = std::min<size_t>(at + 1 + random_.below(8), other.size());
      if (random_.below(2) == 0) {
        const Sequence fresh = sequence(alphabet, static_cast<uint32_t>(end - at), unique);
        std::copy(fresh.begin(), fresh.end(), other.begin() + static_cast<ptrdiff_t>(at));
      }
      at = end + random_.below(8);
    }
    return other;
  }

  Sequence shuffled(Sequence sequence) {
    for (size_t i = sequence.size(); i > 1; --i)
      std::swap(sequence[i - 1], sequence[random_.below(uint32_t(i))]);
    return sequence;
  }

  Random random_{31};
  uint32_t next_ = 1000000;
};

TEST_F(EditScriptSearch, EveryWayGivesTheReferenceScript) {
  for (int round = 0; round < 15000 && !HasFatalFailure(); ++round) {
    const uint32_t alphabet = 1 + random_.below(9), unique = random_.below(3) * random_.below(4);
    const Sequence left = sequence(alphabet, random_.below(32), unique);
    const Sequence right = round % 3 == 0   ? sequence(alphabet, random_.below(64), unique)
                           : round % 3 == 1 ? shuffled(left)
                                            : halfChanged(left, alphabet, unique);
    check(left, right);
  }
}

TEST_F(EditScriptSearch, EveryWayGivesTheReferenceScriptOfLongSequences) {
  // They take several blocks of columns, and bands leave blocks and come back to them.
  for (const uint32_t alphabet : {2, 6, 50, 1000}) {
    for (const uint32_t unique : {0, 3, 8}) {
      const Sequence left = sequence(alphabet, 900 + random_.below(900), unique);
      check(left, halfChanged(left, alphabet, unique));
      check(left, shuffled(left));
      check(left, sequence(alphabet, 300 + random_.below(1500), unique));
      Sequence moved = left;
      std::rotate(moved.begin(), moved.begin() + 600, moved.end());
      check(left, halfChanged(moved, alphabet, unique));
    }
  }
}

TEST_F(EditScriptSearch, EveryWayGivesTheReferenceScriptOfRealFiles) {
  constexpr const char* names[][2] = {
      {"header-a.hpp", "header-b.hpp"}, {"database-a.cc", "database-b.cc"}, {"readme-a.md", "readme-b.md"}};
  for (const auto& pair : names) {
    Sequence keys[2];
    for (const int side : {0, 1}) {
      const std::string path = MERIVANE_SOURCE_DIR "/../shared/corpus/text/" + std::string(pair[side]);
      std::unique_ptr<InputFile> file;
      ByteArray text;
      if (systemFiles().open(path, file) != 0) GTEST_SKIP() << "no corpus beside the checkout";
      ASSERT_EQ(readToEnd(*file, text), 0u);
      keys[side] = tableLines(text.view(), {}).keys;
    }
    checkAs<uint32_t>(keys[0], keys[1]);
  }
}

TEST_F(EditScriptSearch, EveryWayStopsWhenAskedTo) {
  // All searches take far longer than the time until they are stopped.
  const Sequence dense[2] = {sequence(3, 400000, 0), sequence(3, 400000, 0)};
  Sequence distinct(2000000);
  std::iota(distinct.begin(), distinct.end(), 0);
  const Sequence sparse[2] = {distinct, shuffled(distinct)};
  for (const Way& way : ways) {
    for (const auto& sides : {&dense, &sparse}) {
      AbortFlag abort;
      auto search = std::async(std::launch::async, [&] {
        EditScript script;
        return findEditScript(std::span((*sides)[0]), std::span((*sides)[1]), &abort, script, way.costs);
      });
      std::this_thread::sleep_for(std::chrono::milliseconds(random_.below(60)));
      abort.raise();
      EXPECT_FALSE(search.get()) << way.name;
    }
  }
  // A raised flag counts also where there is nothing to search.
  AbortFlag raised;
  raised.raise();
  EditScript script;
  EXPECT_FALSE(findEditScript(std::span<const char>(), std::span<const char>(), &raised, script));
}

TEST(BitRow, IsTheSameHoweverItAdvances) {
  Random random(32);
  for (int round = 0; round < 3000; ++round) {
    BitBlock rows[3][3], matches[3];
    std::vector<int32_t> columns;
    for (int word = 0; word < 12; ++word) {
      // Carries run through full and empty words.
      const uint64_t bits = uint64_t{random.below(0xFFFFFFFF)} << 32 | random.below(0xFFFFFFFF);
      const uint64_t words[] = {bits, ~uint64_t{0}, 0};
      const uint64_t before = words[random.below(3)];
      for (auto& row : rows) row[word / 4].words[word % 4] = before;
      const uint64_t match = random.below(2) == 0 ? bits & (bits >> 7) : words[random.below(3)];
      matches[word / 4].words[word % 4] = match;
      for (int bit = 0; bit < 64; ++bit) {
        if ((match >> bit & 1) != 0) columns.push_back(64 * word + bit);
      }
    }
    const bool grown = advanceBlocks(rows[0], matches, 3);
    EXPECT_EQ(grown, advanceBlocksPortably(rows[1], matches, 3));
    EXPECT_EQ(grown, advanceByMatches(rows[2], columns, 3));
    for (const int other : {1, 2}) EXPECT_EQ(0, std::memcmp(rows[0], rows[other], sizeof(rows[0])));
  }
}

}  // namespace
}  // namespace merivane
