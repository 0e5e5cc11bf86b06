#include "base/side_by_side.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <thread>

namespace merivane {
namespace {

/// How many threads may still be started.
std::atomic<int>& spareThreads() {
  constexpr int max = 3;
  static std::atomic<int> spare{
      std::clamp(static_cast<int>(std::thread::hardware_concurrency()) - 1, 0, max)};
  return spare;
}

/// Takes one of the spare threads, if there is one, and gives it back at the end.
class SpareThread {
 public:
  SpareThread() : taken_(spareThreads().fetch_sub(1) > 0) {
    if (!taken_) spareThreads().fetch_add(1);
  }
  ~SpareThread() {
    if (taken_) spareThreads().fetch_add(1);
  }
  SpareThread(const SpareThread&) = delete;
  SpareThread& operator=(const SpareThread&) = delete;

  bool taken() const { return taken_; }

 private:
  const bool taken_;
};

/// Does the work and returns what it throws, or null.
std::exception_ptr failureOf(const std::function<void()>& work) {
  try {
    work();
    return nullptr;
  } catch (...) {
    return std::current_exception();
  }
}

}  // namespace

bool trySideBySide(const std::function<void()>& first, const std::function<void()>& second) {
  const SpareThread spare;
  if (!spare.taken()) return false;
  std::exception_ptr failures[2];
  std::thread other;
  // A thread may not start for many reasons, none of which is a failure of the work.
  if (failureOf([&] { other = std::thread([&] { failures[1] = failureOf(second); }); })) return false;
  failures[0] = failureOf(first);
  other.join();
  for (const std::exception_ptr& failure : failures) {
    if (failure) std::rethrow_exception(failure);
  }
  return true;
}

void forBothSides(uint64_t bytes, const std::function<void(int)>& work) {
  constexpr uint64_t many = uint64_t{1} << 18;
  if (bytes >= many && trySideBySide([&] { work(0); }, [&] { work(1); })) return;
  for (const int side : {0, 1}) work(side);
}

}  // namespace merivane
