#include "engine/changed_lines.h"

#include <gtest/gtest.h>

#include "tests/support/failing_allocator.h"
#include "tests/support/random.h"
#include "tests/support/reference_diff.h"

namespace merivane {
namespace {

/// Whether two lines are a changed pair, and which characters differ, as "--x-" a line.
struct Pair {
  bool changed = false;
  std::string marks[2];

  bool operator==(const Pair&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Pair& pair) {
  return out << pair.changed << " " << pair.marks[0] << " " << pair.marks[1];
}

Pair decided(ChangedLineTest& test, const std::string& left, const std::string& right) {
  Pair result;
  RowMarks marks;
  result.changed = test.compare(left, right, marks);
  for (const int side : {0, 1}) {
    for (const uint8_t mark : marks.side(side)) result.marks[side] += mark == kDiffersMark ? 'x' : '-';
  }
  return result;
}

bool blank(char c) { return c == ' ' || (c >= 9 && c <= 13); }

struct Normalised {
  std::string characters;
  std::vector<size_t> sources;
};

Normalised normalised(const std::string& line, bool ignoreCase, uint32_t blanks) {
  size_t first = 0, last = line.size();
  if (!(blanks & 1)) {
    while ((blanks & 4) && first < last && blank(line[first])) ++first;
    while ((blanks & 8) && last > first && blank(line[last - 1])) --last;
  }
  Normalised result;
  for (size_t i = first; i < last; ++i) {
    char c = line[i];
    if (blank(c)) {
      if (blanks & 1) continue;
      if (blanks & 2) {
        if (i > first && blank(line[i - 1])) continue;
        c = ' ';
      }
    } else if (ignoreCase && c >= 'a' && c <= 'z') {
      c = static_cast<char>(c - 32);
    }
    result.characters += c;
    result.sources.push_back(i);
  }
  return result;
}

/// The rules in their plainest form: the matched pairs, their runs, the runs' share of both lines.
Pair reference(const std::string& left, const std::string& right, const CompareOptions& options) {
  const Normalised sides[2] = {normalised(left, options.ignoreCase, options.ignoreBlanks),
                               normalised(right, options.ignoreCase, options.ignoreBlanks)};
  const ReferenceDiff<char> diff(sides[0].characters, sides[1].characters);
  std::vector<uint32_t> runs;
  size_t a = 0, b = 0;
  bool inRun = false;
  while (a < sides[0].characters.size() || b < sides[1].characters.size()) {
    if (diff.changed[0][a] || diff.changed[1][b]) {
      a += diff.changed[0][a];
      b += diff.changed[1][b];
      inRun = false;
    } else {
      if (!inRun) runs.push_back(0);
      inRun = true;
      ++runs.back();
      ++a, ++b;
    }
  }
  size_t sum = 0;
  for (const uint32_t run : runs) sum += run >= 2 ? run : 0;
  const size_t total = left.size() + right.size();
  Pair result;
  result.changed = options.compareChanges && (total <= 4 || sum * 200 / total >= 50);
  if (!result.changed) return result;
  result.marks[0].assign(left.size(), '-');
  result.marks[1].assign(right.size(), '-');
  for (const int side : {0, 1}) {
    for (size_t i = 0; i < sides[side].sources.size(); ++i) {
      if (diff.changed[side][i]) result.marks[side][sides[side].sources[i]] = 'x';
    }
  }
  return result;
}

TEST(ChangedLines, AreTheReferencesUnderAllOptions) {
  constexpr int rounds = 3000;
  Random random(4);
  for (int i = 0; i < rounds; ++i) {
    const std::string alphabet = i % 2 == 0 ? "abcAB \t\r" : "ab  ";
    const auto line = [&] { return random.text(alphabet, 12) + (random.below(4) == 0 ? "a" : "\n"); };
    const std::string left = line();
    std::string right = line();
    if (random.below(3) == 0)
      right = left.substr(0, random.below(static_cast<uint32_t>(left.size()))) + right;
    for (uint32_t bits = 0; bits < 32; ++bits) {
      const CompareOptions options{(bits & 16) != 0, bits & 15};
      ChangedLineTest test(options, nullptr);
      ASSERT_EQ(decided(test, left, right), reference(left, right, options))
          << testing::PrintToString(left) << testing::PrintToString(right) << " options " << bits;
    }
  }
}

TEST(ChangedLines, NeedHalfOfBothLinesInRuns) {
  struct Case {
    std::string left, right;
    CompareOptions options;
    Pair pair;
  };
  const Pair unlike;
  const Case cases[] = {
      {"a\n", "b\n", {}, {true, {"x-", "x-"}}},  // so short that anything goes
      {"ab", "cd", {}, {true, {"xx", "xx"}}},
      {"abc", "de", {}, unlike},
      {"a\n", "b\n", {false, 0, false}, unlike},
      {"same\n", "same\n", {false, 0, false}, unlike},
      {"aXbXcX", "aYbYcY", {}, unlike},  // half of it matches, but never two in a row
      {"abXY", "abZW", {}, {true, {"--xx", "--xx"}}},
      {"abXYZ", "abUVW", {}, unlike},  // 40 in 100
      {"ab12345", "abc", {}, unlike},  // 2 of 10
      {"abcd1234", "abcd123", {}, {true, {"-------x", "-------"}}},
      {"abc123xyz", "abc45xyz", {}, {true, {"---xxx---", "---xx---"}}},
      {"ABcd\n", "abcD\n", {true, 0}, {true, {"-----", "-----"}}},
      {"ab\tcd X\n", "ab  cd Y\n", {false, kIgnoreMultipleBlanks}, {true, {"------x-", "-------x-"}}},
      {"abcd\n", "  a b cdX\n", {false, kIgnoreAllBlanks}, {true, {"-----", "--------x-"}}},
      {"\tabcd \n", "abcd", {false, kIgnoreBlanksAtStart | kIgnoreBlanksAtEnd}, {true, {"-------", "----"}}},
  };
  for (const Case& c : cases) {
    ChangedLineTest test(c.options, nullptr);
    EXPECT_EQ(decided(test, c.left, c.right), c.pair) << c.left << c.right;
  }
}

TEST(ChangedLines, DoWithoutMarksThatDoNotFitInMemory) {
  bool withoutMarks = false;
  failEachAllocation([] {},
                     [&] {
                       ChangedLineTest test({}, nullptr);
                       RowMarks marks;
                       try {
                         return test.compare("the line", "the lime", marks) && marks.none();
                       } catch (const std::bad_alloc&) {
                         return false;
                       }
                     },
                     [&](bool changedWithoutMarks) { withoutMarks |= changedWithoutMarks; });
  EXPECT_EQ(withoutMarks, kMallocFails);
}

}  // namespace
}  // namespace merivane
