#include "cli/run_diff.h"

#include <gtest/gtest.h>

#include "base/texts.h"
#include "cli/diff_options.h"
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
                         {"upper", {"X\nY\n"}}, {"empty", {""}},         {"open", {"x\ny"}},
                         {"binary", {"\1\2"}}};
  program.input = "x\ny\n";
  const struct {
    const char *left, *right;
    int status;
  } cases[] = {{"a", "a", 0},         {"a", "dos", 0},   {"a", "-", 0},      {"-", "b", 1},
               {"a", "b", 1},         {"a", "upper", 1}, {"a", "open", 1},   {"empty", "a", 1},
               {"empty", "empty", 0}, {"a?", "a", 2},    {"binary", "a", 2}, {"a", "missing", 2}};
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
  program.files.files["a"].contents = "x\n";
  EXPECT_EQ(program.run({"a"}), 2);
  EXPECT_EQ(program.errors(),
            "merivane-diff: missing operand after 'a'\nTry 'merivane-diff --help' for more information.\n");
  EXPECT_EQ(program.run({"--output=v", "--version"}), 0);
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

using Arguments = std::vector<std::string_view>;

TEST(DiffOptions, AreReadInEverySpellingAndOrder) {
  const Arguments spellings[] = {
      {"--format", "json", "--output", "o", "--tab-stop", "8", "-", "--ignore-blanks=start,end", "R"},
      {"-", "--for=text", "--ou=o", "R", "--ta", "8", "--form=json", "--ignore-bl=end", "--ignore-b",
       "start"},
      {"-u", "-U5", "-U", "7", "--format=json", "--output=o", "--ta=8", "--ignore-b=start,end", "--", "-",
       "R"},
  };
  for (const Arguments& arguments : spellings) {
    DiffOptions options;
    EXPECT_EQ(parseOptions(arguments, options), "");
    EXPECT_EQ(options.format->name, "json");
    EXPECT_EQ(options.output, "o");
    EXPECT_EQ(options.writing.look.tabStop, 8u);
    EXPECT_EQ(options.compare.ignoreBlanks, kIgnoreBlanksAtStart | kIgnoreBlanksAtEnd);
    EXPECT_EQ(options.paths[0] + options.paths[1], "-R");
  }
  DiffOptions options;
  EXPECT_EQ(parseOptions(Arguments{"--no-changed-lines", "-U0", "--width=99", "--", "L", "--help"}, options),
            "");
  EXPECT_FALSE(options.compare.compareChanges);
  EXPECT_FALSE(options.help);
  EXPECT_EQ(options.writing.contextLines, 0u);
  EXPECT_EQ(options.writing.width, 99u);
  EXPECT_EQ(parseOptions(Arguments{"--unified", "L", "R"}, options), "");
  EXPECT_EQ(options.writing.contextLines, 3u);
  EXPECT_EQ(parseOptions(Arguments{"--help", "--nonsense"}, options), "");
  EXPECT_TRUE(options.help);
}

TEST(DiffOptions, SayWhatIsWrong) {
  const struct {
    Arguments arguments;
    const char* complaint;
  } cases[] = {
      {{}, "missing operand"},
      {{"L", "R", "S"}, "extra operand 'S'"},
      {{"-", "-"}, "standard input can be one side only"},
      {{"--nonsense"}, "unrecognized option '--nonsense'"},
      {{"--ignore"}, "option '--ignore' is ambiguous; possibilities: '--ignore-blanks' '--ignore-case'"},
      {{"--help=me"}, "option '--help' doesn't allow an argument"},
      {{"L", "R", "--format"}, "option '--format' requires an argument"},
      {{"-x"}, "invalid option -- 'x'"},
      {{"L", "R", "-U"}, "option requires an argument -- 'U'"},
      {{"--unified="}, "invalid argument '' for '--unified'"},
      {{"-U5x"}, "invalid argument '5x' for '-U'"},
      {{"-U4294967296"}, "invalid argument '4294967296' for '-U'"},
      {{"--tab-stop=17"}, "invalid argument '17' for '--tab-stop'"},
      {{"--ignore-blanks=all,"}, "invalid argument 'all,' for '--ignore-blanks'"},
      {{"--output="}, "invalid argument '' for '--output'"},
  };
  for (const auto& c : cases) {
    DiffOptions options;
    EXPECT_EQ(parseOptions(c.arguments, options), c.complaint);
  }
}

}  // namespace
}  // namespace merivane
