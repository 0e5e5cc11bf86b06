#include "base/message_format.h"

#include <gtest/gtest.h>

namespace merivane {
namespace {

TEST(MessageFormat, PlaceholdersAndEscapes) {
  const struct {
    std::string_view pattern;
    const char* expected;
  } cases[] = {
      {"", ""},
      {"plain", "plain"},
      {"%1 - %2", "one - -2"},
      {"%2%1%2", "-2one-2"},
      {"<%3>", "<three %1>"},  // an argument is never a pattern itself
      {"%4 is left out", " is left out"},
      {"%11 is eleven", " is eleven"},
      {"%1%%, 100%", "one%, 100%"},
      {"a%nb%.%!", "a\nb.!"},
      {"ends%0 here", "ends"},
      {"%1!s!, %2!d!.", "one, -2."},
      {"%2!ld! %2!i! %2!lld! %2!I64d!", "-2 -2 -2 -2"},
      {"%2!u! %2!x! %2!lX!", "4294967294 fffffffe FFFFFFFE"},
      {"[%2!5d!|%2!-5d!|%2!05ld!|%2!+d!]", "[   -2|-2   |-0002|-2]"},
      {"[%1!6s!|%1!-6s!|%1!.2s!]", "[   one|one   |on]"},
      {"%1!ld", "one!ld"},  // not a conversion without its end
      {"%1!", "one!"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(formatMessage(c.pattern, {"one", -2, "three %1"}), c.expected) << c.pattern;
  }
}

TEST(MessageFormat, NumbersBeyond32BitsAndCharacters) {
  EXPECT_EQ(formatMessage("%1 %1!ld!", {int64_t{1} << 40}), "1099511627776 1099511627776");
  EXPECT_EQ(formatMessage("%1!c!%2!08lX!", {'A', 0xBEEF}), "A0000BEEF");
}

TEST(MessageFormat, TenthArgument) {
  EXPECT_EQ(formatMessage("%10 %1!d!0", {1, 2, 3, 4, 5, 6, 7, 8, 9, "ten"}), "ten 10");
}

}  // namespace
}  // namespace merivane
