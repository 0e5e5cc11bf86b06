// What a screen reader hears: it asks the pane with the caret the messages of an edit field.

#include <iterator>
#include <string>
#include <utility>

#include "base/win/wide.h"
#include "tests/win/gui_test.h"

namespace merivane {
namespace {

class ReadersTest : public GuiTest {
 protected:
  const std::string left_ = writeFile("left.txt", "one\r\ntwo \xE4\r\nend\r\n");
  const std::string right_ = writeFile("right.txt", "one\r\nmore\r\ntwo \xE4\r\nend!\r\n");
};

HWND renamed = nullptr;  // the window that told readers last of another name

TEST_F(ReadersTest, APaneReadsAsAnEditField) {
  const TextWindow window = startWith(left_, right_);
  const HWND pane = window.view();
  const auto ask = [&](UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(pane, message, wParam, lParam);
  };
  const auto line = [&](WPARAM index) {
    wchar_t text[100] = {static_cast<wchar_t>(std::size(text))};  // the room
    const LRESULT size = ask(EM_GETLINE, index, reinterpret_cast<LPARAM>(text));
    return std::wstring(text, static_cast<size_t>(size));
  };
  const std::wstring all = L"one\r\nno line on this side\r\ntwo \u00E4\r\nend";
  EXPECT_EQ(wide(textOf(pane)), all);
  EXPECT_EQ(ask(WM_GETTEXTLENGTH), static_cast<LRESULT>(all.size()));
  ASSERT_EQ(ask(EM_GETLINECOUNT), 4);
  EXPECT_EQ(line(2), L"two \u00E4");

  // The line and the word at the caret, as a reader finds them after each key.
  press(VK_DOWN);
  press(VK_DOWN);
  press(VK_RIGHT, {VK_CONTROL});
  EXPECT_SOON(window.caret(), "Virt 3, Ln 2, Col 5");
  DWORD begin = 0;
  DWORD end = 0;
  const auto selection = [&] {
    return ask(EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
  };
  EXPECT_EQ(selection(), MAKELRESULT(31, 31));
  EXPECT_EQ(ask(EM_LINEFROMCHAR, static_cast<WPARAM>(-1)), 2);
  EXPECT_EQ(ask(EM_LINEINDEX, static_cast<WPARAM>(-1)), 27);
  EXPECT_EQ(ask(EM_LINELENGTH, begin), 5);

  // Places on the screen and back.
  EXPECT_EQ(LOWORD(ask(EM_CHARFROMPOS, 0, ask(EM_POSFROMCHAR, 27) + MAKELONG(1, 1))), 27);

  ask(EM_SETSEL, 27, 30);
  EXPECT_EQ(copiedBy([] { press('C', {VK_CONTROL}); }), "two");
  ask(EM_SETSEL, 0, -1);
  EXPECT_EQ(selection(), MAKELRESULT(0, all.size()));
}

TEST_F(ReadersTest, DifferencesAreSaidAndControlsHaveNames) {
  const TextWindow window = startWith(left_, right_);
  const HWND bar = childOf(window.handle(), "msctls_statusbar32");
  const auto onEvent = [](HWINEVENTHOOK, DWORD, HWND changed, LONG object, LONG child, DWORD, DWORD)
                           CALLBACK -> void {
    if (object == OBJID_CLIENT && child == 1) renamed = changed;
  };
  DWORD process = 0;
  GetWindowThreadProcessId(window.handle(), &process);
  const HWINEVENTHOOK hook = SetWinEventHook(EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_NAMECHANGE, nullptr,
                                             onEvent, process, 0, WINEVENT_OUTOFCONTEXT);
  const auto hears = [&] {
    return waitUntil([&] {
      MSG message;
      while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
      return std::exchange(renamed, nullptr) == bar;
    });
  };
  press(VK_F8);
  EXPECT_TRUE(hears());
  EXPECT_EQ(window.help(), "Difference 1 of 2: 1 line only on the right");
  UnhookWinEvent(hook);

  EXPECT_EQ(textOf(GetWindow(window.nameBox(1), GW_HWNDPREV)), "Right file");
  EXPECT_EQ(textOf(GetDlgItem(window.handle(), static_cast<int>(Command::browseLeftFile))),
            "Choose left file");
}

}  // namespace
}  // namespace merivane
