#include "tests/win/gui_test.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "base/file_system.h"
#include "base/win/wide.h"

namespace merivane {
namespace {

INPUT keyInput(WORD key, DWORD flags) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
  // Of the keys that a keyboard has twice the number pad's is the plain one.
  input.ki.dwFlags = flags | (key >= VK_PRIOR && key <= VK_DELETE ? KEYEVENTF_EXTENDEDKEY : 0);
  return input;
}

/// When a window has come or gone, a virtual display tells the next one that it has the keyboard, and that no
/// key is held there. Such news that comes in the middle of a chord takes its Ctrl away: waits until it is
/// heard.
void settle() {
  const HDC screen = GetDC(nullptr);
  for (int i = 0; i < 3; ++i) {
    SendMessageA(GetForegroundWindow(), WM_NULL, 0, 0);  // the program has spoken to the display
    GetPixel(screen, 0, 0);                              // the display has done it
    Sleep(10);                                           // and the program heard of it
  }
  ReleaseDC(nullptr, screen);
}

}  // namespace

void GuiTest::SetUp() {
  doubleClickTime_ = GetDoubleClickTime();
  SetDoubleClickTime(5000);  // however slow the machine is
  clearSavedSettings();
  save("CompareWindow", "0,28,1e,348,276");  // from 40, 30 to 840, 630
  save("TipOfTheDay.ShowOnStartup", "false");
}

void GuiTest::TearDown() {
  SetDoubleClickTime(doubleClickTime_);
  if (!HasFailure()) return;
  const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
  Picture(areaOf(GetDesktopWindow())).save(programFolder() + "failed-" + name + ".bmp");
}

TextWindow GuiTest::start(const std::string& arguments) {
  program_ = std::make_unique<Program>(arguments);
  const HWND window = program_->window("CompareWindow");
  if (window == nullptr) throw std::runtime_error("no window came");
  return {*program_, window};
}

TextWindow GuiTest::startWith(const std::string& left, const std::string& right) {
  const TextWindow window = start('"' + left + "\" \"" + right + '"');
  if (window.compared().empty()) throw std::runtime_error("the comparison did not end");
  EXPECT_TRUE(window.activate());
  EXPECT_SOON(program_->focus(), window.view());
  return window;
}

void GuiTest::quit(const TextWindow& window) {
  window.run(Command::exit);
  EXPECT_EQ(program_->exitCode(), 0u);
}

void press(WORD key, std::initializer_list<WORD> held) {
  std::vector<INPUT> inputs;
  if (held.size() != 0) settle();
  for (const WORD other : held) inputs.push_back(keyInput(other, 0));
  inputs.push_back(keyInput(key, 0));
  inputs.push_back(keyInput(key, KEYEVENTF_KEYUP));
  for (const WORD other : held) inputs.push_back(keyInput(other, KEYEVENTF_KEYUP));
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void type(std::string_view text) {
  for (const char c : text) {
    INPUT strokes[2] = {keyInput(0, KEYEVENTF_UNICODE), keyInput(0, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP)};
    for (INPUT& stroke : strokes) stroke.ki.wScan = static_cast<unsigned char>(c);
    SendInput(2, strokes, sizeof(INPUT));
  }
}

void drag(HWND window, POINT from, POINT to) {
  SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
  SendMessageA(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to.x, to.y));
  SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
}

std::string copiedBy(const std::function<void()>& action) {
  // Looking at the clipboard again and again would keep the program from it.
  const DWORD before = GetClipboardSequenceNumber();
  action();
  waitUntil([&] { return GetClipboardSequenceNumber() != before; });
  if (!waitUntil([] { return OpenClipboard(nullptr) != 0; })) return {};
  const HANDLE data = GetClipboardData(CF_TEXT);
  const std::string text = data != nullptr ? static_cast<const char*>(GlobalLock(data)) : "";
  CloseClipboard();
  return text;
}

std::string writeFile(const std::string& name, const std::string& bytes) {
  std::ofstream(std::filesystem::path(wide(name)), std::ios::binary) << bytes;
  return systemFiles().absolute(name);
}

std::string readFile(const std::string& path) {
  std::ifstream in(std::filesystem::path(wide(path)), std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace merivane
