#include "base/win/window.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "base/win/messages.h"
#include "base/win/wide.h"

namespace merivane {
namespace {

std::vector<Window*>& liveWindows() {
  static std::vector<Window*> windows;
  return windows;
}

}  // namespace

HINSTANCE programInstance() { return GetModuleHandleW(nullptr); }

bool isKeyDown(int key) { return GetKeyState(key) < 0; }

bool isCtrlDown() { return isKeyDown(VK_CONTROL) && !isKeyDown(VK_MENU); }

std::string windowText(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)), L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
  text.resize(static_cast<size_t>(length));
  return utf8(text);
}

void setWindowText(HWND window, const std::string& text) { SetWindowTextW(window, wide(text).c_str()); }

LRESULT sendText(HWND window, UINT message, WPARAM wParam, const std::string& text) {
  return SendMessageW(window, message, wParam, reinterpret_cast<LPARAM>(wide(text).c_str()));
}

Window::Window() { liveWindows().push_back(this); }

Window::~Window() {
  destroy();
  std::erase(liveWindows(), this);
}

bool Window::PreTranslateMessage(const MSG&) { return false; }

Window* Window::of(HWND window) {
  auto* object = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  const auto& live = liveWindows();
  return std::find(live.begin(), live.end(), object) == live.end() ? nullptr : object;
}

void Window::registerOnce(const WindowClass& windowClass) {
  const std::wstring name = wide(windowClass.name);
  WNDCLASSEXW known = {};
  known.cbSize = sizeof known;
  if (GetClassInfoExW(programInstance(), name.c_str(), &known)) return;
  WNDCLASSEXW fresh = {};
  fresh.cbSize = sizeof fresh;
  fresh.style = windowClass.style;
  fresh.lpfnWndProc = windowProcedure;
  fresh.hInstance = programInstance();
  fresh.hCursor = LoadCursorW(nullptr, windowClass.cursor);
  if (windowClass.background >= 0) fresh.hbrBackground = GetSysColorBrush(windowClass.background);
  fresh.lpszClassName = name.c_str();
  RegisterClassExW(&fresh);
}

bool Window::create(const WindowClass& windowClass, const WindowPlace& place) {
  registerOnce(windowClass);
  return CreateWindowExW(place.extendedStyle, wide(windowClass.name).c_str(), L"", place.style, place.left,
                         place.top, place.width, place.height, place.parent, place.menu, programInstance(),
                         this) != nullptr;
}

void Window::destroy() {
  if (handle_ == nullptr) return;
  const HWND window = handle_;
  handle_ = nullptr;
  SetWindowLongPtrW(window, GWLP_USERDATA, 0);
  DestroyWindow(window);
}

LRESULT Window::defaultProcedure(UINT message, WPARAM wParam, LPARAM lParam) {
  return DefWindowProcW(handle_, message, wParam, lParam);
}

void Window::adopt(HWND handle, Window* object) {
  object->handle_ = handle;
  SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
}

LRESULT Window::receive(HWND handle, UINT message, WPARAM wParam, LPARAM lParam, WNDPROC otherwise) {
  Window* const window = of(handle);
  if (window == nullptr) return otherwise(handle, message, wParam, lParam);
  try {
    if (message != WM_NCDESTROY) return window->onMessage(message, wParam, lParam);
    SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
    window->handle_ = nullptr;
    window->onDestroyed();
    return otherwise(handle, message, wParam, lParam);
  } catch (const std::exception&) {
    // The standard library throws nothing else here than that memory or a length ran out.
    reportOutOfMemory();
    return 0;
  }
}

LRESULT CALLBACK Window::windowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    adopt(handle, static_cast<Window*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
  }
  return receive(handle, message, wParam, lParam, DefWindowProcW);
}

void setScrollBar(HWND window, int bar, int last, UINT page, int position) {
  SCROLLINFO before = {};
  before.cbSize = sizeof before;
  before.fMask = SIF_PAGE | SIF_POS | SIF_RANGE;
  if (GetScrollInfo(window, bar, &before) && before.nMin == 0 && before.nMax == last &&
      before.nPage == page && before.nPos == position) {
    return;
  }
  SCROLLINFO info = before;
  info.fMask |= SIF_DISABLENOSCROLL;
  info.nMin = 0;
  info.nMax = last;
  info.nPage = page;
  info.nPos = position;
  SetScrollInfo(window, bar, &info, TRUE);
}

}  // namespace merivane
