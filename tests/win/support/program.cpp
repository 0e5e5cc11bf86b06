#include "tests/win/support/program.h"

#include <stdexcept>

#include "tests/win/support/polling.h"

namespace merivane {

std::string programFolder() {
  char path[MAX_PATH];
  const std::string self(path, GetModuleFileNameA(nullptr, path, sizeof path));
  return self.substr(0, self.rfind('\\') + 1);
}

std::string textOf(HWND window) {
  std::string text(static_cast<size_t>(SendMessageA(window, WM_GETTEXTLENGTH, 0, 0)), '\0');
  const auto room = static_cast<WPARAM>(text.size() + 1);
  text.resize(
      static_cast<size_t>(SendMessageA(window, WM_GETTEXT, room, reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

std::string classOf(HWND window) {
  char name[64] = "";
  GetClassNameA(window, name, sizeof name);
  return name;
}

HWND childOf(HWND window, const char* className) {
  return FindWindowExA(window, nullptr, className, nullptr);
}

Program::Program(const std::string& arguments) {
  std::string line = '"' + programFolder() + "merivane.exe\" " + arguments;
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started = {};
  if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &started)) {
    throw std::runtime_error("cannot start " + line);
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

std::vector<HWND> Program::windows(const std::string& className, const std::string& title) const {
  struct Search {
    DWORD processId;
    const std::string& className;
    const std::string& title;
    std::vector<HWND> found;
  } search = {processId_, className, title, {}};
  const auto visit = [](HWND window, LPARAM parameter) CALLBACK -> BOOL {
    auto& wanted = *reinterpret_cast<Search*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    const bool fits =
        owner == wanted.processId && IsWindowVisible(window) && classOf(window) == wanted.className;
    if (fits && (wanted.title.empty() || textOf(window) == wanted.title)) wanted.found.push_back(window);
    return TRUE;
  };
  EnumWindows(visit, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND Program::window(const std::string& className, const std::string& title) const {
  std::vector<HWND> found;
  waitUntil([&] {
    found = windows(className, title);
    return !found.empty() || !isRunning();
  });
  return found.empty() ? nullptr : found.front();
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

bool Program::isRunning() const { return WaitForSingleObject(process_, 0) == WAIT_TIMEOUT; }

std::optional<DWORD> Program::exitCode() const {
  const auto patience = std::chrono::milliseconds(kPatience).count();
  DWORD code = 0;
  if (WaitForSingleObject(process_, static_cast<DWORD>(patience)) != WAIT_OBJECT_0) return std::nullopt;
  GetExitCodeProcess(process_, &code);
  return code;
}

}  // namespace merivane
