#pragma once

#include <windows.h>

#include <string>

namespace merivane {

HINSTANCE programInstance();

/// Returns the title or text of a window of this program.
std::string windowText(HWND window);
void setWindowText(HWND window, const std::string& text);

/// Sends a message whose second parameter is a text; returns what the message does.
LRESULT sendText(HWND window, UINT message, WPARAM wParam, const std::string& text);

/// Returns whether a key was down when the current message was sent.
bool isKeyDown(int key);

/// Returns whether Ctrl was down, and not the right Alt key, which counts as Ctrl and Alt and types
/// characters on many keyboards.
bool isCtrlDown();

/// The properties of a window class of the program. The menu belongs to the window, not to the class.
struct WindowClass {
  const char* name;
  UINT style = 0;
  LPCWSTR cursor = IDC_ARROW;
  int background = -1;  // a COLOR_ number, or -1 for a window that paints all of itself
};

/// Where and how a window is created.
struct WindowPlace {
  DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
  DWORD extendedStyle = 0;
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  HWND parent = nullptr;
  HMENU menu = nullptr;  // a child's number
};

/// A window of one of the program's own classes, or a dialog, together with its object. Belongs to the thread
/// that runs the user interface.
///
/// The window's user data points at the object from WM_NCCREATE to WM_NCDESTROY, and is trusted only if the
/// object is in the list of live ones. Nothing that a handler throws leaves the window procedure: running out
/// of memory is reported and the message abandoned.
class Window {
 public:
  virtual ~Window();

  /// Receives every message of the window and its children before it is translated. Returns true to consume
  /// it.
  virtual bool PreTranslateMessage(const MSG& message);

  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  HWND handle() const { return handle_; }
  HACCEL accelerators() const { return accelerators_; }

  /// Returns the live object of a window; null for a window that has none.
  static Window* of(HWND window);

 protected:
  Window();

  /// Creates the window, and registers its class if it is the first one. Returns false when it cannot be
  /// created.
  bool create(const WindowClass& windowClass, const WindowPlace& place);
  void setAccelerators(HACCEL accelerators) { accelerators_ = accelerators; }

  /// Destroys the window if there is one. The destructor of a class that handles messages calls it, because
  /// nothing is left to handle them when ~Window() runs.
  void destroy();

  /// Handles each of the window's messages. Those that it has no use for go to defaultProcedure().
  virtual LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
  LRESULT defaultProcedure(UINT message, WPARAM wParam, LPARAM lParam);

  /// The window is gone. The object may delete itself here.
  virtual void onDestroyed() {}

  /// The two halves of a window procedure: the first gives a new window its object; the second passes a
  /// message to the object of its window, or to `otherwise` if there is none.
  static void adopt(HWND handle, Window* object);
  static LRESULT receive(HWND handle, UINT message, WPARAM wParam, LPARAM lParam, WNDPROC otherwise);

 private:
  static LRESULT CALLBACK windowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
  static void registerOnce(const WindowClass& windowClass);

  HWND handle_ = nullptr;
  HACCEL accelerators_ = nullptr;
};

/// Sets up a window's scroll bar, which stays visible if there is nothing to scroll. One that is set up so
/// already is left alone, because it would be drawn again.
void setScrollBar(HWND window, int bar, int last, UINT page, int position);

}  // namespace merivane
