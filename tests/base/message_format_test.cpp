#include "base/message_format.h"

#include <gtest/gtest.h>

namespace merivane {
namespace {

TEST(MessageFormat, PlaceholdersConversionsAndEscapes) {
  const char* const cases[][2] = {
      {"<%3>%2%1", "<three %1>-2one"},  // an argument is never a pattern itself
      {"%4 and %11 are left out", " and  are left out"},
      {"%1%%, a%nb%.%!, 100%", "one%, a\nb.!, 100%"},
      {"ends%0 here", "ends"},
      {"%1!s!, %2!ld!, %2!I64X!", "one, -2, FFFFFFFE"},
      {"[%2!u! %2!08lX!|%2!-5d!|%2!05ld!]", "[4294967294 FFFFFFFE|-2   |-0002]"},
      {"[%1!6s!|%1!-6s!|%1!.2s!]", "[   one|one   |on]"},
      {"%1!ld", "one!ld"},  // not a conversion without its end
  };
  for (const auto& [pattern, expected] : cases) {
    EXPECT_EQ(formatMessage(pattern, {"one", -2, "three %1"}), expected) << pattern;
  }
  EXPECT_EQ(formatMessage("%1 %2!c!", {int64_t{1} << 40, 'A'}), "1099511627776 A");
  EXPECT_EQ(formatMessage("%10 %1!d!0", {1, 2, 3, 4, 5, 6, 7, 8, 9, "ten"}), "ten 10");
}

}  // namespace
}  // namespace merivane
