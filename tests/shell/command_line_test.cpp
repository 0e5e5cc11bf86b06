#include "shell/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/texts.h"
#include "tests/support/memory_files.h"

namespace merivane {
namespace {

using Kind = StartAction::Kind;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

TEST(CommandLine, ArgumentsArePartedAsTheSystemPartsThem) {
  struct Case {
    const char* line;
    std::vector<std::string> arguments;
  };
  const Case cases[] = {
      {"", {}},
      {" \t ", {}},
      {"a b\tc", {"a", "b", "c"}},
      {R"("C:\a b\c.txt"  "d")", {R"(C:\a b\c.txt)", "d"}},
      {R"(C:\dir\ "C:\dir\\" x)", {R"(C:\dir\)", R"(C:\dir\)", "x"}},
      {R"("a\"b" c\"d)", {R"(a"b)", R"(c"d)"}},
      {R"("a\\\"b" \\\\server)", {R"(a\"b)", R"(\\\\server)"}},
      {R"(a" b"c "d""e f")", {"a bc", R"(d"e f)"}},
      {R"("" x "")", {"", "x", ""}},
      {R"("open end)", {"open end"}},
      {R"(end\)", {R"(end\)"}},
  };
  for (const Case& c : cases) EXPECT_EQ(splitArguments(c.line), c.arguments) << c.line;
}

TEST(CommandLine, WhatIsAskedForIsDoneOrSaid) {
  MemoryFiles files;
  files.files = {{"a", {}}, {"b", {}}, {"-c", {}}};
  files.files["d"].kind = files.files["e"].kind = FileKind::folder;
  files.files["con"].kind = FileKind::other;
  const auto read = [&](const std::vector<std::string>& arguments) {
    return readArguments(arguments, files, [](const std::string& path) { return "C:\\" + path; });
  };
  const std::string help = text(TextId::commandLineHelp);

  EXPECT_EQ(read({}).kind, Kind::emptyTextWindow);
  EXPECT_EQ(read({"a"}).kind, Kind::oneFile);
  EXPECT_EQ(read({"a"}).paths[0], "C:\\a");
  EXPECT_EQ(read({"a"}).paths[1], "");
  EXPECT_EQ(read({"b", "-c"}).kind, Kind::twoFiles);
  EXPECT_THAT(read({"b", "-c"}).paths, ElementsAre("C:\\b", "C:\\-c"));

  struct Refusal {
    std::vector<std::string> arguments;
    std::string start;
    bool withHelp;
  };
  const Refusal refusals[] = {
      {{"/?"}, help, true},
      {{"a", "missing", "-?", "/x"}, help, true},
      {{"a", "/x", "-y", "b", "b"}, "Unknown option:\n/x\n\n", true},
      {{"a", "b", "missing"}, text(TextId::tooManyPaths), true},
      {{"a", "missing\\%1"}, "Could not find the file or folder:\nmissing\\%1", false},
      {{"no", "nothing"}, "Could not find the file or folder:\nno", false},
      {{"", "a"}, "Could not find the file or folder:\n", false},
      {{"con"}, "Could not find the file or folder:\ncon", false},
      {{"a", "d"}, "A file cannot be compared with a folder:\na\nd\n\n", true},
      {{"d", "e"}, text(TextId::foldersNotYet), true},
      {{"d"}, text(TextId::foldersNotYet), true},
  };
  for (const Refusal& c : refusals) {
    const StartAction action = read(c.arguments);
    EXPECT_EQ(action.kind, Kind::message);
    EXPECT_THAT(action.message, StartsWith(c.start));
    EXPECT_EQ(action.message.ends_with(help), c.withHelp) << action.message;
  }
}

}  // namespace
}  // namespace merivane
