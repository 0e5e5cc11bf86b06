#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace merivane {

/// Asks a running comparison to stop: the only thing that its two threads share while it runs.
class AbortFlag {
 public:
  void raise() { raised_.store(1, std::memory_order_relaxed); }
  void lower() { raised_.store(0, std::memory_order_relaxed); }
  bool isRaised() const { return raised_.load(std::memory_order_relaxed) != 0; }

 private:
  std::atomic<uint8_t> raised_{0};
};

/// A null flag never aborts.
inline bool isRaised(const AbortFlag* abort) { return abort != nullptr && abort->isRaised(); }

/// Calls `visit` for every index of [from, to) and looks at the flag often enough, given that a visit takes
/// no more than some cache misses. False when it was raised.
template <typename Index, typename Visit>
bool forEach(Index from, Index to, const AbortFlag* abort, Visit visit) {
  constexpr Index atOnce = 1 << 16;
  while (from < to) {
    if (isRaised(abort)) return false;
    for (const Index end = from + std::min<Index>(to - from, atOnce); from < end; ++from) visit(from);
  }
  return true;
}

/// Gives an array so many elements, new ones zero, piece by piece: a large one of new memory takes its time.
/// False when the flag was raised. Throws std::bad_alloc.
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
