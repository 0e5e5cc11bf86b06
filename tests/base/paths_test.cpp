#include "base/paths.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace merivane
