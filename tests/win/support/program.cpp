#include "tests/win/support/program.h"

#include <commctrl.h>
#include <shlobj.h>

#include <cstring>
#include <fstream>
#include <stdexcept>

#include "base/win/wide.h"

namespace merivane {
namespace {

constexpr wchar_t settingsKey[] = L"SOFTWARE\\Brackenfold\\Merivane\\Settings";

BITMAPINFOHEADER headerFor(int width, int height) {
  const LONG fromTheTop = -height;
  return {sizeof(BITMAPINFOHEADER), width, fromTheTop, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
}

}  // namespace

std::string programFolder() {
  char path[MAX_PATH];
  const std::string self(path, GetModuleFileNameA(nullptr, path, sizeof path));
  return self.substr(0, self.rfind('\\') + 1);
}

std::string textOf(HWND window) {
  std::wstring text(static_cast<size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)), L'\0');
  SendMessageW(window, WM_GETTEXT, text.size() + 1, reinterpret_cast<LPARAM>(text.data()));
  return utf8(text);
}

bool pressButton(HWND dialog, int id) {
  PostMessageA(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
  return waitUntil([&] { return !IsWindow(dialog); });
}

void clearSavedSettings() { RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey); }

std::string saved(const char* name) {
  wchar_t value[1024] = L"";
  DWORD size = sizeof value;
  DWORD type = REG_NONE;
  RegGetValueW(HKEY_CURRENT_USER, settingsKey, wide(name).c_str(), RRF_RT_ANY, &type, value, &size);
  DWORD number = 0;
  std::memcpy(&number, value, sizeof number);
  if (type == REG_DWORD) return "# " + std::to_string(number);
  return type == REG_SZ ? utf8(value) : "(none)";
}

void save(const char* name, const std::string& text) {
  const std::wstring value = wide(text);
  RegSetKeyValueW(HKEY_CURRENT_USER, settingsKey, wide(name).c_str(), REG_SZ, value.c_str(),
                  static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

void save(const char* name, DWORD number) {
  RegSetKeyValueW(HKEY_CURRENT_USER, settingsKey, wide(name).c_str(), REG_DWORD, &number, sizeof number);
}

Program::Program(const std::string& arguments) {
  std::wstring line = wide('"' + programFolder() + "merivane.exe\" " + arguments);
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started = {};
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, 0, 0, nullptr, nullptr, &startup, &started)) {
    throw std::runtime_error("cannot start " + utf8(line));
  }
  CloseHandle(started.hThread);
  process_ = started.hProcess;
  processId_ = started.dwProcessId;
}

Program::~Program() {
  TerminateProcess(process_, 1);
  WaitForSingleObject(process_, INFINITE);
  CloseHandle(process_);
}

std::vector<HWND> Program::windows(const char* className, const char* title) const {
  std::vector<HWND> found;
  const std::wstring wideTitle = title != nullptr ? wide(title) : std::wstring();
  for (HWND window = nullptr;
       (window = FindWindowExW(nullptr, window, wide(className).c_str(),
                               title != nullptr ? wideTitle.c_str() : nullptr)) != nullptr;) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == processId_ && IsWindowVisible(window)) found.push_back(window);
  }
  return found;
}

HWND Program::window(const char* className, const char* title) const {
  std::vector<HWND> found;
  waitUntil([&] {
    found = windows(className, title);
    return !found.empty() || WaitForSingleObject(process_, 0) != WAIT_TIMEOUT;
  });
  return found.empty() ? nullptr : found.front();
}

std::string Program::answerMessage(int button) const {
  const HWND box = dialog("Merivane");
  if (box == nullptr) return "(no message came)";
  std::string said;
  for (HWND label = nullptr; (label = FindWindowExA(box, label, "Static", nullptr)) != nullptr;) {
    said += textOf(label);  // one of them is the icon
  }
  return pressButton(box, button) ? said : said + " (and the message stays)";
}

HWND Program::focus() const {
  GUITHREADINFO info = {};
  info.cbSize = sizeof info;
  DWORD owner = 0;
  // Of the foreground thread.
  if (!GetGUIThreadInfo(0, &info) || info.hwndFocus == nullptr) return nullptr;
  GetWindowThreadProcessId(info.hwndFocus, &owner);
  return owner == processId_ ? info.hwndFocus : nullptr;
}

DWORD Program::exitCode() const {
  WaitForSingleObject(process_, std::chrono::milliseconds(kPatience).count());
  DWORD code = 0;
  GetExitCodeProcess(process_, &code);
  return code;
}

void TextWindow::setNames(const std::string& left, const std::string& right) const {
  SendMessageW(nameBox(0), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide(left).c_str()));
  SendMessageW(nameBox(1), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide(right).c_str()));
}

Hook::Hook(HWND window) : library_(LoadLibraryA((programFolder() + "merivane-hook.dll").c_str())) {
  const DWORD thread = GetWindowThreadProcessId(window, nullptr);
  const auto set = [&](int kind, const char* name) {
    const auto procedure = reinterpret_cast<void*>(GetProcAddress(library_, name));
    const HHOOK hook = SetWindowsHookExA(kind, reinterpret_cast<HOOKPROC>(procedure), library_, thread);
    if (hook == nullptr) throw std::runtime_error("the hook does not hold");
    return hook;
  };
  sent_ = set(WH_CALLWNDPROC, "sentHook");
  fetched_ = set(WH_GETMESSAGE, "fetchedHook");
}

Hook::~Hook() {
  UnhookWindowsHookEx(sent_);
  UnhookWindowsHookEx(fetched_);
  FreeLibrary(library_);
}

std::string TextWindow::menu(int place) const {
  const Hook hook(window_);
  return ask(window_, RegisterWindowMessageA(kReadMenu), static_cast<WPARAM>(place),
             std::string(0x4000, '\0'))
      .c_str();
}

ShownAnew TextWindow::shownAnew() const {
  ShownAnew shown;
  const std::string bytes =
      ask(window_, RegisterWindowMessageA(kReadCounts), 0, std::string(sizeof shown, '\0'));
  std::memcpy(&shown, bytes.data(), sizeof shown);
  return shown;
}

void TextWindow::drop(HWND window, POINT at, const std::vector<std::string>& paths) const {
  const DROPFILES header = {sizeof header, at, FALSE, TRUE};
  std::wstring names;
  for (const std::string& path : paths) names += wide(path) + L'\0';
  names += L'\0';
  std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
  bytes.append(reinterpret_cast<const char*>(names.data()), names.size() * sizeof(wchar_t));
  // A handle of this process means nothing in the other, an address in the other does. It is left to it.
  void* const block = VirtualAllocEx(program_->process(), nullptr, bytes.size(), MEM_COMMIT, PAGE_READWRITE);
  WriteProcessMemory(program_->process(), block, bytes.data(), bytes.size(), nullptr);
  PostMessageA(window, WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0);
}

void TextWindow::changeDpi(int dpi, const RECT& place) const {
  ask(window_, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), {reinterpret_cast<const char*>(&place), sizeof place});
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
  const std::string bytes = ask(childOf(window_, STATUSCLASSNAMEA), SB_GETTEXTW, static_cast<WPARAM>(part),
                                std::string(0x1000, '\0'));
  return utf8(reinterpret_cast<const wchar_t*>(bytes.data()));
}

/// Sends a message with the address of a copy in the program's own memory, and returns what that becomes.
std::string TextWindow::ask(HWND window, UINT message, WPARAM wParam, std::string block) const {
  const HANDLE process = program_->process();
  void* const there = VirtualAllocEx(process, nullptr, block.size(), MEM_COMMIT, PAGE_READWRITE);
  WriteProcessMemory(process, there, block.data(), block.size(), nullptr);
  SendMessageA(window, message, wParam, reinterpret_cast<LPARAM>(there));
  ReadProcessMemory(process, there, block.data(), block.size(), nullptr);
  VirtualFreeEx(process, there, 0, MEM_RELEASE);
  return block;
}

Picture::Picture(const RECT& screenArea) {
  // A maximized window's edges are not on the screen, and nothing at all can be read across the screen's
  // edge.
  const RECT whole = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  RECT area = {};
  IntersectRect(&area, &screenArea, &whole);
  width_ = area.right - area.left;
  height_ = area.bottom - area.top;
  pixels_.resize(static_cast<size_t>(width_ * height_));
  BITMAPINFO info = {};
  info.bmiHeader = headerFor(width_, height_);
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, width_, height_);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width_, height_, screen, area.left, area.top, SRCCOPY);
  SelectObject(memory, before);
  GetDIBits(screen, bitmap, 0, static_cast<UINT>(height_), pixels_.data(), &info, DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  for (uint32_t& pixel : pixels_) pixel &= 0xFFFFFF;
}

COLORREF Picture::at(int x, int y) const {
  if (x < 0 || x >= width_ || y < 0 || y >= height_) return CLR_INVALID;
  const uint32_t pixel = pixels_[static_cast<size_t>(y * width_ + x)];
  return RGB(pixel >> 16, pixel >> 8 & 0xFF, pixel & 0xFF);
}

bool Picture::shows(COLORREF colour, int top, int bottom) const {
  for (int y = top; y < bottom; ++y) {
    for (int x = 0; x < width_; ++x) {
      if (at(x, y) == colour) return true;
    }
  }
  return false;
}

void Picture::save(const std::string& path) const {
  const auto size = static_cast<DWORD>(pixels_.size() * sizeof pixels_[0]);
  const BITMAPINFOHEADER header = headerFor(width_, height_);
  constexpr DWORD offset = sizeof(BITMAPFILEHEADER) + sizeof header;
  const BITMAPFILEHEADER file = {0x4D42, offset + size, 0, 0, offset};
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(&file), sizeof file);
  out.write(reinterpret_cast<const char*>(&header), sizeof header);
  out.write(reinterpret_cast<const char*>(pixels_.data()), static_cast<std::streamsize>(size));
}

Picture pictureOfClient(HWND window) {
  RECT area = {};
  GetClientRect(window, &area);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
  return Picture(area);
}

}  // namespace merivane
