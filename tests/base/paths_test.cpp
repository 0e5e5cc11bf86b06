// Paths, and the command line that names them.

#include <gtest/gtest.h>

#include <utility>

#include "base/argument_list.h"
#include "base/paths.h"
#include "base/temp_files.h"
#include "tests/support/memory_files.h"

namespace merivane {
namespace {

TEST(Paths, ValidityFollowsDriveColonShareAndWildcardRules) {
  const struct {
    const char* name;
    bool path, withDrive, filePath;
  } cases[] = {
      {"", false, false, false},           {":", false, false, false},
      {"C:", false, true, false},          {"c:\\", true, true, false},
      {"C:foo", false, false, false},      {"1:\\a", false, false, false},
      {"C:\\a:b", false, false, false},    {"ab:c", false, false, false},
      {"\\\\server", false, false, false}, {"\\\\server\\share", true, true, true},
      {"a?.txt", false, false, false},     {"a|b", false, false, false},
      {"C:\\dir\\", true, true, false},    {"say \"hi\"", true, true, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(IsValidPath(c.name, false), c.path) << c.name;
    EXPECT_EQ(IsValidPath(c.name, true), c.withDrive) << c.name;
    EXPECT_EQ(IsValidFilePath(c.name), c.filePath) << c.name;
  }
  EXPECT_EQ(FileNamePart("C:\\a\\b.txt"), "b.txt");
  EXPECT_EQ(FileNamePart("b.txt"), "b.txt");
}

TEST(TempFiles, TheFirstFreeNameIsTaken) {
  MemoryFiles files;
  files.files[joinPath("C:\\t", "cmp-00007.tmp")] = {};
  files.files[joinPath("C:\\t", "cmp-99998.tmp")].kind = FileKind::folder;
  const uint32_t numbers[] = {7, 99998, 99999 + 42};
  const uint32_t* next = numbers;
  EXPECT_EQ(MakeTempFileName(files, "C:\\t", "cmp-", [&] { return *next++; }),
            joinPath("C:\\t", "cmp-00042.tmp"));
  EXPECT_EQ(MakeTempFileName(files, joinPath("C:", "") + kPathSeparator, "x", [] { return 5u; }),
            joinPath("C:", "x00005.tmp"));
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
}

TEST(ArgumentList, TheProgramsNameIsLeftOut) {
  for (const char* const line : {"\"C:\\a b\\x.exe\" c", "x.exe c", "\"C:\\dir\\\" c"}) {
    EXPECT_EQ(splitArguments(withoutProgramName(line)), std::vector<std::string>{"c"}) << line;
  }
  EXPECT_EQ(withoutProgramName("x.exe"), "");
}

}  // namespace
}  // namespace merivane
