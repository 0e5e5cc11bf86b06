#pragma once

#include <windows.h>

#include <chrono>

namespace merivane {

/// How long a test waits for what must come. A machine under load is slow; where all is well nobody waits.
inline constexpr std::chrono::seconds kPatience{30};

/// Asks again and again until the condition holds; false when patience runs out.
template <typename Condition>
bool waitUntil(Condition condition) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    Sleep(5);
  }
  return true;
}

/// Asks until the answer is the expected one. Answers what was said last.
template <typename Ask, typename Expected>
auto eventually(Ask ask, const Expected& expected) {
  auto answer = ask();
  waitUntil([&] {
    answer = ask();
    return answer == expected;
  });
  return answer;
}

}  // namespace merivane

/// Another process gets there in its own time: expects that it does.
#define EXPECT_SOON(expression, expected) \
  EXPECT_EQ(merivane::eventually([&] { return (expression); }, (expected)), (expected))
