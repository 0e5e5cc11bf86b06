#include "tests/win/support/program.h"

#include <stdexcept>

namespace merivane {
namespace {

constexpr char settingsKey[] = "SOFTWARE\\Brackenfold\\Merivane\\Settings";

}  // namespace

std::string programFolder() {
  char path[MAX_PATH];
  const std::string self(path, GetModuleFileNameA(nullptr, path, sizeof path));
  return self.substr(0, self.rfind('\\') + 1);
}

std::string textOf(HWND window) {
  std::string text(static_cast<size_t>(SendMessageA(window, WM_GETTEXTLENGTH, 0, 0)), '\0');
  SendMessageA(window, WM_GETTEXT, text.size() + 1, reinterpret_cast<LPARAM>(text.data()));
  return text;
}

bool pressButton(HWND dialog, int id) {
  PostMessageA(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
  return waitUntil([&] { return !IsWindow(dialog); });
}

void clearSavedSettings() { RegDeleteTreeA(HKEY_CURRENT_USER, settingsKey); }

std::string saved(const char* name) {
  char value[1024];
  DWORD size = sizeof value;
  DWORD type = REG_NONE;
  RegGetValueA(HKEY_CURRENT_USER, settingsKey, name, RRF_RT_ANY, &type, value, &size);
  if (type == REG_DWORD) return "# " + std::to_string(*reinterpret_cast<const DWORD*>(value));
  return type == REG_SZ ? value : "(none)";
}

void save(const char* name, const std::string& text) {
  RegSetKeyValueA(HKEY_CURRENT_USER, settingsKey, name, REG_SZ, text.c_str(),
                  static_cast<DWORD>(text.size() + 1));
}

void save(const char* name, DWORD number) {
  RegSetKeyValueA(HKEY_CURRENT_USER, settingsKey, name, REG_DWORD, &number, sizeof number);
}

Program::Program(const std::string& arguments) {
  std::string line = '"' + programFolder() + "merivane.exe\" " + arguments;
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started = {};
  if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, 0, 0, nullptr, nullptr, &startup, &started)) {
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

std::vector<HWND> Program::windows(const char* className, const char* title) const {
  std::vector<HWND> found;
  for (HWND window = nullptr; (window = FindWindowExA(nullptr, window, className, title)) != nullptr;) {
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

}  // namespace merivane
