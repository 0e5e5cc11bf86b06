#include "cli/run_diff.h"

#include <gtest/gtest.h>

#include "base/texts.h"
#include "tests/cli/diff_program.h"
#include "tests/support/failing_allocator.h"

namespace merivane {
namespace {

constexpr SystemError kDiskFull = 28;

constexpr const char* kFormats[] = {"--format=text", "--format=summary", "--format=json", "--format=html",
                                    "--format=unified"};

TEST(RunDiff, ExitStatusIsTheModelsWhateverTheFormat) {
  DiffProgram program;
  program.files.files = {{"a", {"x\ny\n"}},     {"dos", {"x\r\ny\r\n"}}, {"b", {"x\nz\n"}},
                         {"upper", {"X\nY\n"}}, {"empty", {""}},         {"ends", {"\n\n"}},
                         {"open", {"x\ny"}},    {"binary", {"\1\2"}}};
  program.input = "x\ny\n";
  const struct {
    const char *left, *right;
    int status;
  } cases[] = {{"a", "a", 0},         {"a", "dos", 0},   {"a", "-", 0},      {"-", "b", 1},
               {"a", "b", 1},         {"a", "upper", 1}, {"a", "open", 1},   {"empty", "a", 1},
               {"empty", "empty", 0}, {"ends", "-", 1},  {"binary", "a", 2}, {"a", "missing", 2}};
  for (const char* const format : kFormats) {
    for (const auto& c : cases) {
      SCOPED_TRACE(std::string(format) + " " + c.left + " " + c.right);
      EXPECT_EQ(program.run({format, c.left, c.right}), c.status);
      // A patch of equal files is empty, and says where line ends alone differ.
      const bool patch = format == kFormats[4];
      EXPECT_EQ(program.output().empty(), c.status == 2 || (c.status == 0 && patch));
      EXPECT_EQ(program.errors().empty(), c.status != 2 && !(patch && c.right == std::string_view("dos")));
    }
    EXPECT_EQ(program.run({"--ignore-case", format, "a", "upper"}), 0);
  }
}

TEST(RunDiff, TroubleIsToldInTheProductsTexts) {
  DiffProgram program;
  program.files.files = {{"a", {"x\n"}}, {"binary", {"\1\2"}}};
  EXPECT_EQ(program.run({"a", "binary"}), 2);
  EXPECT_EQ(program.errors(), std::string("merivane-diff: ") + text(TextId::rightFileBinary) + "\n");
  EXPECT_EQ(program.run({"a"}), 2);
  EXPECT_EQ(program.errors(),
            "merivane-diff: missing operand after 'a'\nTry 'merivane-diff --help' for more information.\n");
  EXPECT_EQ(program.run({"--version", "--output=v"}), 0);
  EXPECT_TRUE(program.output().starts_with("merivane-diff "));
  // Standard output that fails is trouble; that nobody reads it any more is no news.
  for (const SystemError error : {kDiskFull, DiffProgram::brokenPipe}) {
    for (const bool onCommit : {false, true}) {
      program.prepare();
      program.streams.failStep(onCommit, error);
      EXPECT_EQ(program.runPrepared({"a", "a"}), 2);
      EXPECT_EQ(program.errors(), error == DiffProgram::brokenPipe
                                      ? ""
                                      : "merivane-diff: Could not export comparison results.\n\nReason: " +
                                            systemErrorText(error) + "\n");
    }
  }
}

TEST(RunDiff, EveryFailingStepOrAllocationIsTroubleAndLeavesTheOutputFileAlone) {
  for (const char* const format : kFormats) {
    SCOPED_TRACE(format);
    DiffProgram program;
    // Too much for one write.
    program.files.files = {{"a", {"same\nalike one\nleft\n" + std::string(70000, 'x') + "\n"}},
                           {"b", {"same\r\nalike two\r\nmore\r\nright\r\n"}}};
    const std::vector<std::string_view> arguments = {format, "a", "b", "--output=o"};
    EXPECT_EQ(program.run(arguments), 1);
    const std::string whole = program.files.files["o"].contents;
    const auto prepare = [&] {
      program.prepare();
      program.files.files["o"].contents = "before";
    };
    const auto run = [&] { return program.runPrepared(arguments); };
    const auto check = [&](int status, SystemError error) {
      EXPECT_EQ(program.output(), "");
      EXPECT_EQ(program.files.files["o"].contents, status == 2 ? "before" : whole);
      EXPECT_EQ(program.errors().find(systemErrorText(error)) != std::string::npos ||
                    program.errors().find(text(TextId::outOfMemory)) != std::string::npos,
                status == 2);
    };
    prepare();
    failEachStep(program.files, kDiskFull, run, [&](int status) {
      EXPECT_EQ(status, 2);
      check(status, kDiskFull);
      prepare();
    });
    failEachAllocation(prepare, run, [&](int status) { check(status, notEnoughStorage()); });
  }
}

}  // namespace
}  // namespace merivane
