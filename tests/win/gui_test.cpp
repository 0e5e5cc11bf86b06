#include "tests/win/gui_test.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace merivane {

void GuiTest::SetUp() {
  clearSavedSettings();
  save("CompareWindow", "0,28,1e,348,276");  // from 40, 30 to 840, 630
  save("TipOfTheDay.ShowOnStartup", "false");
}

void GuiTest::TearDown() {
  if (!HasFailure()) return;
  const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
  Picture(areaOf(GetDesktopWindow())).save(programFolder() + "failed-" + name + ".bmp");
}

TextWindow GuiTest::start(const std::string& arguments) {
  program_ = std::make_unique<Program>(arguments);
  const HWND window = program_->window("CompareWindow");
  if (window == nullptr) throw std::runtime_error("no window came");
  return {*program_, window};
}

TextWindow GuiTest::startWith(const std::string& left, const std::string& right) {
  const TextWindow window = start('"' + left + "\" \"" + right + '"');
  if (window.compared().empty()) throw std::runtime_error("the comparison did not end");
  EXPECT_TRUE(window.activate());
  EXPECT_SOON(program_->focus(), window.view());
  return window;
}

void GuiTest::quit(const TextWindow& window) {
  window.run(Command::exit);
  EXPECT_EQ(program_->exitCode(), 0u);
}

std::string writeFile(const std::string& name, const std::string& bytes) {
  std::ofstream(name, std::ios::binary) << bytes;
  char path[MAX_PATH];
  return {path, GetFullPathNameA(name.c_str(), sizeof path, path, nullptr)};
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<LONG> placeOf(HWND window) {
  const RECT area = areaOf(window);
  return {area.left, area.top, area.right, area.bottom};
}

}  // namespace merivane
