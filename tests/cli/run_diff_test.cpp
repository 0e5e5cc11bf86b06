#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/texts.h"
#include "engine/text_document.h"
#include "tests/cli/diff_program.h"
#include "tests/support/failing_allocator.h"

namespace merivane {
namespace {

constexpr const char* kFormats[] = {"--format=text", "--format=summary", "--format=json", "--format=html",
                                    "--format=unified"};

TEST(RunDiff, ExitStatusIsTheModelsWhateverTheFormat) {
  DiffProgram program;
  program.files.files = {{"a", {"x\ny\n"}},     {"dos", {"x\r\ny\r\n"}}, {"b", {"x\nz\n"}},
                         {"upper", {"X\nY\n"}}, {"empty", {""}},         {"ends", {"\n\n"}},
                         {"open", {"x\ny"}},    {"binary", {"\1\2"}},    {"high", {"\xE9\xE8"}}};
  program.files.folders = {"folder"};
  program.input = "x\ny\n";
  struct Case {
    const char *left, *right;
    int status;
  };
  const Case cases[] = {{"a", "a", 0},      {"a", "dos", 0},   {"a", "-", 0},        {"-", "b", 1},
                        {"a", "b", 1},      {"a", "upper", 1}, {"a", "open", 1},     {"empty", "empty", 0},
                        {"empty", "a", 1},  {"a", "empty", 1}, {"empty", "ends", 1}, {"ends", "ends", 0},
                        {"a", "binary", 2}, {"high", "a", 2},  {"folder", "a", 2},   {"a", "missing", 2},
                        {"a?", "a", 2}};
  for (const char* const format : kFormats) {
    for (const Case& c : cases) {
      EXPECT_EQ(program.run({format, c.left, c.right}), c.status) << format << c.left << c.right;
      EXPECT_EQ(program.output().empty() && program.errors().empty(),
                c.status == 0 && format == kFormats[4] && c.right != std::string_view("dos"))
          << format << c.left << c.right;
      if (c.status == 2) {
        EXPECT_EQ(program.output(), "");
      }
    }
    EXPECT_EQ(program.run({"--ignore-case", format, "a", "upper"}), 0);
  }
}

TEST(RunDiff, TroubleIsToldInTheProductsTexts) {
  DiffProgram program;
  program.files.files = {{"a", {"x\n"}}, {"binary", {"\1\2"}}};
  EXPECT_EQ(program.run({"a", "binary"}), 2);
  EXPECT_EQ(program.errors(), std::string("merivane-diff: ") + text(TextId::rightFileBinary) + "\n");
  EXPECT_EQ(program.run({"missing", "a"}), 2);
  EXPECT_EQ(program.errors(), "merivane-diff: Cannot load left file.\n\nReason: " +
                                  systemErrorText(MemoryFiles::notFound) + "\n");
  EXPECT_EQ(program.run({"a"}), 2);
  EXPECT_EQ(program.errors(),
            "merivane-diff: missing operand after 'a'\nTry 'merivane-diff --help' for more information.\n");
  EXPECT_EQ(program.run({"--version", "--output=v"}), 0);
  EXPECT_TRUE(program.output().starts_with("merivane-diff "));
}

TEST(RunDiff, EveryFailingStepIsTroubleAndLeavesTheOutputFileAlone) {
  constexpr SystemError diskFull = 28;
  for (const char* const format : kFormats) {
    bool failed = true;
    for (uint32_t step = 0; failed; ++step) {
      DiffProgram program;
      // Too much for one write.
      program.files.files = {{"a", {std::string(200000, 'x') + "\n"}}, {"b", {"y\n"}}, {"o", {"before"}}};
      FailingFiles failing(program.files, step, diskFull);
      const int status = program.run({format, "--no-changed", "a", "b", "--output=o"}, failing);
      failed = failing.hasFailed();
      EXPECT_EQ(status, failed ? 2 : 1) << format << step;
      EXPECT_EQ(program.files.files["o"].contents == "before", failed) << format << step;
      EXPECT_EQ(program.errors().find(systemErrorText(diskFull)) != std::string::npos, failed)
          << format << step;
      EXPECT_EQ(program.output(), "");
    }
  }
}

class FullOutput final : public OutputFile {
 public:
  explicit FullOutput(SystemError error) : error_(error) {}
  SystemError write(std::string_view) override { return error_; }
  SystemError commit() override { return 0; }

 private:
  const SystemError error_;
};

TEST(RunDiff, StandardOutputThatFailsIsTroubleAndAClosedPipeIsQuiet) {
  constexpr SystemError diskFull = 28;
  for (const SystemError error : {diskFull, DiffProgram::brokenPipe}) {
    FullOutput full(error);
    DiffProgram program;
    program.files.files = {{"a", {"x\n"}}};
    program.full = &full;
    for (const std::vector<std::string_view>& arguments :
         {std::vector<std::string_view>{"a", "a"}, std::vector<std::string_view>{"--help"}}) {
      EXPECT_EQ(program.run(arguments), 2);
      EXPECT_EQ(program.errors(), error == diskFull
                                      ? "merivane-diff: Could not export comparison results.\n\nReason: " +
                                            systemErrorText(diskFull) + "\n"
                                      : "");
    }
  }
}

TEST(RunDiff, EveryFailingAllocationIsAnAnswer) {
  using testing::AnyOf;
  const auto message = [](const std::string& said) { return "merivane-diff: " + said + "\n"; };
  const std::string outOfMemory = message(text(TextId::outOfMemory));
  const std::string notLoaded[] = {message(outcomeMessage({Result::leftUnreadable, notEnoughStorage()})),
                                   message(outcomeMessage({Result::rightUnreadable, notEnoughStorage()}))};
  for (const char* const format : kFormats) {
    DiffProgram program;
    program.files.files = {{"a", {"same\nalike one\nleft\n"}},
                           {"b", {"same\r\nalike two\r\nmore\r\nright\r\n"}}};
    EXPECT_EQ(program.run({format, "a", "b"}), 1);
    const std::string whole = program.output();
    const std::vector<std::string_view> arguments = {format, "a", "b", "--output=o"};
    failEachAllocation(
        [&] {
          program.prepare();
          program.files.files["o"].contents = "before";
        },
        [&] { return program.runPrepared(arguments, program.files); },
        [&](int status) {
          if (status == 2) {
            EXPECT_THAT(program.errors(), AnyOf(outOfMemory, notLoaded[0], notLoaded[1])) << format;
            EXPECT_EQ(program.files.files["o"].contents, "before") << format;
          } else {
            EXPECT_EQ(program.files.files["o"].contents, whole) << format;
          }
        });
  }
}

}  // namespace
}  // namespace merivane
