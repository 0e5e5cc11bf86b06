#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace merivane {

/// Asks work on another thread to stop: the only thing that both threads share while it runs. Once raised it
/// stays raised.
class AbortFlag {
 public:
  void raise() { raised_.store(1, std::memory_order_relaxed); }
  bool isRaised() const { return raised_.load(std::memory_order_relaxed) != 0; }

 private:
  std::atomic<uint8_t> raised_{0};
};

/// Returns whether the flag is raised; a null flag never is.
inline bool isRaised(const AbortFlag* abort) { return abort != nullptr && abort->isRaised(); }

/// Calls `visit` for every index of [from, to) and looks at the flag often enough for visits that take no
/// more than some cache misses. Returns false when the flag was raised.
template <typename Index, typename Visit>
bool forEach(Index from, Index to, const AbortFlag* abort, Visit visit) {
  constexpr Index atOnce = 1 << 16;
  while (from < to) {
    if (isRaised(abort)) return false;
    for (const Index end = from + std::min<Index>(to - from, atOnce); from < end; ++from) visit(from);
  }
  return true;
}

/// Resizes an array piece by piece, with a look at the flag before each, because touching much new memory
/// takes time. New elements are zero. Returns false when the flag was raised. Throws std::bad_alloc.
template <typename Element>
bool resize(std::vector<Element>& array, size_t size, const AbortFlag* abort) {
  constexpr size_t atOnce = (size_t{1} << 22) / sizeof(Element);
  array.reserve(size);
  while (array.size() < size) {
    if (isRaised(abort)) return false;
    array.resize(std::min(size, array.size() + atOnce));
  }
  return true;
}

}  // namespace merivane
