#include "tests/win/support/input.h"

#include <vector>

#include "tests/win/support/program.h"

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

}  // namespace

void press(WORD key, std::initializer_list<WORD> held) {
  std::vector<INPUT> inputs;
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
  if (from.x != to.x || from.y != to.y)
    SendMessageA(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to.x, to.y));
  SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
}

void turnWheel(HWND window, int notches) {
  SendMessageA(window, WM_MOUSEWHEEL, MAKEWPARAM(0, notches * WHEEL_DELTA), 0);
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

}  // namespace merivane
