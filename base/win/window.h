#pragma once

#include <windows.h>

#include <string>

namespace merivane {

HINSTANCE programInstance();

/// The title or text of a window of this program.
std::string windowText(HWND window);

/// Whether a key was down when the current message was sent.
bool isKeyDown(int key);

/// Whether Ctrl was, and not the right Alt key, which is Ctrl and Alt and types signs on many keyboards.
bool isCtrlDown();

/// What a window class of the program is made of. The menu belongs to the window, not to the class.
struct WindowClass {
  const char* name;
  UINT style = 0;
  LPCSTR cursor = IDC_ARROW;
  int background = -1;  // a COLOR_ number, or -1 for a window that paints all of itself
  int icon = 0;         // a resource number
};

/// Where and how a window is made.
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

/// A window of one of the program's own classes, or a dialog, together with its object. Of one thread, the
/// one that runs the user interface.
///
/// The window's user data points at the object from WM_NCCREATE to WM_NCDESTROY, and only objects that are
/// in the list of live ones are ever believed. Nothing that a handler throws leaves the window procedure:
/// running out of memory is reported and the message abandoned.
class Window {
 public:
  virtual ~Window();

  /// Sees every message of the window and its children before it is translated; true consumes it.
  virtual bool PreTranslateMessage(const MSG& message);

  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  HWND handle() const { return handle_; }
  HACCEL accelerators() const { return accelerators_; }

  /// The live object of a window; null for a window that has none.
  static Window* of(HWND window);

 protected:
  Window();

  /// Makes the window, with the class registered when it is the first of it. False when it cannot be had.
  bool create(const WindowClass& windowClass, const char* title, const WindowPlace& place);
  void setAccelerators(HACCEL accelerators) { accelerators_ = accelerators; }

  /// Destroys the window, if it is there. For the destructor of a class that handles messages: by the time
  /// ~Window() runs there is nothing left to handle them.
  void destroy();

  /// Called with each of the window's messages. What is not wanted goes to defaultProcedure().
  virtual LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
  LRESULT defaultProcedure(UINT message, WPARAM wParam, LPARAM lParam);

  /// The window is gone. The object may delete itself here.
  virtual void onDestroyed() {}

  /// The two halves of a window procedure: the new window gets its object; a message goes to the object of
  /// its window, or without one to `otherwise`.
  static void adopt(HWND handle, Window* object);
  static LRESULT receive(HWND handle, UINT message, WPARAM wParam, LPARAM lParam, WNDPROC otherwise);

 private:
  static LRESULT CALLBACK windowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
  static void registerOnce(const WindowClass& windowClass);

  HWND handle_ = nullptr;
  HACCEL accelerators_ = nullptr;
};

/// Sets up a window's scroll bar, which stays where there is nothing to scroll. One that stands so already is
/// left alone: it would be drawn again.
void setScrollBar(HWND window, int bar, int last, UINT page, int position);

}  // namespace merivane
