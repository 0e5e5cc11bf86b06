// Takes pictures of the program at work: merivane-pictures FOLDER LEFT RIGHT SCENE...
//
// Each scene gives FOLDER\SCENE.bmp of the two files: "compared", or "marks" with line numbers and white
// space. What goes wrong in comparing them is part of the picture. "waiting" has a pair of its own, "folders"
// two trees. "tip" and "about" are of these boxes, "options-text", "options-folders", "options-display" and
// "options-misc" of pages of the Options dialog. "printed" gives FOLDER\printed.pdf.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <utility>

#include "tests/win/support/program.h"
#include "tests/win/support/test_printer.h"

namespace {

using namespace merivane;

/// The saved place of a window of a size at 96 pixels an inch.
std::string placeOf(SIZE size) {
  const int inch = GetDeviceCaps(GetDC(nullptr), LOGPIXELSY);
  char place[64];
  snprintf(place, sizeof place, "0,a,a,%x,%x", 10 + MulDiv(size.cx, inch, 96),
           10 + MulDiv(size.cy, inch, 96));
  return place;
}

/// Few kinds of lines in no order: nothing to hold on to.
std::string writeShuffledLines(const std::string& name, unsigned seed) {
  std::mt19937 random(seed);
  std::ofstream out(name, std::ios::binary);
  for (int i = 0; i < 400000; ++i) out << random() % 23 << '\n';
  return name;
}

/// A picture of a window that has been drawn and stays as it is: a display takes its time.
Picture settledPicture(HWND window) {
  Picture picture(areaOf(window));
  int same = 0;
  waitUntil([&] {
    Sleep(100);
    Picture next(areaOf(window));
    const bool drawn = next.shows(0, next.height() / 4, next.height() / 2);  // text, or that of a dialog
    same = drawn && next == picture ? same + 1 : 0;
    picture = std::move(next);
    return same == 4;
  });
  return picture;
}

/// Two trees in the current folder with something of each kind in them.
void writeTrees() {
  namespace fs = std::filesystem;
  const auto put = [](const char* name, size_t size, int hours) {
    fs::create_directories(fs::path(name).parent_path());
    std::ofstream(name, std::ios::binary) << std::string(size, '\n');
    fs::last_write_time(name, fs::file_time_type::clock::now() - std::chrono::hours(hours));
  };
  for (const char* name : {"docs\\index.html", "docs\\style.css", "src\\main.c", "src\\parse.c",
                           "src\\parse.h", "src\\print.c", "build.txt", "readme.txt"}) {
    const bool changed = name[0] == 's' || name[0] == 'r';
    put(("old\\" + std::string(name)).c_str(), 100, 48);
    put(("new\\" + std::string(name)).c_str(), changed ? 140 : 100, changed ? 24 : 48);
  }
  put("old\\src\\scan.c", 100, 48);
  put("new\\docs\\tour.html", 100, 24);
}

/// The lists of the changed files, one of them copied.
bool takeFolders(const std::string& path) {
  writeTrees();
  save("SessionWindow", placeOf({620, 380}));
  const Program program("old new");
  const HWND handle = program.window("SessionWindow");
  if (handle == nullptr) return false;
  const TextWindow window(program, handle);
  waitUntil([&] { return window.help().starts_with("Changed"); });
  window.run(Command::copyToOld);
  waitUntil([&] { return window.title().ends_with("old*, new]"); });
  settledPicture(handle).save(path);
  return true;
}

/// The comparison as a PDF file, printed on a printer of our own.
bool print(const Program& program, HWND window, const std::string& path) {
  const std::string pdf = outsideName(path), part = outsideName(path + ".part");
  if (!canInstallTestPrinter() || !installTestPrinter("ps2pdf - " + part + " && mv " + part + ' ' + pdf))
    return false;
  std::filesystem::remove(path);
  PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(Command::print), 0);
  return pressButton(program.dialog("Print"), IDOK) &&
         waitUntil([&] { return std::filesystem::exists(path); });
}

bool take(const std::string& scene, std::string left, std::string right, const std::string& path) {
  const bool waiting = scene == "waiting";
  if (waiting) {
    left = writeShuffledLines("left.txt", 1);
    right = writeShuffledLines("right.txt", 2);
  }
  clearSavedSettings();
  save("TipOfTheDay.ShowOnStartup", "false");
  if (scene == "folders") return takeFolders(path);
  save("CompareWindow", placeOf(waiting ? SIZE{640, 480} : SIZE{800, 540}));
  constexpr const char* pages[] = {"options-text", "options-folders", "options-display", "options-misc"};
  const auto page = std::ranges::find(pages, scene);
  const bool options = page != std::end(pages);
  if (options) save("OptionsPage", static_cast<DWORD>(page - pages));

  const Program program('"' + left + "\" \"" + right + '"');
  const HWND handle = program.window("CompareWindow");
  if (handle == nullptr) return false;
  const TextWindow window(program, handle);
  const auto dialogIsThere = [&] { return !program.windows("#32770").empty(); };
  waitUntil([&] { return dialogIsThere() || (!waiting && !window.differences().empty()); });
  if (scene == "marks" && !dialogIsThere()) {
    for (const Command command : {Command::showWhiteSpace, Command::lineNumbersReal, Command::nextDiff}) {
      window.run(command);
    }
  }
  if (scene == "printed") return print(program, handle, path.substr(0, path.size() - 3) + "pdf");
  HWND shown = handle;
  const auto open = [&](Command command, const char* title) {
    PostMessageA(handle, WM_COMMAND, static_cast<WPARAM>(command), 0);
    shown = program.dialog(title);
  };
  if (options) open(Command::options, "Options");
  if (scene == "tip") open(Command::tipOfTheDay, "Tip of the day");
  if (scene == "about") open(Command::about, "About Merivane");
  if (shown == nullptr) return false;
  settledPicture(shown).save(path);
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  for (int i = 4; i < count; ++i) {
    const std::string scene = arguments[i];
    if (!take(scene, arguments[2], arguments[3], arguments[1] + ('\\' + scene) + ".bmp")) {
      std::cerr << "no picture of " << scene << "\n";
      return 1;
    }
  }
  return 0;
}
