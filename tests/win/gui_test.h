#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/win/support/program.h"

namespace merivane {

/// A test with the program of its own. It starts from settings as after the installation, save that the
/// window's place is always the same; a failed test leaves a picture of the screen beside the program.
class GuiTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// Starts the program and returns its first text window.
  TextWindow start(const std::string& arguments = {});

  /// Starts the program with two files, waits until they are compared and lets the keys go there.
  TextWindow startWith(const std::string& left, const std::string& right);

  /// Quits by command, and expects that the program ends as it should.
  void quit(const TextWindow& window);

  std::unique_ptr<Program> program_;

 private:
  UINT doubleClickTime_ = 0;
};

/// Keys come as from the keyboard, to whatever window is in front. The mouse comes by message, straight to a
/// window, and is done with on return: a virtual display reports each move of the pointer back a while later,
/// and puts it there again. Messages overtake keys: a test waits for what a key does before it sends one.

/// Presses a key (a VK_ number, or a capital letter or digit) with others held.
void press(WORD key, std::initializer_list<WORD> held = {});

void type(std::string_view text);

/// Presses the mouse's left button at a place in a window's client area and lets it go at another.
void drag(HWND window, POINT from, POINT to);
inline void click(HWND window, POINT at) { drag(window, at, at); }

/// The text that an action puts on the clipboard.
std::string copiedBy(const std::function<void()>& action);

/// Writes a file into the test's own folder; returns its full path.
std::string writeFile(const std::string& name, const std::string& bytes);

std::string readFile(const std::string& path);

/// Asks until the answer is the expected one. Returns what was said last.
template <typename Ask, typename Expected>
auto eventually(Ask ask, const Expected& expected) {
  auto answer = ask();
  waitUntil([&] { return (answer = ask()) == expected; });
  return answer;
}

}  // namespace merivane

/// Another process gets there in its own time: expects that it does.
#define EXPECT_SOON(expression, expected) \
  EXPECT_EQ(merivane::eventually([&] { return (expression); }, (expected)), (expected))
