#include "tests/win/support/text_window.h"

#include <commctrl.h>

#include "tests/win/support/polling.h"
#include "tests/win/support/remote_block.h"

namespace merivane {
namespace {

constexpr int nameBoxIds[2] = {101, 102};

}  // namespace

TextWindow::TextWindow(const Program& program, HWND window) : program_(&program), window_(window) {}

HWND TextWindow::nameBox(int side) const { return GetDlgItem(window_, nameBoxIds[side]); }

void TextWindow::setName(int side, const std::string& name) const {
  SendMessageA(nameBox(side), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

std::vector<std::string> TextWindow::names(int side) const {
  std::vector<std::string> names;
  const auto count = static_cast<size_t>(SendMessageA(nameBox(side), CB_GETCOUNT, 0, 0));
  for (size_t i = 0; i < count; ++i) {
    // Only the wide message carries texts from process to process.
    wchar_t text[1024] = L"";
    SendMessageW(nameBox(side), CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
    names.emplace_back(text, text + wcslen(text));
  }
  return names;
}

void TextWindow::run(Command command) const {
  PostMessageA(window_, WM_COMMAND, static_cast<WPARAM>(command), 0);
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

RECT TextWindow::area() const {
  RECT area = {};
  GetWindowRect(window_, &area);
  return area;
}

std::string TextWindow::statusText(int part) const {
  const HWND bar = childOf(window_, STATUSCLASSNAMEA);
  std::string text(LOWORD(SendMessageA(bar, SB_GETTEXTLENGTHA, static_cast<WPARAM>(part), 0)), '\0');
  RemoteBlock block(program_->process(), 4096);
  SendMessageA(bar, SB_GETTEXTA, static_cast<WPARAM>(part), block.address());
  block.read(text.data(), text.size());
  return text;
}

}  // namespace merivane
