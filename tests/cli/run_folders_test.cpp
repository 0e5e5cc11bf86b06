#include <gtest/gtest.h>

#include <algorithm>

#include "base/paths.h"
#include "tests/cli/diff_program.h"

namespace merivane {
namespace {

/// Two folders with an entry for each category, and one that cannot be read.
class RunFoldersTest : public testing::Test {
 protected:
  RunFoldersTest() {
    for (const char* const folder : {"O", "N", "O/gone", "O/dir", "N/dir"})
      add(folder).kind = FileKind::folder;
    add("O/dir/a&b").contents = "one\n";
    add("N/dir/a&b").contents = "two and\n";
    add("O/gone/below").contents = "old\n";
    add("N/come").contents = "new\n";
    add("O/same").contents = add("N/same").contents = "same\n";
  }
  MemoryFiles::File& add(const std::string& path) { return program_.files.files[inFolder(path)]; }
  int run(std::vector<std::string_view> arguments) {
    arguments.insert(arguments.end(), {"O", "N"});
    const int status = program_.run(arguments);
    output_ = program_.output();
    std::replace(output_.begin(), output_.end(), '\\', '/');
    return status;
  }

  DiffProgram program_;
  std::string output_;
};

TEST_F(RunFoldersTest, EveryFormatTellsTheSame) {
  EXPECT_EQ(run({}), 1);
  EXPECT_EQ(output_,
            "Changed  dir/a&b  (larger)\nOld      gone/\nNew      come\n"
            "Changed: 1, Old: 1, New: 1, Same: 1\n");
  EXPECT_EQ(run({"--color=always", "--show=same,new"}), 1);
  EXPECT_EQ(output_, "\x1b[32mNew      come\x1b[m\nSame     same\nChanged: 1, Old: 1, New: 1, Same: 1\n");
  EXPECT_EQ(run({"--format=json", "--contents=quick"}), 1);
  EXPECT_EQ(output_,
            "{\"oldPath\":\"O\",\"newPath\":\"N\",\"counts\":{\"old\":1,\"new\":1,\"changed\":1,\"same\":1,"
            "\"notCompared\":0},\n\"old\":[\n{\"name\":\"gone\",\"folder\":true}\n],\n"
            "\"new\":[\n{\"name\":\"come\",\"folder\":false}\n],\n\"changed\":[\n" +
                std::string(kPathSeparator == '/' ? "{\"name\":\"dir/a&b\"" : "{\"name\":\"dir//a&b\"") +
                ",\"folder\":false,\"differences\":[\"larger\",\"contents\"]}\n],\n"
                "\"same\":[\n{\"name\":\"same\",\"folder\":false}\n]\n}\n");
  EXPECT_EQ(run({"--format=html"}), 1);
  EXPECT_NE(output_.find("<td>dir/a&amp;b</td><td>(larger)</td>"), std::string::npos);
  EXPECT_NE(output_.find("<h2>Old (1)</h2>"), std::string::npos);
  EXPECT_EQ(output_.find("<h2>Same"), std::string::npos);
  EXPECT_EQ(run({"-u"}), 1);
  EXPECT_EQ(
      output_,
      "diff --git a/gone/below b/gone/below\ndeleted file mode 100644\n"
      "--- a/gone/below\n+++ /dev/null\n@@ -1 +0,0 @@\n-old\n"
      "diff --git a/dir/a&b b/dir/a&b\n"
      "--- a/dir/a&b\n+++ b/dir/a&b\n@@ -1 +1 @@\n-one\n+two and\n"
      "diff --git a/come b/come\nnew file mode 100644\n--- /dev/null\n+++ b/come\n@@ -0,0 +1 @@\n+new\n");
}

TEST_F(RunFoldersTest, WhatCouldNotBeComparedIsTroubleButNotTheEnd) {
  add("O/same").error = MemoryFiles::denied;
  add("N/come").contents = std::string("\0\1", 2);
  EXPECT_EQ(run({"--contents=quick"}), 2);
  EXPECT_NE(output_.find("Same: 1, Not compared: 1\n"), std::string::npos);
  EXPECT_NE(program_.errors().find("same: It could not be read."), std::string::npos);
  EXPECT_EQ(run({"--format=unified"}), 2);
  EXPECT_NE(output_.find("+two and\n"), std::string::npos);
  EXPECT_EQ(output_.find("come"), std::string::npos);
  EXPECT_NE(program_.errors().find("come: "), std::string::npos);
  EXPECT_EQ(program_.run({"O", "N", "--no-size"}), 1);
  EXPECT_EQ(program_.run({"O", "same"}), 2);
  add("file").contents = "";
  EXPECT_EQ(program_.run({"O", "file"}), 2);
  EXPECT_EQ(program_.output(), "");
}

}  // namespace
}  // namespace merivane
