// Measures how quick the window is: merivane-timing LEFT RIGHT prints, one a line and in seconds, the time
// from start to the comparison shown, a page scrolled at the top and at the end of the files, a jump to the
// next difference and one back, and a character typed in the middle until it is drawn.

#include <windows.h>

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

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::cerr << "merivane-timing LEFT RIGHT\n";
    return 2;
  }
  clearSavedSettings();
  save("TipOfTheDay.ShowOnStartup", "false");
  const std::string files = std::string("\"") + arguments[1] + "\" \"" + arguments[2] + '"';
  constexpr int starts = 3;
  std::cout << seconds(starts, [&] {
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
