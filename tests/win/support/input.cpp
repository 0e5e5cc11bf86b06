#include "tests/win/support/input.h"

#include <vector>

namespace merivane {
namespace {

/// The keys that a keyboard has twice; the number pad's is the plain one.
bool isExtended(WORD key) {
  switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_INSERT:
    case VK_DELETE:
      return true;
    default:
      return false;
  }
}

INPUT keyInput(WORD key, DWORD flags) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags | (isExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0);
  return input;
}

void send(std::vector<INPUT> inputs) {
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

}  // namespace

void press(WORD key, std::initializer_list<WORD> held) {
  std::vector<INPUT> inputs;
  for (const WORD other : held) inputs.push_back(keyInput(other, 0));
  inputs.push_back(keyInput(key, 0));
  inputs.push_back(keyInput(key, KEYEVENTF_KEYUP));
  for (const WORD other : held) inputs.push_back(keyInput(other, KEYEVENTF_KEYUP));
  send(inputs);
}

void type(std::string_view text) {
  std::vector<INPUT> inputs;
  for (const char c : text) {
    for (const DWORD flags : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
      INPUT input = {};
      input.type = INPUT_KEYBOARD;
      input.ki.wScan = static_cast<unsigned char>(c);
      input.ki.dwFlags = flags | KEYEVENTF_UNICODE;
      inputs.push_back(input);
    }
  }
  send(inputs);
}

void click(HWND window, POINT at, MouseButton button) {
  const bool left = button == MouseButton::left;
  const LPARAM place = MAKELPARAM(at.x, at.y);
  PostMessageA(window, left ? WM_LBUTTONDOWN : WM_RBUTTONDOWN, left ? MK_LBUTTON : MK_RBUTTON, place);
  PostMessageA(window, left ? WM_LBUTTONUP : WM_RBUTTONUP, 0, place);
}

void turnWheel(HWND window, int notches) {
  RECT area = {};
  GetWindowRect(window, &area);
  const LPARAM middle = MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
  PostMessageA(window, WM_MOUSEWHEEL, MAKEWPARAM(0, notches * WHEEL_DELTA), middle);
}

}  // namespace merivane
