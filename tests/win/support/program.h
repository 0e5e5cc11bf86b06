#pragma once

#include <windows.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "shell/commands.h"

namespace merivane {

/// How long a test waits for what must come. A machine under load is slow; where all is well nobody waits.
inline constexpr std::chrono::seconds kPatience{30};

/// Asks again and again until the condition holds; false when patience runs out.
template <typename Condition>
bool waitUntil(Condition condition) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    Sleep(5);
  }
  return true;
}

/// The program under test, in a process of its own. Ended by force when a test leaves it running.
class Program {
 public:
  /// Starts merivane.exe, which lies beside this program, with these arguments as they are typed.
  explicit Program(const std::string& arguments = {});
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  HANDLE process() const { return process_; }

  /// Its visible top-level windows of a class, and with a title where one is given; topmost first.
  std::vector<HWND> windows(const char* className, const char* title = nullptr) const;

  /// Waits for such a window; null when it does not come.
  HWND window(const char* className, const char* title = nullptr) const;

  /// Waits for a dialog or message box.
  HWND dialog(const char* title) const { return window("#32770", title); }

  /// Waits for a message box, presses a button and returns what the box said.
  std::string answerMessage(int button = IDOK) const;

  /// The window that has the keyboard in it; null when another program has it.
  HWND focus() const;

  /// Waits for the program to end by itself; STILL_ACTIVE when it stays.
  DWORD exitCode() const;

 private:
  HANDLE process_ = nullptr;
  DWORD processId_ = 0;
};

/// The program's settings as they lie in the registry: forgets all of them, as before the first run.
void clearSavedSettings();

/// A value's text, a number's with "# " in front; "(none)" for one that is absent.
std::string saved(const char* name);
void save(const char* name, const std::string& text);
void save(const char* name, DWORD number);

/// The folder this program lies in, with its backslash.
std::string programFolder();

/// A window's text, asked of the window itself.
std::string textOf(HWND window);

/// Where a window is on the screen.
inline RECT areaOf(HWND window) {
  RECT area = {};
  GetWindowRect(window, &area);
  return area;
}

/// The first of a window's children, at any depth, of a class; null when there is none.
inline HWND childOf(HWND window, const char* className) {
  return FindWindowExA(window, nullptr, className, nullptr);
}

/// Presses a dialog's button and waits until the dialog is gone; false when it stays.
bool pressButton(HWND dialog, int id);

/// What a window showed anew, in numbers of messages.
struct ShownAnew {
  uint32_t buttons = 0;  // of the tool bar, enabled or greyed
  uint32_t titles = 0;
  uint32_t places = 0;  // of windows, moved or sized
  uint32_t panes = 0;   // drawn as a whole

  bool operator==(const ShownAnew&) const = default;
};

/// Menus answer, and messages can be counted, only within the program's own process: a library that is hooked
/// in there does it for a window that gets one of these messages. The first has the menu's place in the menu
/// bar and the address of room for a text; the second the address of a ShownAnew, and starts from nothing.
inline constexpr char kReadMenu[] = "merivane-tests-read-menu";
inline constexpr char kReadCounts[] = "merivane-tests-read-counts";

/// Has that library in the program as long as it lives.
class Hook {
 public:
  explicit Hook(HWND window);
  ~Hook();
  Hook(const Hook&) = delete;
  Hook& operator=(const Hook&) = delete;

 private:
  HMODULE library_;
  HHOOK sent_;
  HHOOK fetched_;
};

/// One of the program's text windows, as a user sees it. The handle is the program's: it may go at any time.
class TextWindow {
 public:
  TextWindow(const Program& program, HWND window) : program_(&program), window_(window) {}

  const Program& program() const { return *program_; }
  HWND handle() const { return window_; }
  HWND view() const { return childOf(window_, "TextView"); }
  HWND summary() const { return childOf(window_, "Summary"); }
  HWND nameBox(int side) const { return GetDlgItem(window_, 101 + side); }
  HWND nameEdit(int side) const { return childOf(nameBox(side), "Edit"); }

  std::string title() const { return textOf(window_); }

  /// Parts of the status bar.
  std::string help() const { return statusText(0); }
  std::string caret() const { return statusText(1); }
  std::string lineEnds() const { return statusText(2); }
  std::string differences() const { return statusText(3); }

  void update() const { SendMessageA(window_, WM_TIMER, 1, 0); }

  /// The caret's row, from 1. The status bar follows when the program has nothing else to do; this is done
  /// here as soon as it has seen to the messages sent so far.
  int row() const {
    update();
    return std::stoi(caret().substr(5));
  }

  std::string name(int side) const { return textOf(nameBox(side)); }
  void setNames(const std::string& left, const std::string& right) const;

  /// Sends a command as its menu item would.
  void run(Command command) const { PostMessageA(window_, WM_COMMAND, static_cast<WPARAM>(command), 0); }

  /// The items of one of the menu bar's menus as they show when it opens, a line each, submenus included: "*"
  /// in front of one that is checked, "o" where that is a bullet, "-" of one that is greyed.
  std::string menu(int place) const;

  /// What was shown anew since the last call, or since there is a Hook.
  ShownAnew shownAnew() const;

  /// Tells it that it has come to a monitor of another resolution, where this is its place.
  void changeDpi(int dpi, const RECT& place) const;

  /// Drops files on the window, or on a child of it, at a place in its client area.
  void drop(HWND window, POINT at, const std::vector<std::string>& paths) const;

  /// Waits until a comparison is shown, and returns what the status bar says of its differences.
  std::string compared() const;

  /// Makes it the window that keys go to; false when it does not become it.
  bool activate() const;

 protected:
  std::string statusText(int part) const;
  std::string ask(HWND window, UINT message, WPARAM wParam, std::string block) const;

  const Program* program_;
  HWND window_;
};

/// What a part of the screen shows.
class Picture {
 public:
  /// Takes a picture of what of an area is on the screen.
  explicit Picture(const RECT& screenArea);

  bool operator==(const Picture&) const = default;

  int height() const { return height_; }
  COLORREF at(int x, int y) const;

  /// Whether a colour is to be seen between these lines.
  bool shows(COLORREF colour, int top, int bottom) const;

  /// Writes it as a BMP file.
  void save(const std::string& path) const;

 private:
  int width_ = 0;
  int height_ = 0;
  std::vector<uint32_t> pixels_;  // 0x00RRGGBB, from the top
};

/// A picture of a window's client area, with whatever stands in front of it.
Picture pictureOfClient(HWND window);

}  // namespace merivane
