#include <gtest/gtest.h>

#include "tests/cli/diff_program.h"

namespace merivane {
namespace {

TEST(JsonFormat, HasALineForEveryRowWithLinesPositionsAndMarks) {
  DiffProgram program;
  program.files.files = {{"l\"\\\x01\xC3\xA9", {"same\nold value\nleft only\nend"}},
                         {"r", {"same\r\nnew values\r\nend"}}};
  EXPECT_EQ(program.run({"--format=json", "--ignore-blanks=end", "l\"\\\x01\xC3\xA9", "r"}), 1);
  EXPECT_EQ(
      program.output(),
      "{\"left\":{\"path\":\"l\\\"\\\\\\u0001\\u00c3\\u00a9\",\"lineEnd\":\"UNIX\"},"
      "\"right\":{\"path\":\"r\",\"lineEnd\":\"DOS\"},\"diffs\":2,\"lines\":3,\"rows\":[\n"
      "{\"status\":\"same\",\"left\":{\"line\":1,\"position\":0},\"right\":{\"line\":1,\"position\":0}},\n"
      "{\"status\":\"left\",\"left\":{\"line\":2,\"position\":5},\"right\":{\"line\":null,\"position\":5}},\n"
      "{\"status\":\"left\",\"left\":{\"line\":3,\"position\":15},\"right\":{\"line\":null,\"position\":5}},"
      "\n"
      "{\"status\":\"right\",\"left\":{\"line\":null,\"position\":25},\"right\":{\"line\":2,\"position\":5}},"
      "\n"
      "{\"status\":\"same\",\"left\":{\"line\":4,\"position\":25},\"right\":{\"line\":3,\"position\":16}}\n"
      "]}\n");

  program.files.files = {{"l", {"the cat sat down\nx\n"}}, {"r", {"The cat sits down\nx"}}};
  EXPECT_EQ(program.run({"--format=json", "l", "r"}), 1);
  const std::string marked = program.output();
  EXPECT_NE(marked.find("\"leftMarks\":[[0,1],[9,10]],\"rightMarks\":[[0,1],[9,10],[11,12]]},\n"),
            std::string::npos)
      << marked;
  EXPECT_NE(marked.find("\"leftMarks\":[[1,2]],\"rightMarks\":[]}\n]}\n"), std::string::npos) << marked;
}

/// Two texts in, the lines between heading and summary out.
std::string textRows(DiffProgram& program, const char* left, const char* right,
                     std::vector<std::string_view> options) {
  program.files.files = {{"L", {left}}, {"R", {right}}};
  options.insert(options.end(), {"L", "R"});
  program.run(options);
  const std::string output = program.output();
  const size_t begin = output.find('\n') + 1;
  return output.substr(begin, output.rfind('\n', output.size() - 2) + 1 - begin);
}

TEST(TextFormat, AlignsRowsInTheWidthThereIs) {
  DiffProgram program;
  // 3 columns in the middle and two cells of 12, of 10 behind real line numbers.
  program.columns = "27";
  EXPECT_EQ(
      textRows(program, "one\nleft\n\nlong line, too long\n\n", "one\n\nlong line, too LONG\n\nend", {}),
      "1 one          1 one\n"
      "2 left       <\n"
      "3              2\n"
      "4 long line~ | 3 long line~\n"
      "5              4\n"
      "             > 5 end\n");
  EXPECT_EQ(textRows(program, "one\nleft\n", "one\n", {"--line-numbers=virtual"}),
            "1 one           one\n"
            "2 left        <\n");
  program.terminal = {.isTerminal = true, .width = 27};
  program.columns = nullptr;
  EXPECT_EQ(textRows(program, "123456789012\n\n", "1234567890123\n\n", {"--line-numbers=none"}),
            "123456789012 | 12345678901~\n\n");
  EXPECT_EQ(textRows(program, "a\n", "a\n", {"--line-numbers=none", "--width=33"}), "a                 a\n");
}

TEST(TextFormat, ShowsTabsControlBytesWhiteSpaceAndWholeCharacters) {
  DiffProgram program;
  program.columns = "27";
  const std::vector<std::string_view> plain = {"--line-numbers=none"};
  EXPECT_EQ(textRows(program, "a\tb\n\t\x01\x7F...\n", "a\tb\n\t\x01\x7F...\n", plain),
            "a   b          a   b\n"
            "    ^A^?...        ^A^?...\n");
  EXPECT_EQ(textRows(program, " \tb\n", " \tb\n", {"--line-numbers=none", "--show-white", "--tab-stop=3"}),
            ".> b$          .> b$\n");
  program.terminal.utf8 = true;
  // Twelve letters of two bytes fit; the last byte of the second line is half a letter.
  const std::string letters =
      "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4";
  const std::string text = letters + "\xC3\xA4\n" + letters + "xx\n\xC3";
  const std::string expected = letters + "\xC3\xA4   " + letters + "\xC3\xA4\n" + letters +
                               "\xE2\x80\xA6   " + letters + "\xE2\x80\xA6\n\xC3              \xC3\n";
  // So many bytes from 0x80 on would pass for binary data at the start of a file.
  const std::string filler(1024, 'x');
  const std::string rows =
      textRows(program, (filler + "\n" + text).c_str(), (filler + "\n" + text).c_str(), plain);
  EXPECT_EQ(rows.substr(rows.find('\n') + 1), expected);
}

TEST(TextFormat, ColoursForATerminalOrOnRequest) {
  DiffProgram program;
  program.columns = "27";
  const auto isColoured = [&](std::vector<std::string_view> options) {
    return textRows(program, "a\n", "b\n", options).find('\x1b') != std::string::npos;
  };
  EXPECT_FALSE(isColoured({}));
  EXPECT_TRUE(isColoured({"--color=always"}));
  program.terminal = {.isTerminal = true, .showsColours = true};
  program.noColour = "";
  EXPECT_TRUE(isColoured({}));
  EXPECT_FALSE(isColoured({"--color=never"}));
  program.noColour = "1";
  EXPECT_FALSE(isColoured({}));
  EXPECT_TRUE(isColoured({"--color=always"}));

  // What differs is marked within a changed line, and a line end where it is the difference.
  EXPECT_EQ(
      textRows(program, "same as x\nend\n", "same as y\nend", {"--color=always", "--line-numbers=none"}),
      "same as \x1b[7;31mx\x1b[m    \x1b[33m|\x1b[m same as \x1b[7;32my\x1b[m\n"
      "end\x1b[7;31m$\x1b[m         \x1b[33m|\x1b[m end\n");
}

TEST(TextFormat, SectionsOpenWithTheirLines) {
  DiffProgram program;
  program.columns = "37";
  EXPECT_EQ(textRows(program, "1\n2\n3\n4\n5\nleft\n6\n", "1\n2\n3\n4\n5\n6\nright", {"--scope=differences"}),
            "-- Line 6 --\n"
            "6 left            <\n"
            "                    -- Line 7 --\n"
            "                  > 7 right\n");
  program.files.files = {{"a/very/long/way/to/the/left", {""}}, {"R", {""}}};
  program.run({"--scope=context", "a/very/long/way/to/the/left", "R"});
  EXPECT_EQ(program.output(), "...the/left (DOS)   R (DOS)\nNo differences\n");
}

}  // namespace
}  // namespace merivane
