#include "mergeview/document_file.h"

#include <gtest/gtest.h>

#include "tests/support/edit_run.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/memory_files.h"

namespace merivane {
namespace {

/// Two files, and a view of them.
class DocumentFileTest : public testing::Test {
 protected:
  void load(const std::string& left, const std::string& right = "other") {
    files.files["left"].contents = left;
    files.files["right"].contents = right;
    FileComparison comparison;
    ASSERT_TRUE(compareFiles(files, {"left", "right"}, {}, nullptr, comparison).succeeded());
    run.view().take(std::move(comparison), AfterComparison::top);
  }
  Documents& documents() { return run.view().documents(); }
  std::string saved() {
    EXPECT_EQ(saveDocument(files, "left", documents(), 0), 0u);
    return files.files["left"].contents;
  }

  MemoryFiles files;
  EditRun run{"", "", {}};
};

TEST_F(DocumentFileTest, WhatWasNotEditedComesBackByteForByte) {
  std::string allBytes(2000, ' ');
  for (int byte = 0; byte < 256; ++byte) allBytes += byte == '\r' ? ' ' : static_cast<char>(byte);
  const struct {
    std::string loaded;
    std::string edited;  // after an x at the start and saving
  } cases[] = {
      {"a\nb\n", "xa\nb\n"},
      {"a\r\nb\r\n", "xa\r\nb\r\n"},
      {"a\rb\r", "xa\rb\r"},
      {"a\nb", "xa\nb"},
      {"", "x"},
      // Line ends of other kinds stay where the file's own kind can tell them apart.
      {"a\nb\nc\rd\r\ne", "xa\nb\nc\rd\r\ne"},
      {"a\r\nb\rc\r\nd\r", "xa\r\nb\rc\r\nd\r"},
      {"a\r\nb\r\nc\nd", "xa\r\nb\r\nc\r\nd"},
      {"a\rb\rc\nd", "xa\rb\rc\rd"},
      {allBytes + "\n", "x" + allBytes + "\n"},
  };
  for (const auto& [loaded, edited] : cases) {
    load(loaded);
    const bool mixed = edited != "x" + loaded;
    if (!mixed) {
      EXPECT_EQ(saved(), loaded);
    }
    Editor(run.view(), run.history()).typeChar('x');
    EXPECT_EQ(saved(), edited);
  }
}

TEST_F(DocumentFileTest, ASideKnowsItsFileAgain) {
  load("a\n");
  EXPECT_FALSE(changedOnDisk(files, "left", documents().stamp[0]));
  files.files["left"].modified = 7;
  EXPECT_TRUE(changedOnDisk(files, "left", documents().stamp[0]));
  documents().readOnly[0] = true;
  saved();
  EXPECT_FALSE(changedOnDisk(files, "left", documents().stamp[0]));
  EXPECT_FALSE(documents().readOnly[0]);
  files.files["left"].contents += "longer";
  EXPECT_TRUE(changedOnDisk(files, "left", documents().stamp[0]));
  files.files.erase("left");
  EXPECT_FALSE(changedOnDisk(files, "left", documents().stamp[0])) << "nobody's work is in the way";
}

TEST_F(DocumentFileTest, AFailedSaveLeavesTheFileWhole) {
  load("a\r\nb\r\n");
  Editor(run.view(), run.history()).typeChar('x');
  const FileStamp stamp = documents().stamp[0];
  documents().readOnly[0] = true;
  const auto untouched = [&] {
    return files.files["left"].contents == "a\r\nb\r\n" && documents().stamp[0] == stamp &&
           documents().readOnly[0];
  };
  const auto save = [&] { return saveDocument(files, "left", documents(), 0); };
  const uint32_t steps = failEachStep(files, 77, save, [&](SystemError error) {
    EXPECT_EQ(error, 77u);
    EXPECT_TRUE(untouched());
  });
  EXPECT_GE(steps, 3u) << "creating, writing and committing";
  failEachAllocation([&] { files.files["left"].contents = "a\r\nb\r\n"; },
                     [&] { return saveDocument(files, "left", documents(), 0); },
                     [&](SystemError error) {
                       EXPECT_EQ(error, notEnoughStorage());
                       EXPECT_EQ(files.files["left"].contents, "a\r\nb\r\n");
                     });
}

}  // namespace
}  // namespace merivane
