// Opening files, and what the window then says of them.

#include <gmock/gmock.h>

#include <chrono>
#include <iostream>

#include "tests/win/gui_test.h"
#include "tests/win/support/input.h"

namespace merivane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class OpenTest : public GuiTest {};

TEST_F(OpenTest, TwoFilesOnTheCommandLine) {
  const std::string left = writeFile("first file.txt", "same\r\nold\r\nsame\r\n");
  const std::string right = writeFile("second.txt", "same\nsame\nnew\nnewer\n");
  const auto begin = std::chrono::steady_clock::now();
  const TextWindow window = startWith(left, "second.txt");
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  std::cout << "from start to shown comparison: " << taken.count() << " s\n";

  EXPECT_EQ(window.title(), "Merivane - [first file.txt, second.txt]");
  EXPECT_EQ(window.differences(), "Diffs: 2, Lines: 3");
  EXPECT_EQ(window.caret(), "Virt 1, Ln 1, Col 1");
  EXPECT_EQ(window.lineEnds(), "DOS, UNIX");
  EXPECT_EQ(window.help(), "Press F1 for help");
  EXPECT_EQ(window.name(0), left);
  EXPECT_EQ(window.name(1), right) << "a relative name is made full";
  EXPECT_THAT(window.names(0), ElementsAre(left));
  EXPECT_THAT(window.names(1), ElementsAre(right));
  EXPECT_SOON(program_->focus(), window.view());
  quit(window);
}

TEST_F(OpenTest, EqualFilesSayNothingUnlessAsked) {
  const std::string file = writeFile("same.txt", numberedLines(3));
  const TextWindow window = startWith(file, file);
  EXPECT_EQ(window.differences(), "No differences");
  EXPECT_TRUE(program_->windows("#32770").empty());
  quit(window);

  saveText("IdenticalMessage", "true");
  startWith(file, file);
  EXPECT_EQ(answerMessage(*program_), "The files are identical.");
}

TEST_F(OpenTest, NamesTypedIntoTheBoxes) {
  const std::string left = writeFile("a.txt", "1\r\n");
  const std::string right = writeFile("b.txt", "1\r\n2\r\n");
  const TextWindow window = start();
  EXPECT_EQ(window.title(), "Merivane - [<no file>, <no file>]");
  EXPECT_EQ(window.differences(), "");
  window.setName(0, left);
  window.setName(1, right);
  ASSERT_TRUE(window.activate());
  window.run(Command::refresh);
  EXPECT_EQ(window.compared(), "Diffs: 1, Lines: 1");

  // What has changed on the disk comes with F5.
  writeFile("b.txt", "1\r\n2\r\n3\r\n");
  press(VK_F5);
  EXPECT_SOON(window.differences(), "Diffs: 1, Lines: 2");
}

TEST_F(OpenTest, FilesThatCannotBeCompared) {
  const std::string text = writeFile("text.txt", "text\r\n");
  const std::string binary = writeFile("binary.dat", std::string("a\0b", 3));
  const std::string missing = pathOf("missing.txt");
  const std::string folder = pathOf(".");
  const TextWindow window = startWith(text, text);
  ASSERT_TRUE(window.activate());
  const auto complaint = [&](const std::string& left, const std::string& right) {
    window.setName(0, left);
    window.setName(1, right);
    press(VK_F5);
    return answerMessage(*program_);
  };
  EXPECT_EQ(complaint(binary, text),
            "The left file is a binary data file. Merivane can only compare text files.");
  EXPECT_EQ(complaint(text, binary),
            "The right file is a binary data file. Merivane can only compare text files.");
  EXPECT_EQ(complaint("", text), "The left file name is invalid.");
  EXPECT_EQ(complaint(text, "d:\\a?b"), "The right file name is invalid.");
  EXPECT_THAT(complaint(missing, text), StartsWith("Cannot load left file.\n\nReason: "));
  EXPECT_THAT(complaint(text, folder), StartsWith("Cannot load right file.\n\nReason: "));
  EXPECT_EQ(window.caret(), "Virt 1, Ln 1, Col 1");

  // Nothing of it keeps the window from going on.
  window.setName(0, text);
  window.setName(1, text);
  press(VK_F5);
  EXPECT_SOON(window.differences(), "No differences");
  quit(window);
}

TEST_F(OpenTest, ArgumentsThatOpenNothing) {
  const std::string file = writeFile("file.txt", "text\r\n");
  const auto answerTo = [&](const std::string& arguments) {
    program_ = std::make_unique<Program>(arguments);
    const std::string text = answerMessage(*program_);
    EXPECT_EQ(program_->exitCode(), 0u) << arguments;
    return text;
  };
  const std::string usage = answerTo("/?");
  EXPECT_THAT(usage, StartsWith("Using Merivane from the command line:\n"));
  EXPECT_THAT(usage, HasSubstr("merivane.exe [options] file1 file2"));
  EXPECT_EQ(answerTo("file.txt missing.txt"), "Could not find the file or folder:\nmissing.txt");
  EXPECT_THAT(answerTo("file.txt ."), StartsWith("A file cannot be compared with a folder:\nfile.txt\n."));
}

}  // namespace
}  // namespace merivane
