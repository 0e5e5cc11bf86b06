#include "base/temp_files.h"

#include <gtest/gtest.h>

#include "tests/support/known_paths.h"

namespace merivane {
namespace {

TEST(TempFiles, TheFirstFreeNameIsTaken) {
  KnownPaths files({{"C:\\t\\cmp-00007.tmp", FileKind::file}, {"C:\\t\\cmp-99998.tmp", FileKind::folder}});
  uint32_t next[] = {7, 99998, 99999 + 42};
  uint32_t* random = next;
  EXPECT_EQ(MakeTempFileName(files, "C:\\t", "cmp-", [&] { return *random++; }), "C:\\t\\cmp-00042.tmp");
  EXPECT_EQ(random, std::end(next));
  EXPECT_EQ(MakeTempFileName(files, "C:\\", "x", [] { return 5u; }), "C:\\x00005.tmp");
}

}  // namespace
}  // namespace merivane
