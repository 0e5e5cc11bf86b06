#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/cli/diff_program.h"
#include "tests/support/random.h"

namespace merivane {
namespace {

std::string patchOf(std::string left, std::string right, std::vector<std::string_view> options = {}) {
  DiffProgram program;
  program.files.files = {{"a/f", {std::move(left)}}, {"b/f", {std::move(right)}}};
  options.insert(options.end(), {"--format=unified", "a/f", "b/f"});
  program.run(options);
  return program.output() + program.errors();
}

TEST(UnifiedFormat, MergesHunksAndCountsLines) {
  const std::string head = "--- a/f\n+++ b/f\n";
  EXPECT_EQ(patchOf("1\n2\n3\n4\n5\n", "1\nx\n3\n4\ny\n", {"-U1"}),
            head + "@@ -1,5 +1,5 @@\n 1\n-2\n+x\n 3\n 4\n-5\n+y\n");
  EXPECT_EQ(patchOf("1\n2\n3\n4\n5\n6\n", "1\nx\n3\n4\n5\ny\n", {"-U1"}),
            head + "@@ -1,3 +1,3 @@\n 1\n-2\n+x\n 3\n@@ -5,2 +5,2 @@\n 5\n-6\n+y\n");
  EXPECT_EQ(patchOf("1\n2\n3\n", "1\nx\n2\n", {"-U0"}), head + "@@ -1,0 +2 @@\n+x\n@@ -3 +3,0 @@\n-3\n");
  EXPECT_EQ(patchOf("", "x", {}), head + "@@ -0,0 +1 @@\n+x\n\\ No newline at end of file\n");
  EXPECT_EQ(patchOf("x", "x\n"), head + "@@ -1 +1 @@\n-x\n\\ No newline at end of file\n+x\n");
  // More lines on the right: there the rows have the insertions first.
  EXPECT_EQ(patchOf("a\n", "b\nc\n"), head + "@@ -1 +1,2 @@\n-a\n+b\n+c\n");
}

TEST(UnifiedFormat, IsMadeOfTheFilesOwnBytes) {
  const std::string head = "--- a/f\n+++ b/f\n";
  EXPECT_EQ(patchOf("x\r\ny\r\n", "x\r\nz\r\n"), head + "@@ -1,2 +1,2 @@\n x\r\n-y\r\n+z\r\n");
  EXPECT_EQ(patchOf("x\r\ny\r\n", "x\nz\n"), head + "@@ -1,2 +1,2 @@\n-x\r\n-y\r\n+x\n+z\n");
  EXPECT_EQ(patchOf("x\r\n", "x\n"), "merivane-diff: the files differ only in their line ends (DOS, UNIX)\n");
  EXPECT_EQ(patchOf("x\r\n", "X\n", {"--ignore-case"}), "");
  // With something ignored the left file's lines are the context.
  EXPECT_EQ(patchOf("x\ny\n", "X\nz\n", {"--ignore-case"}), head + "@@ -1,2 +1,2 @@\n x\n-y\n+z\n");
  // "a\x7F" and "b" with a NUL have one key: 127 * 97 + 127 = 127 * 98.
  const std::string collision("b\0\n", 3);
  const std::string text = "some text, so that a NUL is no sign of binary data\n";
  EXPECT_EQ(patchOf(text + "a\x7F\n", text + collision),
            head + "@@ -1,2 +1,2 @@\n " + text + "-a\x7F\n+" + collision);
}

TEST(UnifiedFormat, QuotesNamesThatWouldNotReadBack) {
  DiffProgram program;
  program.files.files = {{"with blank", {"x\n"}}, {"q\"\\\n\x01 ", {"y\n"}}};
  program.run({"-u", "with blank", "q\"\\\n\x01 "});
  EXPECT_TRUE(program.output().starts_with("--- with blank\t\n+++ \"q\\\"\\\\\\n\\001 \"\n"))
      << program.output();
}

#ifndef _WIN32

/// A folder that goes with everything in it.
class Scratch {
 public:
  Scratch() {
    std::string pattern = (std::filesystem::temp_directory_path() / "merivane-patch.XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  ~Scratch() { std::filesystem::remove_all(path_); }

  void write(const char* name, const std::string& contents) const {
    std::ofstream(path_ / name, std::ios::binary) << contents;
  }
  std::string read(const char* name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  bool run(const std::string& command) const {
    return std::system(("cd '" + path_.string() + "' && " + command + " >/dev/null 2>&1").c_str()) == 0;
  }

 private:
  std::filesystem::path path_;
};

TEST(UnifiedFormat, PatchesGiveExactlyTheRightFile) {
  const Scratch scratch;
  std::vector<std::string> tools;
  if (scratch.run("patch --version")) tools.push_back("patch --binary -s f p");
  if (scratch.run("git --version")) tools.push_back("git apply --unidiff-zero --whitespace=nowarn p");
  if (tools.empty()) GTEST_SKIP() << "neither patch nor git is here";
  Random random(7);
  const auto lines = [&](std::string text) {
    for (uint32_t count = random.below(6); count > 0; --count) {
      constexpr const char* samples[] = {"a\n",      "b\r\n",   "\n",  "-- x\n",
                                         "++ y\r\n", "\\ No\n", "c\r", "@@ -1 +1 @@\n"};
      text.insert(random.below(static_cast<uint32_t>(text.size()) + 1),
                  samples[random.below(std::size(samples))]);
    }
    return text;
  };
  for (int round = 0; round < 60; ++round) {
    const std::string base = lines("1\n2\n3\n4\n5\n6\n7\n8\n");
    std::string left = round % 10 == 0 ? "" : lines(base);
    std::string right = round % 10 == 1 ? "" : lines(base);
    if (random.below(3) == 0) left = left.substr(0, left.find_last_not_of("\r\n") + 1);
    const std::string context = "-U" + std::to_string(random.below(4));
    const std::string patch = patchOf(left, right, {context});
    if (!patch.starts_with("--- ")) continue;
    scratch.write("p", patch);
    for (const std::string& tool : tools) {
      scratch.write("f", left);
      EXPECT_TRUE(scratch.run(tool)) << tool << "\n" << patch;
      EXPECT_EQ(scratch.read("f"), right) << tool << "\n" << patch;
    }
  }
}

#endif

}  // namespace
}  // namespace merivane
