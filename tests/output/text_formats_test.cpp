// The formats for terminals, scripts and patches.

#ifndef _WIN32

#include <gtest/gtest.h>

#include <cstdlib>
#include <iterator>
#include <string>

#include "output/file_bytes.h"
#include "tests/cli/diff_program.h"
#include "tests/support/random.h"
#include "tests/support/scratch_folder.h"

namespace merivane {
namespace {

TEST(JsonFormat, HasALineForEveryRowWithLinesPositionsAndMarks) {
  DiffProgram program;
  // UTF-8 is written as it is, but for what a terminal would obey.
  const std::string left = "l\"\\\x01\xE9", right = "\xC3\xA9\xC2\x9B\x7F\xF0\x9F\x98\x80";
  program.files.files = {{left, {"only\ns\nt\nthe cat sat down\nx\n"}},
                         {right, {"\xEF\xBB\xBFs\r\nnew\r\nt\r\nThe cat sits down\r\nx"}}};
  EXPECT_EQ(program.run({"--format=json", left, right}), 1);
  EXPECT_EQ(program.output(),
            R"({"left":{"path":"l\"\\\u0001\u00e9","lineEnd":"UNIX","encoding":"ASCII"},"right":{"path":")"
            "\xC3\xA9\\u009b\\u007f\xF0\x9F\x98\x80"
            R"(","lineEnd":"DOS","encoding":"UTF-8 BOM"},"diffs":3,"lines":4,"rows":[
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

/// Two texts and some options, separated by blanks, in; the lines between heading and summary out.
std::string textRows(DiffProgram& program, const std::string& left, const std::string& right,
                     std::string_view options) {
  program.files.files = {{"L", {left}}, {"R", {right}}};
  std::vector<std::string_view> arguments = {"L", "R"};
  for (size_t end; !options.empty(); options.remove_prefix(std::min(end, options.size() - 1) + 1)) {
    end = options.find(' ');
    arguments.push_back(options.substr(0, end));
  }
  program.run(arguments);
  const std::string output = program.output();
  const size_t begin = output.find('\n') + 1;
  return output.substr(begin, output.rfind('\n', output.size() - 2) + 1 - begin);
}

TEST(TextFormat, AlignsRowsInTheWidthThereIs) {
  const std::tuple<std::string, std::string, std::string_view, std::string> cases[] = {
      // 3 columns in the middle and two cells of 12, of 10 after real line numbers.
      {"one\nleft\n\nlong line, too long\n\n", "one\n\nlong line, too LONG\n\nend", "",
       "1 one          1 one\n"
       "2 left       <\n"
       "3              2\n"
       "4 long line~ | 3 long line~\n"
       "5              4\n"
       "             > 5 end\n"},
      {"one\nleft\n", "one\n", "--line-numbers=virtual", "1 one           one\n2 left        <\n"},
      {"123456789012\n\n", "1234567890123\n\n", "--line=none", "123456789012 | 12345678901~\n\n"},
      {"1\n2\nleft\n3\n", "1\n2\n3\nright", "--scope=differences",
       "-- Line 3 --\n"
       "3 left       <\n"
       "               -- Line 4 --\n"
       "             > 4 right\n"},
      {"a\tb\n\t\x01\x7F...\n", "a\tb\n\t\x01\x7F...\n", "--line=none",
       "a   b          a   b\n"
       "    ^A^?...        ^A^?...\n"},
      {" \tb\n", " \tb\n", "--line=none --show-white --tab-stop=3", ".> b$          .> b$\n"},
      // What differs is marked within a changed line, and a line end where it is the difference.
      {"same as x\nend\n", "same as y\nend", "--line=none --color=always",
       "same as \x1b[7;31mx\x1b[m    \x1b[33m|\x1b[m same as \x1b[7;32my\x1b[m\n"
       "end\x1b[7;31m$\x1b[m         \x1b[33m|\x1b[m end\n"},
  };
  for (const bool byTerminal : {false, true}) {
    DiffProgram program;
    program.terminal = {.isTerminal = true, .width = byTerminal ? 27u : 99u};
    if (!byTerminal) program.columns = "27";
    for (const auto& [left, right, options, rows] : cases)
      EXPECT_EQ(textRows(program, left, right, options), rows);
    program.files.files = {{"a/very/long/way/to/the/left", {""}}, {"R", {""}}};
    program.run({"--width=37", "--scope=context", "a/very/long/way/to/the/left", "R"});
    EXPECT_EQ(program.output(), "...the/left (DOS)   R (DOS)\nNo differences\n");
  }
}

TEST(TextFormat, ShowsWholeCharactersAsTheyAreAndNoControlOfATerminal) {
  DiffProgram program;
  const auto rowOf = [&](const std::string& line, const char* width) {
    // So many bytes from 0x80 on would pass for binary data at the start of a file.
    const std::string text = std::string(1024, 'x') + '\n' + line + '\n';
    const std::string rows = textRows(program, text, text, std::string("--line=none --width=") + width);
    return rows.substr(rows.find('\n') + 1);
  };
  std::string letters;
  for (int i = 0; i < 11; ++i) letters += "\xC3\xA4";
  const TerminalBytes utf8 = {.utf8 = true}, bytes;
  TerminalBytes page;
  page.page[0x1B] = 0x203A;
  page.page[0x69] = 0xE9;
  // U+009B begins a command as ESC and "[" do: as a character of UTF-8, and as a byte elsewhere.
  const std::tuple<TerminalBytes, std::string, std::string> rows[] = {
      {utf8, letters + "xyz", letters + "xyz"},
      {utf8, letters + "wxyz", letters + "wx\xE2\x80\xA6"},
      {utf8, "e\xCC\x81 \xE4\xB8\xAD\xE6\x96\x87", "e\xCC\x81 \xE4\xB8\xAD\xE6\x96\x87        "},
      {utf8, "\xCC\x81-12345678 \xE4\xB8\xADxy", "\xE2\x97\x8C\xCC\x81-12345678 \xE4\xB8\xAD\xE2\x80\xA6"},
      {utf8, "123456789 abc\xE4\xB8\xAD", "123456789 abc\xE2\x80\xA6"},
      {utf8, "123456789 ab\xE4\xB8\xADx", "123456789 ab \xE2\x80\xA6"},
      // Half a letter and a surrogate are bytes, those of the system's code page.
      {utf8, "so many \xED\xA0\x80", "so many \xC3\xAD\xC2\xA0\xE2\x82\xAC   "},
      {utf8, "so many \x9B", "so many \xE2\x80\xBA     "},
      {utf8, "so many \xC2\x9B", "so many <9B>  "},
      {bytes, "so many \x9B", "so many <9B>  "},
      {bytes, "more than \x9Bx", "more than    ~"},
      {bytes, "so many \xC3\xA9", "so many ?     "},
      {page, "so many \x9B\xE9\xC3", "so many \x9B\xE9\xC3   "},
      {page, "many \xE2\x80\xBA e\xCC\x81\xC3\xA9\xE4\xB8\xAD", "many \x9B e\xE9?    "},
  };
  for (const auto& [terminal, line, cell] : rows) {
    program.terminal.bytes = terminal;
    const std::string shown = cell.substr(0, cell.find_last_not_of(' ') + 1);
    EXPECT_EQ(rowOf(line, "31"), cell + "   " + shown + "\n");
  }
  // Names come from anywhere.
  program.files.files = {{"a\xC2\x9B", {"x\n"}}, {"b\x9B\x1b", {"y\n"}}};
  program.terminal.bytes = utf8;
  for (const char* const format :
       {"--format=text", "--format=json", "--format=unified", "--format=summary"}) {
    for (const bool broken : {false, true}) {
      program.run({format, "a\xC2\x9B", "b\x9B\x1b", broken ? "c\x9B\x1b" : "--color=never"});
      const std::string all = program.output() + program.errors();
      EXPECT_EQ(all.find_first_of("\x9B\x1b"), all.npos) << all;
    }
  }
}

TEST(TextFormat, ColoursForATerminalOrOnRequest) {
  const std::tuple<bool, const char*, const char*, bool> cases[] = {
      {false, nullptr, "", false},     {true, "", "", true},   {true, "", "--color=never", false},
      {true, "", "--output=o", false}, {true, "1", "", false}, {true, "1", "--color=always", true}};
  for (const auto& [onTerminal, noColour, option, coloured] : cases) {
    DiffProgram program;
    program.terminal = {.isTerminal = onTerminal, .showsColours = onTerminal};
    program.noColour = noColour;
    const std::string all = textRows(program, "a\n", "b\n", option) + program.files.files["o"].contents;
    EXPECT_EQ(all.find('\x1b') != all.npos, coloured) << option;
  }
}

const std::string kHead = "--- a/f\n+++ b/f\n";

std::string patchOf(std::string left, std::string right, std::vector<std::string_view> options = {}) {
  DiffProgram program;
  program.files.files = {{"a/f", {std::move(left)}}, {"b/f", {std::move(right)}}};
  options.insert(options.end(), {"--format=unified", "a/f", "b/f"});
  program.run(options);
  return program.output() + program.errors();
}

TEST(UnifiedFormat, MergesHunksCountsLinesAndKeepsTheFilesOwnBytes) {
  const std::tuple<std::string, std::string, std::vector<std::string_view>, std::string> cases[] = {
      {"1\n2\n3\n4\n5\n", "1\nx\n3\n4\ny\n", {"-U1"}, "@@ -1,5 +1,5 @@\n 1\n-2\n+x\n 3\n 4\n-5\n+y\n"},
      {"1\n2\n3\n4\n5\n",
       "x\n2\n3\n4\ny\n",
       {"-U1"},
       "@@ -1,2 +1,2 @@\n-1\n+x\n 2\n@@ -4,2 +4,2 @@\n 4\n-5\n+y\n"},
      {"1\n2\n3\n", "1\nx\n2\n", {"-U0"}, "@@ -1,0 +2 @@\n+x\n@@ -3 +3,0 @@\n-3\n"},
      {"", "x", {}, "@@ -0,0 +1 @@\n+x\n\\ No newline at end of file\n"},
      // More lines on the right: there the rows have the insertions first.
      {"a\n", "b\nc\n", {}, "@@ -1 +1,2 @@\n-a\n+b\n+c\n"},
      {"x\r\ny\r\n", "x\nz\n", {}, "@@ -1,2 +1,2 @@\n-x\r\n-y\r\n+x\n+z\n"},
      // With something ignored the left file's lines are the context.
      {"x\ny\n", "X\nz\n", {"--ignore-case"}, "@@ -1,2 +1,2 @@\n x\n-y\n+z\n"},
      // "a\x7F" and "b" with a NUL have one key: 127 * 97 + 127 = 127 * 98.
      {"some text\na\x7F\n",
       {"some text\nb\0\n", 13},
       {},
       {"@@ -1,2 +1,2 @@\n some text\n-a\x7F\n+b\0\n", 35}},
  };
  for (const auto& [left, right, options, hunks] : cases)
    EXPECT_EQ(patchOf(left, right, options), kHead + hunks);
  EXPECT_EQ(patchOf("x\r\n", "X\n", {"--ignore-case"}), "");
  const std::string mark = "\xEF\xBB\xBF", utf16("\xFE\xFF\0x\0\n", 6);
  EXPECT_EQ(patchOf(mark + "x\n\ny\n", "x\n\nz\n", {"-U0"}),
            kHead + "@@ -1 +1 @@\n-" + mark + "x\n+x\n@@ -3 +3 @@\n-y\n+z\n");
  const std::string only = "merivane-diff: the files differ only in their ";
  EXPECT_EQ(patchOf("x\r\n", utf16), only + "line ends and encoding (DOS, UNIX UTF-16 BE)\n");
  EXPECT_EQ(patchOf("y\n", utf16), "merivane-diff: a patch cannot hold UTF-16 (UNIX, UNIX UTF-16 BE)\n");

  // Names that would not read back, or that a terminal would obey, are quoted.
  DiffProgram program;
  program.files.files = {{"with blank", {"x\n"}}, {"q\"\\\n\x01 ", {"y\n"}}};
  program.run({"-u", "with blank", "q\"\\\n\x01 "});
  EXPECT_TRUE(program.output().starts_with("--- with blank\t\n+++ \"q\\\"\\\\\\n\\001 \"\n"));
}

TEST(UnifiedFormat, PatchesGiveExactlyTheRightFile) {
  if (std::system("git --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "no git is here to apply them";
  const ScratchFolder folder;
  const std::string apply =
      "cd '" + folder.path.string() + "' && git apply --unidiff-zero --whitespace=nowarn p 2>/dev/null";
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
    folder.put("p", patch);
    folder.put("f", left);
    EXPECT_EQ(std::system(apply.c_str()), 0) << patch;
    EXPECT_EQ(folder.contents("f"), right) << patch;
  }
}

TEST(LineEndRecord, GivesTheBytesOfEveryFileBack) {
  Random random(3);
  for (int round = 0; round < 3000; ++round) {
    std::string file;
    while (random.below(20) > 0) file += "\r\r\r\n\n\nab"[random.below(8)];
    LineEndRecord whole, pieces;
    whole.note(file);
    for (size_t at = 0; at < file.size();) {
      const size_t length = random.below(4);  // also nothing at all
      pieces.note(std::string_view(file).substr(at, length));
      at += length;
    }
    ASSERT_EQ(whole, pieces) << testing::PrintToString(file);
    for (const auto kind : {LineEndKind::lf, LineEndKind::crLf, LineEndKind::cr}) {
      ByteArray text;
      ASSERT_TRUE(text.assign(file));
      convertFromFile(text, kind);
      ASSERT_EQ(whole.isConverted(kind), text.view() != file) << testing::PrintToString(file);
      ASSERT_TRUE(whole.restore(kind, text));
      ASSERT_EQ(text.view(), file);
    }
  }
}

}  // namespace
}  // namespace merivane

#endif
