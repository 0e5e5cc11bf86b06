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
  EXPECT_TRUE(program.errors().starts_with("merivane-diff: missing operand after 'a'\nTry "));
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

/// What is understood of a command line, or what is wrong with it.
std::string parsed(const Arguments& arguments) {
  DiffOptions options;
  const std::string complaint = parseOptions(arguments, options);
  if (!complaint.empty() || options.help) return options.help ? "help" : complaint;
  const WriterOptions& writing = options.writing;
  return std::string(options.format->name) + (options.compare.compareChanges ? "" : " unpaired") + " U" +
         std::to_string(writing.contextLines) + " width " + std::to_string(writing.width) + " tabs " +
         std::to_string(writing.look.tabStop) + " blanks " + std::to_string(options.compare.ignoreBlanks) +
         " " + options.output + ":" + options.paths[0] + "," + options.paths[1];
}

TEST(DiffOptions, AreReadInEverySpellingAndOrderOrSaidToBeWrong) {
  const std::pair<Arguments, const char*> cases[] = {
      {{"--format", "json", "--output", "o", "--tab-stop", "8", "-", "--ignore-blanks=start,end", "R"},
       "json U3 width 0 tabs 8 blanks 12 o:-,R"},
      {{"-", "--for=text", "--ou=o", "R", "--ta", "8", "--form=json", "--ignore-bl=end", "--ignore-b",
        "start"},
       "json U3 width 0 tabs 8 blanks 12 o:-,R"},
      {{"-u", "-U5", "-U", "7", "--width=99", "--", "L", "--help"},
       "unified U7 width 99 tabs 4 blanks 0 :L,--help"},
      {{"--no-changed-lines", "-U0", "--unified", "L", "R"},
       "unified unpaired U3 width 0 tabs 4 blanks 0 :L,R"},
      {{"--help", "--nonsense"}, "help"},
      {{}, "missing operand"},
      {{"L", "R", "S"}, "extra operand 'S'"},
      {{"-", "-"}, "standard input can be one side only"},
      {{"--nonsense"}, "unrecognized option '--nonsense'"},
      {{"--ignore"}, "option '--ignore' is ambiguous; possibilities: '--ignore-blanks' '--ignore-case'"},
      {{"L", "R", "--format"}, "option '--format' requires an argument"},
      {{"-x"}, "invalid option -- 'x'"},
      {{"-U4294967296"}, "invalid argument '4294967296' for '-U'"},
      {{"--ignore-blanks=all,"}, "invalid argument 'all,' for '--ignore-blanks'"},
  };
  for (const auto& [arguments, expected] : cases) EXPECT_EQ(parsed(arguments), expected);
}

TEST(DiffOptions, OfFolders) {
  const Arguments arguments = {"--no-subfolders",
                               "--contents=full",
                               "--no-date",
                               "--no-size",
                               "--attributes",
                               "--folder-attributes",
                               "--folder-date",
                               "--include=*.c",
                               "--exclude=",
                               "--match-name-case",
                               "--threads=3",
                               "O",
                               "N"};
  DiffOptions options;
  EXPECT_EQ(parseOptions(arguments, options), "");
  FolderOptions expected;
  expected.subfolders = expected.ignoreNameCase = expected.date = expected.size = false;
  expected.attributes = expected.folderAttributes = expected.folderDate = expected.fullContents = true;
  expected.hasIncludeFilter = expected.hasExcludeFilter = true;
  expected.includeFilter = "*.c";
  expected.threads = 3;
  EXPECT_TRUE(options.folders == expected);
}

}  // namespace
}  // namespace merivane
