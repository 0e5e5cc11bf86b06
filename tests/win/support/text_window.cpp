#include "tests/win/support/text_window.h"

#include <commctrl.h>
#include <shlobj.h>

#include <stdexcept>

namespace merivane {

void TextWindow::setNames(const std::string& left, const std::string& right) const {
  SendMessageA(nameBox(0), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(left.c_str()));
  SendMessageA(nameBox(1), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(right.c_str()));
}

std::string TextWindow::menu(int place) const {
  const HMODULE library = LoadLibraryA((programFolder() + "merivane-menu-hook.dll").c_str());
  const auto procedure = reinterpret_cast<void*>(GetProcAddress(library, "menuHook"));
  const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROC, reinterpret_cast<HOOKPROC>(procedure), library,
                                       GetWindowThreadProcessId(window_, nullptr));
  if (hook == nullptr) throw std::runtime_error("the menu hook does not hold");
  const UINT message = RegisterWindowMessageA(kMenuMessage);
  const std::string items = ask(window_, message, static_cast<WPARAM>(place), 0x4000);
  UnhookWindowsHookEx(hook);
  FreeLibrary(library);
  return items;
}

void TextWindow::drop(HWND window, POINT at, const std::vector<std::string>& paths) const {
  DROPFILES header = {};
  header.pFiles = sizeof header;
  header.pt = at;
  std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
  for (const std::string& path : paths) bytes += path + '\0';
  bytes += '\0';
  // A handle of this process means nothing in the other, an address in the other does. It is left to it.
  void* const block = VirtualAllocEx(program_->process(), nullptr, bytes.size(), MEM_COMMIT, PAGE_READWRITE);
  WriteProcessMemory(program_->process(), block, bytes.data(), bytes.size(), nullptr);
  PostMessageA(window, WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0);
}

bool TextWindow::activate() const {
  return waitUntil([&] {
    SetForegroundWindow(window_);
    const HWND focus = program_->focus();
    return focus != nullptr && GetAncestor(focus, GA_ROOT) == window_;
  });
}

std::string TextWindow::compared() const {
  waitUntil([&] { return !differences().empty(); });
  return differences();
}

std::string TextWindow::statusText(int part) const {
  return ask(childOf(window_, STATUSCLASSNAMEA), SB_GETTEXTA, static_cast<WPARAM>(part), 0x1000);
}

/// Sends a message that takes the address of room for a text, which has to be the program's own memory.
std::string TextWindow::ask(HWND window, UINT message, WPARAM wParam, size_t room) const {
  const HANDLE process = program_->process();
  void* const block = VirtualAllocEx(process, nullptr, room, MEM_COMMIT, PAGE_READWRITE);
  SendMessageA(window, message, wParam, reinterpret_cast<LPARAM>(block));
  std::string text(room, '\0');
  ReadProcessMemory(process, block, text.data(), room, nullptr);
  VirtualFreeEx(process, block, 0, MEM_RELEASE);
  return text.c_str();
}

}  // namespace merivane
