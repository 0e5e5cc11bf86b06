// Takes pictures of the program at work: merivane-pictures FOLDER LEFT RIGHT NAME...
//
// Each NAME of kScenes gives FOLDER\NAME.bmp, with the two files compared. What goes wrong in comparing them
// is part of the picture.

#include <windows.h>

#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <utility>

#include "tests/win/support/picture.h"
#include "tests/win/support/polling.h"
#include "tests/win/support/program.h"
#include "tests/win/support/saved_settings.h"
#include "tests/win/support/text_window.h"

namespace {

using namespace merivane;

constexpr char kDialogClass[] = "#32770";

struct Scene {
  const char* name;
  SIZE size;  // of the window at 96 pixels an inch
  void (*prepare)(const TextWindow& window);
  bool lasting = false;  // compares a pair that it takes long for
};

void nothing(const TextWindow&) {}

void showMarks(const TextWindow& window) {
  window.run(Command::showWhiteSpace);
  window.run(Command::lineNumbersReal);
  window.run(Command::nextDiff);
}

void maximize(const TextWindow& window) {
  ShowWindow(window.handle(), SW_MAXIMIZE);
  waitUntil([&] { return IsZoomed(window.handle()) != 0; });
}

constexpr Scene kScenes[] = {
    {"compared", {800, 540}, nothing},      {"marks", {800, 540}, showMarks},
    {"small", {640, 480}, nothing},         {"maximized", {800, 540}, maximize},
    {"waiting", {640, 480}, nothing, true},
};

const Scene* findScene(const std::string& name) {
  for (const Scene& scene : kScenes) {
    if (name == scene.name) return &scene;
  }
  return nullptr;
}

int scaled(LONG pixels) {
  const HDC screen = GetDC(nullptr);
  const int resolution = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return MulDiv(static_cast<int>(pixels), resolution, 96);
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
  Picture picture = pictureOfWindow(window);
  int same = 0;
  waitUntil([&] {
    Sleep(100);
    Picture next = pictureOfWindow(window);
    const bool drawn = next.column(next.width() / 4, next.height()).size() > 10;
    same = drawn && next == picture ? same + 1 : 0;
    picture = std::move(next);
    return same == 4;
  });
  return picture;
}

bool take(const Scene& scene, std::string left, std::string right, const std::string& path) {
  clearSavedSettings();
  saveText("TipOfTheDay.ShowOnStartup", "false");
  char place[64];
  snprintf(place, sizeof place, "0,a,a,%x,%x", 10 + scaled(scene.size.cx), 10 + scaled(scene.size.cy));
  saveText("CompareWindow", place);
  if (scene.lasting) {
    left = writeShuffledLines("left.txt", 1);
    right = writeShuffledLines("right.txt", 2);
  }
  const Program program('"' + left + "\" \"" + right + '"');
  const auto dialogIsThere = [&] { return !program.windows(kDialogClass).empty(); };
  const HWND handle = program.window("CompareWindow");
  if (handle == nullptr) return false;
  const TextWindow window(program, handle);
  waitUntil([&] { return dialogIsThere() || (!scene.lasting && !window.differences().empty()); });
  if (!dialogIsThere()) scene.prepare(window);
  settledPicture(handle).save(path);
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 5) {
    std::cerr << "merivane-pictures FOLDER LEFT RIGHT NAME...\n";
    return 2;
  }
  for (int i = 4; i < count; ++i) {
    const Scene* const scene = findScene(arguments[i]);
    const std::string path = std::string(arguments[1]) + '\\' + arguments[i] + ".bmp";
    if (scene == nullptr || !take(*scene, arguments[2], arguments[3], path)) {
      std::cerr << "no picture of " << arguments[i] << "\n";
      return 1;
    }
  }
  return 0;
}
