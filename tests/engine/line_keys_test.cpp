#include "engine/line_keys.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/random.h"

namespace merivane {
namespace {

/// The rules of a key, character by character; `line` is without its line end.
uint32_t referenceKey(const std::string& line, bool terminated, bool ignoreCase, uint32_t blanks) {
  uint32_t h = 0, saved = 0;
  bool inRun = false, atStart = true;
  const auto hash = [&](char c) {
    if (ignoreCase && c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    h = h * 127u + static_cast<uint32_t>(static_cast<int32_t>(static_cast<int8_t>(c)));
  };
  for (const char c : line) {
    if (c == ' ' || c == '\t' || c == '\v' || c == '\f' || c == '\r') {
      if (blanks & 1) continue;
      if ((blanks & 4) && atStart) continue;
      if (!inRun) {
        inRun = true;
        if (blanks & 8) saved = h;
        hash(blanks & 2 ? ' ' : c);
      } else if (!(blanks & 2)) {
        hash(c);
      }
    } else {
      inRun = atStart = false;
      hash(c);
    }
  }
  if ((blanks & 8) && inRun) h = saved;
  return terminated ? h * 127u + 10u : h;
}

TEST(LineKeys, FollowTheRulesUnderAllOptions) {
  constexpr int rounds = 4000;
  constexpr std::string_view nasty("   \t\v\f\raAzZ@[`{\x80\xa0\xe4\xff\0", 20);
  Random random(1);
  for (int i = 0; i < rounds; ++i) {
    const std::string line = random.text(nasty, 14);
    for (uint32_t bits = 0; bits < 32; ++bits) {
      const CompareOptions options{(bits & 16) != 0, bits & 15};
      for (const bool terminated : {false, true}) {
        ASSERT_EQ(lineKey(terminated ? line + '\n' : line, options),
                  referenceKey(line, terminated, options.ignoreCase, options.ignoreBlanks))
            << testing::PrintToString(line) << " options " << bits << " terminated " << terminated;
      }
    }
  }
}

TEST(LineKeys, TellLinesApartAsTheOptionsSay) {
  constexpr uint32_t all = kIgnoreAllBlanks, multiple = kIgnoreMultipleBlanks, start = kIgnoreBlanksAtStart,
                     end = kIgnoreBlanksAtEnd;
  struct Case {
    std::string left, right;
    CompareOptions options;
    bool equal;
  };
  const Case cases[] = {
      {"a\n", "A\n", {}, false},
      {"a\n", "A\n", {true, 0}, true},
      {"\xe4\n", "\xc4\n", {true, 0}, false},  // only the letters A to Z have a case
      {"a\n", "a", {}, false},
      {"a\n", "a", {true, all | multiple | start | end}, false},
      {"a  b  \n", "a b\n", {false, multiple | end}, true},
      {"a  b  \n", "a b\n", {false, multiple}, false},
      {"a b\n", "ab\n", {false, all}, true},
      {"a b\n", "ab\n", {false, multiple | start | end}, false},
      {" \t a\n", "a\n", {false, start}, true},
      {"a \r\n", "a\n", {false, end}, true},
      {"a\xa0\n", "a\n", {false, all}, false},
      {" \n", "\n", {false, start}, true},
      {" \n", "\n", {false, end}, true},
      {" \n", "\n", {false, multiple}, false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(lineKey(c.left, c.options) == lineKey(c.right, c.options), c.equal)
        << testing::PrintToString(c.left) << testing::PrintToString(c.right) << c.options.ignoreBlanks;
  }
}

TEST(LineTables, HoldEveryLinesStartAndKey) {
  using Starts = std::vector<uint32_t>;
  EXPECT_EQ(tableLines("", {}).starts, Starts({0}));
  EXPECT_EQ(tableLines("\n\n\n", {}).starts, Starts({0, 1, 2, 3}));
  EXPECT_EQ(tableLines("ab\nc", {}).starts, Starts({0, 3, 4}));
  EXPECT_EQ(tableLines("ab\nc\n", {}).starts, Starts({0, 3, 5}));

  Random random(2);
  for (int i = 0; i < 2000; ++i) {
    const std::string text = random.text("\n\nab \t", 40);
    for (const CompareOptions& options : {CompareOptions{}, CompareOptions{true, kIgnoreBlanksAtEnd}}) {
      const LineTable table = tableLines(text, options);
      ASSERT_EQ(table.starts.size(), table.keys.size() + 1);
      ASSERT_EQ(table.starts.back(), text.size());
      for (uint32_t line = 0; line < table.lineCount(); ++line) {
        const std::string bytes =
            text.substr(table.starts[line], table.starts[line + 1] - table.starts[line]);
        ASSERT_EQ(bytes.find('\n'),
                  line + 1 < table.lineCount() || text.back() == '\n' ? bytes.size() - 1 : std::string::npos);
        ASSERT_EQ(table.keys[line], lineKey(bytes, options));
      }
    }
  }
}

}  // namespace
}  // namespace merivane
