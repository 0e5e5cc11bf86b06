#include <gtest/gtest.h>

#include "cli/diff_options.h"

namespace merivane {
namespace {

using Arguments = std::vector<std::string_view>;

TEST(DiffOptions, AreReadInEverySpellingAndOrder) {
  const Arguments spellings[] = {
      {"--format", "json", "--output", "o", "--tab-stop", "8", "-", "--ignore-blanks=start,end", "R"},
      {"-", "--fo=text", "--ou=o", "R", "--ta", "8", "--form=json", "--ignore-bl=end", "--ignore-b", "start"},
      {"-u", "-U5", "-U", "7", "--format=json", "--output=o", "--t=8", "--ignore-b=start,end", "--", "-",
       "R"},
  };
  for (const Arguments& arguments : spellings) {
    DiffOptions options;
    EXPECT_EQ(parseOptions(arguments, options), "");
    EXPECT_EQ(options.format, DiffFormat::json);
    EXPECT_EQ(options.output, "o");
    EXPECT_EQ(options.tabStop, 8u);
    EXPECT_EQ(options.compare.ignoreBlanks, kIgnoreBlanksAtStart | kIgnoreBlanksAtEnd);
    EXPECT_EQ(options.paths[0] + options.paths[1], "-R");
  }
  DiffOptions options;
  EXPECT_EQ(parseOptions(Arguments{"--no-changed-lines", "-U0", "--width=99", "--", "L", "--help"}, options),
            "");
  EXPECT_FALSE(options.compare.compareChanges || options.help);
  EXPECT_EQ(options.contextLines, 0u);
  EXPECT_EQ(options.width, 99u);
  EXPECT_EQ(parseOptions(Arguments{"--unified", "L", "R"}, options), "");
  EXPECT_EQ(options.contextLines, 3u);
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
      {{"L"}, "missing operand after 'L'"},
      {{"-", "-"}, "standard input can be one side only"},
      {{"--nonsense"}, "unrecognized option '--nonsense'"},
      {{"--ignore"}, "option '--ignore' is ambiguous; possibilities: '--ignore-blanks' '--ignore-case'"},
      {{"--help=me"}, "option '--help' doesn't allow an argument"},
      {{"L", "R", "--format"}, "option '--format' requires an argument"},
      {{"-x"}, "invalid option -- 'x'"},
      {{"L", "R", "-U"}, "option requires an argument -- 'U'"},
      {{"--unified="}, "invalid argument '' for '--unified'"},
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
