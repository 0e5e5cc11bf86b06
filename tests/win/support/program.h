#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace merivane {

/// The program under test, in a process of its own. Ended by force when a test leaves it running.
class Program {
 public:
  /// Starts merivane.exe, which lies beside this program, with these arguments as they are typed.
  explicit Program(const std::string& arguments = {});
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  HANDLE process() const { return process_; }

  /// Its visible top-level windows of a class, and with a title unless that is empty; topmost first.
  std::vector<HWND> windows(const std::string& className, const std::string& title = {}) const;

  /// Waits for such a window; null when it does not come.
  HWND window(const std::string& className, const std::string& title = {}) const;

  /// The window that has the keyboard in it; null when another program has it.
  HWND focus() const;

  /// Waits for the program to end by itself; none when it stays.
  std::optional<DWORD> exitCode() const;
  bool isRunning() const;

 private:
  HANDLE process_ = nullptr;
  DWORD processId_ = 0;
};

/// The folder this program lies in, with its backslash.
std::string programFolder();

/// A window's text, asked of the window itself.
std::string textOf(HWND window);

std::string classOf(HWND window);

/// The first of a window's children, at any depth, of a class; null when there is none.
HWND childOf(HWND window, const char* className);

}  // namespace merivane
