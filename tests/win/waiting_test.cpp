// A comparison that takes long, and giving it up.

#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "tests/win/gui_test.h"

namespace merivane {
namespace {

constexpr char kTitle[] = "Please wait...";

/// Lines of few kinds in an order of their own: nothing can be told about such a pair in a hurry.
std::string shuffledLines(unsigned seed) {
  std::mt19937 random(seed);
  std::string text;
  for (int i = 0; i < 400000; ++i) text += std::to_string(random() % 23) + '\n';
  return text;
}

class WaitingTest : public GuiTest {
 protected:
  TextWindow startLongComparison() {
    const std::string left = writeFile("left.txt", shuffledLines(1));
    const std::string right = writeFile("right.txt", shuffledLines(2));
    return start(quoted(left) + ' ' + quoted(right));
  }
};

TEST_F(WaitingTest, CancelEndsItAtOnce) {
  const TextWindow window = startLongComparison();
  const HWND box = awaitDialog(*program_, kTitle);
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(labelsOf(box), "Please wait while comparing...");
  EXPECT_FALSE(IsWindowEnabled(window.handle()));
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_TRUE(pressButton(box, IDCANCEL));
  EXPECT_EQ(answerMessage(*program_), "Operation aborted.");
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));

  // The window is as a fresh one and goes on.
  EXPECT_TRUE(IsWindowEnabled(window.handle()));
  const std::string file = writeFile("short.txt", "1\r\n");
  window.setName(0, file);
  window.setName(1, file);
  window.run(Command::refresh);
  EXPECT_SOON(window.differences(), "No differences");
  quit(window);
}

TEST_F(WaitingTest, ProgramEndsWhileComparing) {
  const TextWindow window = startLongComparison();
  ASSERT_NE(awaitDialog(*program_, kTitle), nullptr);
  PostMessageA(window.handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(program_->exitCode(), 0u);
}

}  // namespace
}  // namespace merivane
