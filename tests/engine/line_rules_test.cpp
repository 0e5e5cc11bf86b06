#include <gtest/gtest.h>

#include <algorithm>

#include "engine/changed_lines.h"
#include "engine/common_characters.h"
#include "engine/line_keys.h"
#include "engine/sixteen_bytes.h"
#include "tests/support/random.h"
#include "tests/support/reference_diff.h"

namespace merivane {
namespace {

CompareOptions optionsOf(uint32_t bits) { return {(bits & 16) != 0, bits & 15, (bits & 32) == 0}; }

/// The characters of a line that count under the options, and where in the line they are.
struct Normalised {
  std::string characters;
  std::vector<size_t> sources;
};

Normalised normalised(std::string_view line, const CompareOptions& options) {
  const auto blank = [line](size_t i) { return line[i] == ' ' || (line[i] >= 9 && line[i] <= 13); };
  const uint32_t blanks = options.ignoreBlanks;
  size_t first = 0, last = line.size();
  while ((blanks & 4) && first < last && blank(first)) ++first;
  while ((blanks & 8) && first < last && blank(last - 1)) --last;
  if (blanks & 1) first = 0, last = line.size();
  Normalised result;
  for (size_t i = first; i < last; ++i) {
    char c = line[i];
    if (blank(i)) {
      if ((blanks & 1) || ((blanks & 2) && i > first && blank(i - 1))) continue;
      if (blanks & 2) c = ' ';
    } else if (options.ignoreCase && c >= 'a' && c <= 'z') {
      c = static_cast<char>(c - 32);
    }
    result.characters += c;
    result.sources.push_back(i);
  }
  return result;
}

uint32_t referenceKey(std::string_view line, const CompareOptions& options) {
  const bool ended = line.ends_with('\n');
  uint32_t key = 0;
  for (const char c : normalised(line.substr(0, line.size() - ended), options).characters) {
    key = key * 127 + static_cast<uint32_t>(static_cast<int8_t>(c));
  }
  return ended ? key * 127 + '\n' : key;
}

TEST(LineTables, HoldEveryLinesStartAndKeyUnderAllOptions) {
  constexpr std::string_view nasty("  \t\v\f\raAzZ@[`{\x80\xa0\xe4\xff\n\0", 20);
  Random random(1);
  for (int round = 0; round < 4000; ++round) {
    const std::string text = random.text(round % 20 == 0 ? "\n" : nasty, round % 50 < 2 ? 1000 : 40);
    for (uint32_t bits = 0; bits < 32; ++bits) {
      const LineTable table = tableLines(text, optionsOf(bits));
      size_t at = 0;
      for (uint32_t line = 0; at < text.size(); ++line) {
        const std::string bytes = text.substr(at, std::min(text.find('\n', at), text.size()) - at + 1);
        ASSERT_LT(line, table.keys.size());
        ASSERT_EQ(table.starts[line], at);
        ASSERT_EQ(table.keys[line], referenceKey(bytes, optionsOf(bits)))
            << testing::PrintToString(bytes) << bits;
        at += bytes.size();
      }
      ASSERT_EQ(table.starts.size(), table.keys.size() + 1);
      ASSERT_EQ(table.starts.back(), text.size());
      LineKeys pieces(optionsOf(bits));
      std::vector<uint32_t> keys;
      const size_t half = random.below(static_cast<uint32_t>(text.size()) + 1);
      for (const std::string& piece : {text.substr(0, half), text.substr(half)}) pieces.add(piece, keys);
      pieces.end(keys);
      ASSERT_EQ(keys, table.keys) << testing::PrintToString(text) << bits;
    }
  }
}

template <typename Bytes>
class SixteenBytesOf : public testing::Test {};

#ifdef MERIVANE_SSE2
using SixteenBytesVersions = testing::Types<PortableSixteenBytes, Sse2SixteenBytes>;
#else
using SixteenBytesVersions = testing::Types<PortableSixteenBytes>;
#endif
TYPED_TEST_SUITE(SixteenBytesOf, SixteenBytesVersions);

TYPED_TEST(SixteenBytesOf, EveryVersionGivesWhatByteByByteComesOut) {
  Random random(2);
  for (int round = 0; round < 20000; ++round) {
    std::string bytes(16, '\0');
    // Half of them are neighbours of the LF and of zero, which a wrong borrow or carry would mistake for
    // these.
    for (char& c : bytes)
      c = round % 2 == 0 ? "\n\t\v\x8a\x80\x01\xff\x7f"[random.below(8)] : char(random.below(256));
    const auto kept = static_cast<ptrdiff_t>(1 + random.below(15));
    const std::string last =
        std::string(16 - static_cast<size_t>(kept), '\0') + bytes.substr(16 - static_cast<size_t>(kept));
    const TypeParam ours(bytes.data());
    for (const auto& [expected, actual] : {std::pair(bytes, ours), std::pair(last, ours.last(kept))}) {
      uint32_t lineFeeds = 0, key = 0;
      for (size_t i = 0; i < 16; ++i) {
        lineFeeds |= uint32_t{expected[i] == '\n'} << i;
        key = key * 127 + static_cast<uint32_t>(static_cast<int8_t>(expected[i]));
      }
      ASSERT_EQ(actual.equalTo('\n'), lineFeeds) << testing::PrintToString(expected);
      ASSERT_EQ(actual.polynomial(), key) << testing::PrintToString(expected);
    }
  }
}

/// Returns which characters of both lines differ, as "--x- xx"; "unlike" if they are no changed pair.
std::string decided(const std::string& left, const std::string& right, const CompareOptions& options) {
  ChangedLineTest test(options, nullptr);
  RowMarks marks;
  if (!test.compare(left, right, marks)) return "unlike";
  std::string result;
  for (const int side : {0, 1}) {
    for (const uint8_t mark : marks.side(side)) result += mark == kDiffersMark ? 'x' : '-';
    if (side == 0) result += ' ';
  }
  return result;
}

/// Applies the rules in their plainest form: matched pairs, their runs, the runs' share of both lines.
std::string reference(const std::string& left, const std::string& right, const CompareOptions& options) {
  const Normalised sides[2] = {normalised(left, options), normalised(right, options)};
  const ReferenceDiff<char> diff(sides[0].characters, sides[1].characters);
  size_t a = 0, b = 0, sum = 0;
  while (a < sides[0].characters.size() || b < sides[1].characters.size()) {
    size_t run = 0;
    for (; a < sides[0].characters.size() && !diff.changed[0][a] && !diff.changed[1][b]; ++a, ++b) ++run;
    if (run >= 2) sum += run;
    a += diff.changed[0][a];
    b += diff.changed[1][b];
  }
  const size_t total = left.size() + right.size();
  if (!options.compareChanges || (total > 4 && sum * 200 / total < 50)) return "unlike";
  std::string marks = std::string(left.size(), '-') + ' ' + std::string(right.size(), '-');
  for (const size_t side : {0, 1}) {
    for (size_t i = 0; i < sides[side].sources.size(); ++i) {
      if (diff.changed[side][i]) marks[side * (left.size() + 1) + sides[side].sources[i]] = 'x';
    }
  }
  return marks;
}

TEST(ChangedLines, AreTheReferencesUnderAllOptions) {
  Random random(4);
  CommonCharacters common;
  for (int round = 0; round < 3000; ++round) {
    const std::string alphabet = round % 2 == 0 ? "abcAB \t\r\xFF" : "ab  ";
    const uint32_t longest = round % 10 == 0 ? 90 : 12;
    const auto line = [&] { return random.text(alphabet, longest) + (random.below(4) == 0 ? "a" : "\n"); };
    const std::string left = line();
    std::string right = line();
    if (random.below(3) == 0)
      right = left.substr(0, random.below(static_cast<uint32_t>(left.size()))) + right;
    const std::vector<uint8_t> kept = ReferenceDiff<char>(left, right).changed[0];
    if (const auto count = common.count(left, right, nullptr)) {
      ASSERT_EQ(*count, std::count(kept.begin(), kept.end() - 1, 0));
    }
    for (uint32_t bits = 0; bits < 64; ++bits) {
      ASSERT_EQ(decided(left, right, optionsOf(bits)), reference(left, right, optionsOf(bits)))
          << testing::PrintToString(left) << testing::PrintToString(right) << " options " << bits;
    }
  }
}

}  // namespace
}  // namespace merivane
