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

const std::string kHead = "--- a/f\n+++ b/f\n";

std::string patchOf(std::string left, std::string right, std::vector<std::string_view> options = {}) {
  DiffProgram program;
  program.files.files = {{"a/f", {std::move(left)}}, {"b/f", {std::move(right)}}};
  options.insert(options.end(), {"--format=unified", "a/f", "b/f"});
  program.run(options);
  return program.output() + program.errors();
}

TEST(UnifiedFormat, MergesHunksCountsLinesAndKeepsTheFilesOwnBytes) {
  const struct {
    std::string left, right;
    std::vector<std::string_view> options;
    std::string hunks;
  } cases[] = {
      {"1\n2\n3\n4\n5\n", "1\nx\n3\n4\ny\n", {"-U1"}, "@@ -1,5 +1,5 @@\n 1\n-2\n+x\n 3\n 4\n-5\n+y\n"},
      {"1\n2\n3\n4\n5\n",
       "x\n2\n3\n4\ny\n",
       {"-U1"},
       "@@ -1,2 +1,2 @@\n-1\n+x\n 2\n@@ -4,2 +4,2 @@\n 4\n-5\n+y\n"},
      {"1\n2\n3\n", "1\nx\n2\n", {"-U0"}, "@@ -1,0 +2 @@\n+x\n@@ -3 +3,0 @@\n-3\n"},
      {"", "x", {}, "@@ -0,0 +1 @@\n+x\n\\ No newline at end of file\n"},
      // More lines on the right: there the rows have the insertions first.
      {"a\n", "b\nc\n", {}, "@@ -1 +1,2 @@\n-a\n+b\n+c\n"},
      // With something ignored the left file's lines are the context.
      {"x\ny\n", "X\nz\n", {"--ignore-case"}, "@@ -1,2 +1,2 @@\n x\n-y\n+z\n"},
      // "a\x7F" and "b" with a NUL have one key: 127 * 97 + 127 = 127 * 98.
      {"some text\na\x7F\n",
       {"some text\nb\0\n", 13},
       {},
       {"@@ -1,2 +1,2 @@\n some text\n-a\x7F\n+b\0\n", 35}},
  };
  for (const auto& c : cases) EXPECT_EQ(patchOf(c.left, c.right, c.options), kHead + c.hunks);
  EXPECT_EQ(patchOf("x\r\n", "x\n"), "merivane-diff: the files differ only in their line ends (DOS, UNIX)\n");
  EXPECT_EQ(patchOf("x\r\n", "X\n", {"--ignore-case"}), "");

  // Names that would not read back are quoted.
  DiffProgram program;
  program.files.files = {{"with blank", {"x\n"}}, {"q\"\\\n\x01 ", {"y\n"}}};
  program.run({"-u", "with blank", "q\"\\\n\x01 "});
  EXPECT_TRUE(program.output().starts_with("--- with blank\t\n+++ \"q\\\"\\\\\\n\\001 \"\n"));
}

#ifndef _WIN32

TEST(UnifiedFormat, PatchesGiveExactlyTheRightFile) {
  if (std::system("git --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "no git is here to apply them";
  std::string folder = (std::filesystem::temp_directory_path() / "merivane-patch.XXXXXX").string();
  ASSERT_NE(::mkdtemp(folder.data()), nullptr);
  const std::string apply =
      "cd '" + folder + "' && git apply --unidiff-zero --whitespace=nowarn p 2>/dev/null";
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
    if (!patch.starts_with(kHead)) continue;
    std::ofstream(folder + "/p", std::ios::binary) << patch;
    std::ofstream(folder + "/f", std::ios::binary) << left;
    EXPECT_EQ(std::system(apply.c_str()), 0) << patch;
    std::ifstream patched(folder + "/f", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(patched), {}), right) << patch;
  }
  std::filesystem::remove_all(folder);
}

#endif

}  // namespace
}  // namespace merivane
