#include "base/win/window.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "base/win/messages.h"

namespace merivane {
namespace {

std::vector<Window*>& liveWindows() {
  static std::vector<Window*> windows;
  return windows;
}

}  // namespace

HINSTANCE programInstance() { return GetModuleHandleA(nullptr); }

bool isKeyDown(int key) { return GetKeyState(key) < 0; }

bool isCtrlDown() { return isKeyDown(VK_CONTROL) && !isKeyDown(VK_MENU); }

std::string windowText(HWND window) {
  std::string text(static_cast<size_t>(GetWindowTextLengthA(window)), '\0');
  const int length = GetWindowTextA(window, text.data(), static_cast<int>(text.size()) + 1);
  text.resize(static_cast<size_t>(length));
  return text;
}

Window::Window() { liveWindows().push_back(this); }

Window::~Window() {
  destroy();
  std::erase(liveWindows(), this);
}

bool Window::PreTranslateMessage(const MSG&) { return false; }

Window* Window::of(HWND window) {
  auto* object = reinterpret_cast<Window*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  const auto& live = liveWindows();
  return std::find(live.begin(), live.end(), object) == live.end() ? nullptr : object;
}

void Window::registerOnce(const WindowClass& windowClass) {
  WNDCLASSEXA known = {};
  known.cbSize = sizeof known;
  if (GetClassInfoExA(programInstance(), windowClass.name, &known)) return;
  WNDCLASSEXA fresh = {};
  fresh.cbSize = sizeof fresh;
  fresh.style = windowClass.style;
  fresh.lpfnWndProc = windowProcedure;
  fresh.hInstance = programInstance();
  fresh.hCursor = LoadCursorA(nullptr, windowClass.cursor);
  if (windowClass.background >= 0) fresh.hbrBackground = GetSysColorBrush(windowClass.background);
  if (windowClass.icon != 0) {
    // Not shared: the second of two sizes would be the first one again. They live as long as the class.
    const auto load = [&](int width, int height) {
      return static_cast<HICON>(LoadImageA(programInstance(), MAKEINTRESOURCEA(windowClass.icon), IMAGE_ICON,
                                           GetSystemMetrics(width), GetSystemMetrics(height), 0));
    };
    fresh.hIcon = load(SM_CXICON, SM_CYICON);
    fresh.hIconSm = load(SM_CXSMICON, SM_CYSMICON);
  }
  fresh.lpszClassName = windowClass.name;
  RegisterClassExA(&fresh);
}

bool Window::create(const WindowClass& windowClass, const char* title, const WindowPlace& place) {
  registerOnce(windowClass);
  return CreateWindowExA(place.extendedStyle, windowClass.name, title, place.style, place.left, place.top,
                         place.width, place.height, place.parent, place.menu, programInstance(),
                         this) != nullptr;
}

void Window::destroy() {
  if (handle_ == nullptr) return;
  const HWND window = handle_;
  handle_ = nullptr;
  SetWindowLongPtrA(window, GWLP_USERDATA, 0);
  DestroyWindow(window);
}

LRESULT Window::defaultProcedure(UINT message, WPARAM wParam, LPARAM lParam) {
  return DefWindowProcA(handle_, message, wParam, lParam);
}

void Window::adopt(HWND handle, Window* object) {
  object->handle_ = handle;
  SetWindowLongPtrA(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
}

LRESULT Window::receive(HWND handle, UINT message, WPARAM wParam, LPARAM lParam, WNDPROC otherwise) {
  Window* const window = of(handle);
  if (window == nullptr) return otherwise(handle, message, wParam, lParam);
  try {
    if (message != WM_NCDESTROY) return window->onMessage(message, wParam, lParam);
    SetWindowLongPtrA(handle, GWLP_USERDATA, 0);
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
    adopt(handle, static_cast<Window*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams));
  }
  return receive(handle, message, wParam, lParam, DefWindowProcA);
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
