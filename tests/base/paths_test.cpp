#include "base/paths.h"

#include <gtest/gtest.h>

namespace merivane {
namespace {

TEST(Paths, ValidityFollowsDriveColonShareAndWildcardRules) {
  struct Case {
    const char* name;
    bool path, withDrive, filePath;
  };
  const Case cases[] = {
      {"", false, false, false},
      {":", false, false, false},
      {"C:", false, true, false},
      {"c:\\", true, true, false},
      {"C:foo", false, false, false},
      {"1:\\a", false, false, false},
      {"C:\\a:b", false, false, false},
      {"ab:c", false, false, false},
      {"\\\\server", false, false, false},
      {"\\\\server\\share", true, true, true},
      {"a?.txt", false, false, false},
      {"a|b", false, false, false},
      {"dir\\file", true, true, true},
      {"C:\\dir\\", true, true, false},
      {"a", true, true, true},
      {"say \"hi\"", true, true, true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(IsValidPath(c.name, false), c.path) << c.name;
    EXPECT_EQ(IsValidPath(c.name, true), c.withDrive) << c.name;
    EXPECT_EQ(IsValidFilePath(c.name), c.filePath) << c.name;
  }
}

TEST(Paths, FileNamePartIsBehindTheLastBackslash) {
  EXPECT_EQ(FileNamePart("C:\\a\\b.txt"), "b.txt");
  EXPECT_EQ(FileNamePart("C:\\a\\"), "");
  EXPECT_EQ(FileNamePart("b.txt"), "b.txt");
}

}  // namespace
}  // namespace merivane
