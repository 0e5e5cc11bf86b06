// Naming files by argument, in the boxes and by dropping them, and comparing them.

#include <random>

#include "base/win/wide.h"
#include "tests/win/gui_test.h"

namespace merivane {
namespace {

class CompareTest : public GuiTest {
 protected:
  const std::string one_ = writeFile("one.txt", "same\r\n");
  const std::string two_ = writeFile("two.txt", "same\nnew\nnewer\n");
};

TEST_F(CompareTest, TwoFilesOnTheCommandLine) {
  const TextWindow window = startWith(one_, "two.txt");
  EXPECT_EQ(window.title(), "Merivane - [one.txt, two.txt]");
  EXPECT_EQ(window.differences(), "Diffs: 1, Lines: 2");
  EXPECT_EQ(window.lineEnds(), "DOS, UNIX");
  EXPECT_EQ(window.name(1), two_) << "a relative name is made full";
  quit(window);
  EXPECT_EQ(saved("RightFileHistory.0"), two_);

  program_ = std::make_unique<Program>("two.txt missing.txt");
  EXPECT_EQ(program_->answerMessage(), "Could not find the file or folder:\nmissing.txt");
  const TextWindow mistyped(*program_, program_->window("CompareWindow"));
  EXPECT_EQ(mistyped.name(0), two_);
  EXPECT_THAT(mistyped.name(1), testing::EndsWith("\\missing.txt")) << "where it can be mended";
}

TEST_F(CompareTest, NamesAreCompletedAndEntered) {
  // Letters that the system's code page has not, and a sign that takes two units.
  const std::string name = "\xD0\x9F\xD1\x80\xD0\xB8 \xF0\x9F\x98\x80.txt";
  const std::string path = writeFile(name, "same\r\n");
  save("LeftFileHistory.count", 1);
  save("LeftFileHistory.0", path);
  const TextWindow window = start();
  ASSERT_TRUE(window.activate());
  EXPECT_SOON(program_->focus(), window.nameEdit(0));
  const std::string begun = path.substr(0, path.size() - name.size());
  type(begun);
  EXPECT_SOON(window.name(0), path);
  EXPECT_SOON(SendMessageW(window.nameEdit(0), EM_GETSEL, 0, 0),
              MAKELRESULT(begun.size(), wide(path).size()));
  press(VK_BACK);
  EXPECT_SOON(window.name(0), begun) << "only what was completed, and not again";
  window.setNames(path, "");
  press(VK_RETURN);
  EXPECT_SOON(program_->focus(), window.nameEdit(1)) << "a name is still to come";
  type(two_);
  press(VK_RETURN);
  EXPECT_SOON(window.title(), "Merivane - [" + name + ", two.txt]");
  EXPECT_EQ(window.compared(), "Diffs: 1, Lines: 2");
}

TEST_F(CompareTest, NamesOutsideTheCodePageKeepTheirFile) {
  // The code page has a letter like the first.
  const std::string name = "\xC5\x81odz.txt", like = writeFile("Lodz.txt", "not this one");
  const std::string path = writeFile(name, "1\r\nalone\r\n2\r\n"),
                    other = writeFile("right.txt", "1\r\n2\r\n");
  const TextWindow window = startWith(path, other);
  EXPECT_EQ(window.title(), "Merivane - [" + name + ", right.txt]");
  EXPECT_EQ(window.name(0), path);
  press(VK_F8);
  press(VK_DELETE, {VK_CONTROL});
  EXPECT_SOON(window.title(), "Merivane - [" + name + "*, right.txt]");
  window.run(Command::saveAll);
  EXPECT_SOON(window.title(), "Merivane - [" + name + ", right.txt]");
  EXPECT_EQ(readFile(path), "1\r\n2\r\n");
  window.setNames("", other);
  window.drop(window.nameBox(0), {5, 5}, {path});
  EXPECT_SOON(window.name(0), path);
  window.setNames("", other);
  window.run(Command::browseLeftFile);
  const HWND dialog = program_->dialog("Choose Left File");
  ASSERT_NE(dialog, nullptr);
  SendDlgItemMessageW(dialog, 0x47C, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide(path).c_str()));
  EXPECT_TRUE(pressButton(dialog, IDOK));
  EXPECT_SOON(window.name(0), path);
  quit(window);
  EXPECT_EQ(saved("LeftFileHistory.0") + saved("LeftFile.text"), path + path);
  EXPECT_EQ(readFile(like), "not this one");
}

TEST_F(CompareTest, DroppedFiles) {
  const TextWindow window = start();
  RECT client = {};
  GetClientRect(window.handle(), &client);
  const POINT leftHalf = {50, 200};
  window.drop(window.handle(), {client.right - 50, 200}, {one_});
  EXPECT_SOON(window.name(1), one_);
  EXPECT_EQ(window.name(0), "");
  window.drop(window.handle(), leftHalf, {two_});
  EXPECT_SOON(window.name(0), two_);
  window.drop(window.handle(), leftHalf, {one_, two_});
  EXPECT_SOON(window.title(), "Merivane - [one.txt, two.txt]");
  EXPECT_EQ(window.compared(), "Diffs: 1, Lines: 2");
  window.drop(window.nameBox(0), {5, 5}, {programFolder()});  // which a box does not take
  window.drop(window.nameBox(1), {5, 5}, {one_});
  EXPECT_SOON(window.title(), "Merivane - [one.txt, one.txt]");
  EXPECT_SOON(static_cast<size_t>(LOWORD(SendMessageA(window.nameEdit(1), EM_GETSEL, 0, 0))), one_.size());
}

TEST_F(CompareTest, AWindowThatWaitsTakesNothingButCancellingAndClosing) {
  // Lines of few kinds in an order of their own: nothing can be told about such a pair in a hurry.
  std::mt19937 random;
  const auto shuffledLines = [&] {
    std::string text;
    for (int i = 0; i < 400000; ++i) text += std::to_string(random() % 23) + '\n';
    return text;
  };
  const TextWindow window = start(writeFile("1", shuffledLines()) + ' ' + writeFile("2", shuffledLines()));
  const HWND box = program_->dialog("Please wait...");
  EXPECT_FALSE(IsWindowEnabled(window.handle()));
  const std::string name = window.name(0);
  window.drop(window.handle(), {50, 200}, {one_});
  window.drop(window.nameBox(0), {5, 5}, {one_});
  for (const Command command : {Command::newTextWindow, Command::switchSides, Command::refresh})
    window.run(command);
  window.run(Command::firstTextWindow);
  EXPECT_SOON(GetForegroundWindow(), box) << "its box takes the keyboard";
  EXPECT_EQ(window.name(0), name);
  EXPECT_EQ(program_->windows("CompareWindow").size(), 1u);
  const DWORD begin = GetTickCount();
  ASSERT_TRUE(pressButton(box, IDCANCEL));
  EXPECT_EQ(program_->answerMessage(), "Operation aborted.");
  EXPECT_LT(GetTickCount() - begin, 3000u);

  // The window goes on, and closes even while it compares.
  EXPECT_TRUE(IsWindowEnabled(window.handle()));
  window.run(Command::refresh);
  ASSERT_NE(program_->dialog("Please wait..."), nullptr);
  PostMessageA(window.handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(program_->exitCode(), 0u);

  // One that is over after a while gives the window back.
  const std::string large = writeFile("3", std::string(6000000, '\n'));
  EXPECT_TRUE(IsWindowEnabled(startWith(large, large).handle()));
}

}  // namespace
}  // namespace merivane
