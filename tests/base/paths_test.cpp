// Paths, and the command line that names them.

#include <gtest/gtest.h>

#include <utility>

#include "base/argument_list.h"
#include "base/paths.h"

namespace merivane {
namespace {

TEST(Paths, ValidityFollowsDriveColonShareAndWildcardRules) {
  const std::tuple<const char*, bool, bool, bool> cases[] = {
      {"", false, false, false},        {"C:", false, true, false},
      {"c:\\", true, true, false},      {"C:foo", false, false, false},
      {"1:\\a", false, false, false},   {"C:\\a:b", false, false, false},
      {"a|b", false, false, false},     {"\\\\server", false, false, false},
      {"C:\\dir\\", true, true, false}, {"\\\\server\\share", true, true, true},
  };
  for (const auto& [name, path, withDrive, filePath] : cases) {
    EXPECT_EQ(IsValidPath(name, false), path) << name;
    EXPECT_EQ(IsValidPath(name, true), withDrive) << name;
    EXPECT_EQ(IsValidFilePath(name), filePath) << name;
  }
}

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
  for (const std::string program : {"\"C:\\a b\\x.exe\"", "x.exe", "\"C:\\dir\\\""}) {
    EXPECT_EQ(splitArguments(withoutProgramName(program + " c")), std::vector<std::string>{"c"}) << program;
    EXPECT_EQ(withoutProgramName(program), "");
  }
}

}  // namespace
}  // namespace merivane
