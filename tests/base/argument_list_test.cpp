#include "base/argument_list.h"

#include <gtest/gtest.h>

#include <utility>

namespace merivane {
namespace {

TEST(ArgumentList, ArgumentsArePartedAsTheSystemPartsThem) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {" \t ", {}},
      {"a b\tc", {"a", "b", "c"}},
      {R"("C:\a b\c.txt"  "d")", {R"(C:\a b\c.txt)", "d"}},
      {R"(C:\dir\ "C:\dir\\" x)", {R"(C:\dir\)", R"(C:\dir\)", "x"}},
      {R"("a\"b" c\"d)", {R"(a"b)", R"(c"d)"}},
      {R"("a\\\"b" \\\\server)", {R"(a\"b)", R"(\\\\server)"}},
      {R"(a" b"c "d""e f")", {"a bc", R"(d"e f)"}},
      {R"("" x "")", {"", "x", ""}},
      {R"("open end\)", {R"(open end\)"}},
  };
  for (const auto& [line, arguments] : cases) EXPECT_EQ(splitArguments(line), arguments) << line;
}

TEST(ArgumentList, TheProgramsNameIsLeftOut) {
  for (const char* const line : {"\"C:\\a b\\x.exe\" c", "x.exe c", "\"C:\\dir\\\" c"}) {
    EXPECT_EQ(splitArguments(withoutProgramName(line)), std::vector<std::string>{"c"}) << line;
  }
  EXPECT_EQ(withoutProgramName("x.exe"), "");
}

}  // namespace
}  // namespace merivane
