// Names of files that are in no code page: in at every door, shown, kept and saved as they are.

#include <windows.h>

#include "base/win/wide.h"
#include "tests/win/gui_test.h"

namespace merivane {
namespace {

/// A letter of which the system's code page has a like one, letters that it has not, and a sign that takes
/// two units.
const std::string kNames[] = {"\xC5\x81odz.txt", "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82.txt",
                              "\xF0\x9F\x98\x80.txt"};

class NamesTest : public GuiTest {
 protected:
  const std::string like_ = writeFile("Lodz.txt", "not this one");
  const std::string right_ = writeFile("right.txt", "1\r\n2\r\n");
};

TEST_F(NamesTest, AreThoseOfTheCommandLineAndKeepTheirFile) {
  for (const std::string& name : kNames) {
    const std::string left = writeFile(name, "1\r\nalone\r\n2\r\n");
    const TextWindow window = startWith(left, right_);
    EXPECT_EQ(window.title(), "Merivane - [" + name + ", right.txt]");
    EXPECT_EQ(window.name(0), left);
    press(VK_F8);
    press(VK_DELETE, {VK_CONTROL});
    EXPECT_SOON(window.title(), "Merivane - [" + name + "*, right.txt]");
    window.run(Command::saveAll);
    EXPECT_SOON(window.title(), "Merivane - [" + name + ", right.txt]");
    EXPECT_EQ(readFile(left), "1\r\n2\r\n");
    quit(window);
    EXPECT_EQ(saved("LeftFileHistory.0"), left);
    EXPECT_EQ(saved("LeftFile.text"), left);
  }
  EXPECT_EQ(readFile(like_), "not this one");
}

TEST_F(NamesTest, ComeByDropAndDialog) {
  const TextWindow window = start();
  ASSERT_TRUE(window.activate());
  for (const std::string& name : kNames) {
    const std::string path = writeFile(name, "text");
    window.drop(window.nameBox(0), {5, 5}, {path});
    EXPECT_SOON(window.name(0), path);
    window.setNames("", "");
    window.run(Command::browseLeftFile);
    const HWND dialog = program_->dialog("Choose Left File");
    ASSERT_NE(dialog, nullptr);
    SendDlgItemMessageW(dialog, 0x47C, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide(path).c_str()));
    EXPECT_TRUE(pressButton(dialog, IDOK));
    EXPECT_SOON(window.name(0), path);
  }
}

TEST_F(NamesTest, AreCompletedByCharacters) {
  const std::string path = writeFile(kNames[1], "text");
  save("LeftFileHistory.count", DWORD{1});
  save("LeftFileHistory.0", path);
  const TextWindow window = start();
  ASSERT_TRUE(window.activate());
  const std::wstring whole = wide(path);
  const std::wstring typed = whole.substr(0, whole.size() - 6);  // two letters and the ending are missing
  SendMessageW(window.nameEdit(0), WM_SETTEXT, 0,
               reinterpret_cast<LPARAM>(typed.substr(0, typed.size() - 1).c_str()));
  SendMessageW(window.nameEdit(0), EM_SETSEL, typed.size(), static_cast<LPARAM>(typed.size()));
  SendMessageW(window.nameEdit(0), WM_CHAR, typed.back(), 1);
  EXPECT_SOON(window.name(0), path);
  DWORD begin = 0, end = 0;
  SendMessageW(window.nameEdit(0), EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
               reinterpret_cast<LPARAM>(&end));
  EXPECT_EQ(begin, typed.size());
  EXPECT_EQ(end, whole.size());
}

}  // namespace
}  // namespace merivane
