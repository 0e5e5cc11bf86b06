#include <gtest/gtest.h>

#include "tests/cli/diff_program.h"

namespace merivane {
namespace {

TEST(JsonFormat, HasALineForEveryRowWithLinesPositionsAndMarks) {
  DiffProgram program;
  program.files.files = {{"l\"\\\x01\xC3\xA9", {"only\ns\nt\nthe cat sat down\nx\n"}},
                         {"r", {"s\r\nnew\r\nt\r\nThe cat sits down\r\nx"}}};
  EXPECT_EQ(program.run({"--format=json", "l\"\\\x01\xC3\xA9", "r"}), 1);
  EXPECT_EQ(program.output(), R"({"left":{"path":"l\"\\\u0001\u00c3\u00a9","lineEnd":"UNIX"},)"
                              R"("right":{"path":"r","lineEnd":"DOS"},"diffs":3,"lines":4,"rows":[
{"status":"left","left":{"line":1,"position":0},"right":{"line":null,"position":0}},
{"status":"same","left":{"line":2,"position":5},"right":{"line":1,"position":0}},
{"status":"right","left":{"line":null,"position":7},"right":{"line":2,"position":2}},
{"status":"same","left":{"line":3,"position":7},"right":{"line":3,"position":6}},
{"status":"changed","left":{"line":4,"position":9},"right":{"line":4,"position":8},)"
                              R"("leftMarks":[[0,1],[9,10]],"rightMarks":[[0,1],[9,10],[11,12]]},
{"status":"changed","left":{"line":5,"position":26},"right":{"line":5,"position":26},)"
                              R"("leftMarks":[[1,2]],"rightMarks":[]}
]}
)");
}

/// Two texts in, the lines between heading and summary out.
std::string textRows(DiffProgram& program, const std::string& left, const std::string& right,
                     std::vector<std::string_view> options) {
  program.files.files = {{"L", {left}}, {"R", {right}}};
  options.insert(options.end(), {"L", "R"});
  program.run(options);
  const std::string output = program.output();
  const size_t begin = output.find('\n') + 1;
  return output.substr(begin, output.rfind('\n', output.size() - 2) + 1 - begin);
}

TEST(TextFormat, AlignsRowsInTheWidthThereIs) {
  const std::vector<std::string_view> real = {}, virtually = {"--line-numbers=virtual"},
                                      none = {"--line-numbers=none"};
  const struct {
    std::string left, right;
    std::vector<std::string_view> options;
    std::string rows;
  } cases[] = {
      // 3 columns in the middle and two cells of 12, of 10 behind real line numbers.
      {"one\nleft\n\nlong line, too long\n\n", "one\n\nlong line, too LONG\n\nend", real,
       "1 one          1 one\n"
       "2 left       <\n"
       "3              2\n"
       "4 long line~ | 3 long line~\n"
       "5              4\n"
       "             > 5 end\n"},
      {"one\nleft\n", "one\n", virtually, "1 one           one\n2 left        <\n"},
      {"123456789012\n\n", "1234567890123\n\n", none, "123456789012 | 12345678901~\n\n"},
      {"a\n", "a\n", {"--line-numbers=none", "--width=33"}, "a                 a\n"},
      {"1\n2\nleft\n3\n",
       "1\n2\n3\nright",
       {"--scope=differences"},
       "-- Line 3 --\n"
       "3 left       <\n"
       "               -- Line 4 --\n"
       "             > 4 right\n"},
      {"a\tb\n\t\x01\x7F...\n", "a\tb\n\t\x01\x7F...\n", none,
       "a   b          a   b\n"
       "    ^A^?...        ^A^?...\n"},
      {" \tb\n", " \tb\n", {"--line-numbers=none", "--show-white", "--tab-stop=3"}, ".> b$          .> b$\n"},
      // What differs is marked within a changed line, and a line end where it is the difference.
      {"same as x\nend\n",
       "same as y\nend",
       {"--color=always", "--line-numbers=none"},
       "same as \x1b[7;31mx\x1b[m    \x1b[33m|\x1b[m same as \x1b[7;32my\x1b[m\n"
       "end\x1b[7;31m$\x1b[m         \x1b[33m|\x1b[m end\n"},
  };
  for (const bool byTerminal : {false, true}) {
    DiffProgram program;
    program.terminal = {.isTerminal = true, .width = byTerminal ? 27u : 99u};
    if (!byTerminal) program.columns = "27";
    for (const auto& c : cases) EXPECT_EQ(textRows(program, c.left, c.right, c.options), c.rows);
    program.files.files = {{"a/very/long/way/to/the/left", {""}}, {"R", {""}}};
    program.run({"--width=37", "--scope=context", "a/very/long/way/to/the/left", "R"});
    EXPECT_EQ(program.output(), "...the/left (DOS)   R (DOS)\nNo differences\n");
  }
}

TEST(TextFormat, ShowsWholeCharactersAsTheyAre) {
  DiffProgram program;
  program.terminal.utf8 = true;
  const auto cellOf = [&](const std::string& line) {
    // So many bytes from 0x80 on would pass for binary data at the start of a file.
    const std::string text = std::string(1024, 'x') + '\n' + line + '\n';
    const std::string rows = textRows(program, text, text, {"--line-numbers=none", "--width=27"});
    return rows.substr(rows.rfind(' ') + 1);
  };
  // Twelve letters of two bytes fit. Half a letter, a surrogate and a longer form than need be are bytes.
  std::string letters;
  for (int i = 0; i < 11; ++i) letters += "\xC3\xA4";
  EXPECT_EQ(cellOf(letters + "\xC3\xA4"), letters + "\xC3\xA4\n");
  EXPECT_EQ(cellOf(letters + "\xC3"), letters + "\xC3\n");
  EXPECT_EQ(cellOf(letters + "xx"), letters + "\xE2\x80\xA6\n");
  for (const char* const bytes : {"\xED\xA0\x80", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80"}) {
    EXPECT_EQ(cellOf(std::string("1234567890") + bytes),
              std::string("1234567890") + bytes[0] + "\xE2\x80\xA6\n");
  }
}

TEST(TextFormat, ColoursForATerminalOrOnRequest) {
  DiffProgram program;
  const auto isColoured = [&](std::vector<std::string_view> options) {
    return textRows(program, "a\n", "b\n", options).find('\x1b') != std::string::npos;
  };
  EXPECT_FALSE(isColoured({}));
  program.terminal = {.isTerminal = true, .showsColours = true};
  program.noColour = "";
  EXPECT_TRUE(isColoured({}));
  EXPECT_FALSE(isColoured({"--color=never"}));
  program.noColour = "1";
  EXPECT_FALSE(isColoured({}));
  EXPECT_TRUE(isColoured({"--color=always"}));
}

}  // namespace
}  // namespace merivane
