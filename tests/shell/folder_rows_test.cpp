// What a row of a folder comparison shows.

#include <gtest/gtest.h>

#include <set>
#include <utility>
#include <vector>

#include "folders/icon_key.h"
#include "shell/result_rows.h"

namespace merivane {
namespace {

TEST(FolderRows, FilesOfATypeShareAnIconAndProgramsHaveTheirOwn) {
  const std::pair<const char*, const char*> cases[] = {
      {"C:\\a\\b.txt", ".txt"},  {"C:\\a.d\\b.tar.gz", ".gz"}, {"C:\\a\\B.EXE", "C:\\a\\B.EXE"},
      {"C:\\a.d\\makefile", ""}, {"C:\\a\\.profile", ""},
  };
  for (const auto& [path, key] : cases) EXPECT_EQ(iconKey(path).value_or(""), key) << path;
}

TEST(FolderRows, IconLocationsNameAFileAndANumber) {
  const std::pair<const char*, const char*> cases[] = {
      {"C:\\x,y\\shell32.dll,-152", "C:\\x,y\\shell32.dll -152"},
      {"\"%SystemRoot%\\a b.dll\", 3", "%SystemRoot%\\a b.dll 3"},
      {"a.exe,0", "a.exe 0"},
      {",1", ""},
      {"a.exe,", ""},
      {"a.exe,x", ""},
  };
  for (const auto& [text, expected] : cases) {
    const auto found = parseIconLocation(text);
    EXPECT_EQ(found ? found->file + ' ' + std::to_string(found->number) : "", expected) << text;
  }
}

TEST(FolderRows, MarksAreToldApartByShapeAndColour) {
  std::set<std::vector<std::pair<int, int>>> shapes;
  std::set<Colour> fills;
  for (const uint8_t operation : {0, 1, 2, 3, 4, 5, 6}) {
    std::vector<std::pair<int, int>> shape;
    for (const MarkPoint& point : markOutline(operation)) shape.emplace_back(point.x, point.y);
    EXPECT_EQ(shape.empty(), operation == 0);
    shapes.insert(shape);
    if (operation != 0) fills.insert(markColours(RowColours(), 0, operation).fill);
  }
  EXPECT_EQ(shapes.size(), 5U) << "the deletions share one";
  EXPECT_EQ(fills.size(), 4U);
}

}  // namespace
}  // namespace merivane
