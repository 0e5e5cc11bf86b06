#pragma once

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/win/support/input.h"
#include "tests/win/support/picture.h"
#include "tests/win/support/program.h"
#include "tests/win/support/saved_settings.h"
#include "tests/win/support/text_window.h"

namespace merivane {

/// A test with the program of its own. It starts from settings as after the installation, save that the
/// window's place is always the same; a failed test leaves a picture of the screen beside the program.
class GuiTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// Starts the program and answers its first text window.
  TextWindow start(const std::string& arguments = {});

  /// Starts the program with two files, waits until they are compared and lets the keys go there.
  TextWindow startWith(const std::string& left, const std::string& right);

  /// Quits by command, and expects that the program ends as it should.
  void quit(const TextWindow& window);

  std::unique_ptr<Program> program_;
};

/// Writes a file into the test's own folder; answers its full path.
std::string writeFile(const std::string& name, const std::string& bytes);

std::string readFile(const std::string& path);

/// The edges of a window on the screen.
std::vector<LONG> placeOf(HWND window);

/// Asks until the answer is the expected one. Answers what was said last.
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
