// Measures how quick the window is: merivane-timing LEFT RIGHT prints, one a line and in seconds, the time
// from start to the comparison shown, a page scrolled at the top and at the end of the files, a jump to the
// next difference and one back, and a character typed in the middle until it is drawn.
//
// merivane-timing --folders OLD NEW prints the time from start to the first list shown and the companion's
// own time, here, the number of rows of the tab Same, the time to select them all and that to open their
// menu, and the first of both for a list of as many rows that nobody draws or listens to.

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <string>

#include "tests/win/support/program.h"

namespace {

using namespace merivane;

constexpr int kRounds = 20;
constexpr int kPages = 20;

/// The best of some rounds: what the machine does besides only ever adds.
template <typename Action>
double seconds(int rounds, Action action) {
  double best = 0;
  for (int i = 0; i < rounds; ++i) {
    const auto begin = std::chrono::steady_clock::now();
    action();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    best = i == 0 ? taken.count() : std::min(best, taken.count());
  }
  return best;
}

/// Has what waits to be drawn drawn, and waits for it.
void draw(const TextWindow& window) {
  RedrawWindow(window.handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

/// Goes to one end of the files and takes the time of a page from there on.
double pageFrom(const TextWindow& window, WORD end, WORD page) {
  return seconds(kRounds,
                 [&] {
                   SendMessageA(window.view(), WM_VSCROLL, end, 0);
                   draw(window);
                   for (int i = 0; i < kPages; ++i) {
                     SendMessageA(window.view(), WM_VSCROLL, page, 0);
                     draw(window);
                   }
                 }) /
         (kPages + 1);
}

double jump(const TextWindow& window, Command command) {
  return seconds(kRounds, [&] {
    SendMessageA(window.handle(), WM_COMMAND, static_cast<WPARAM>(command), 0);
    draw(window);
  });
}

/// Goes to the middle of the files, as a click on the summary bar does, and types there.
double key(const TextWindow& window) {
  const HWND summary = FindWindowExA(window.handle(), nullptr, "Summary", nullptr);
  RECT area = {};
  GetClientRect(summary, &area);
  SendMessageA(summary, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(area.right / 2, area.bottom / 2));
  return seconds(kRounds, [&] {
    SendMessageA(window.view(), WM_CHAR, 'x', 1);
    draw(window);
  });
}

constexpr int kStarts = 3;

void runCompanion(const std::string& arguments) {
  std::string command = '"' + programFolder() + "merivane-diff.exe\" --format=summary " + arguments;
  STARTUPINFOA startup = {};
  PROCESS_INFORMATION process = {};
  startup.cb = sizeof startup;
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                      &startup, &process))
    return;
  WaitForSingleObject(process.hProcess, INFINITE);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

HWND compared(const Program& program) {
  const TextWindow window(program, program.window("SessionWindow"));
  waitUntil([&] { return window.help().starts_with("Changed: "); });
  return window.handle();
}

HWND shownList(HWND window) {
  HWND list = nullptr;
  do list = FindWindowExA(window, list, WC_LISTVIEWA, nullptr);
  while (list != nullptr && !IsWindowVisible(list));
  return list;
}

void openMenu(const Program& program, HWND list) {
  PostMessageA(list, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), -1);
  waitUntil([&] { return !program.windows("#32768").empty(); });
}

/// The time to select all rows of a list of the system's own.
double selectPlain(WPARAM rows) {
  InitCommonControls();
  const HWND window =
      CreateWindowA("Static", "", WS_POPUP | WS_VISIBLE, 0, 0, 400, 300, nullptr, nullptr, nullptr, nullptr);
  const HWND list = CreateWindowA(WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA, 0, 0,
                                  400, 300, window, nullptr, nullptr, nullptr);
  LVITEMA item = {};
  item.stateMask = LVIS_SELECTED;
  double best = 0;
  for (int i = 0; i < kStarts; ++i) {
    SendMessageA(list, LVM_SETITEMCOUNT, 0, 0);
    SendMessageA(list, LVM_SETITEMCOUNT, rows, 0);
    item.state = LVIS_SELECTED;
    const auto all = static_cast<WPARAM>(-1);
    const double taken =
        seconds(1, [&] { SendMessageA(list, LVM_SETITEMSTATE, all, reinterpret_cast<LPARAM>(&item)); });
    best = i == 0 ? taken : std::min(best, taken);
  }
  DestroyWindow(window);
  return best;
}

void timeFolders(const std::string& folders) {
  std::cout << seconds(kStarts, [&] { compared(Program(folders)); }) << "\n"
            << seconds(kStarts, [&] { runCompanion(folders); }) << "\n";
  const Program program(folders);
  const HWND window = compared(program);
  const auto run = [window](Command command) {
    SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(command), 0);
  };
  run(Command::showSame);
  const HWND list = shownList(window);
  const auto rows = static_cast<WPARAM>(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0));
  std::cout << rows << "\n" << seconds(1, [&] { run(Command::selectAll); }) << "\n";
  std::cout << seconds(1, [&] { openMenu(program, list); }) << "\n" << selectPlain(rows) << "\n";
}

}  // namespace

int main(int count, char** arguments) {
  const bool folders = count == 4 && std::string(arguments[1]) == "--folders";
  if (count != 3 && !folders) {
    std::cerr << "merivane-timing LEFT RIGHT\nmerivane-timing --folders OLD NEW\n";
    return 2;
  }
  clearSavedSettings();
  save("TipOfTheDay.ShowOnStartup", "false");
  const std::string files = std::string("\"") + arguments[count - 2] + "\" \"" + arguments[count - 1] + '"';
  if (folders) return timeFolders(files), 0;
  std::cout << seconds(kStarts, [&] {
    const Program program(files);
    TextWindow(program, program.window("CompareWindow")).compared();
  }) << "\n";

  const Program program(files);
  const TextWindow window(program, program.window("CompareWindow"));
  window.compared();
  std::cout << pageFrom(window, SB_TOP, SB_PAGEDOWN) << "\n"
            << pageFrom(window, SB_BOTTOM, SB_PAGEUP) << "\n";
  std::cout << jump(window, Command::nextDiff) << "\n";
  std::cout << jump(window, Command::prevDiff) << "\n";
  std::cout << key(window) << "\n";
  return 0;
}
