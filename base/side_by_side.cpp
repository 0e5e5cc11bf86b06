#include "base/side_by_side.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <thread>

namespace merivane {
namespace {

/// How many threads may still be started.
std::atomic<int>& spareThreads() {
  constexpr int most = 3;
  static std::atomic<int> spare{
      std::clamp(static_cast<int>(std::thread::hardware_concurrency()) - 1, 0, most)};
  return spare;
}

/// A place among the threads, given back at the end.
class Place {
 public:
  Place() : had_(spareThreads().fetch_sub(1) > 0) {
    if (!had_) spareThreads().fetch_add(1);
  }
  ~Place() {
    if (had_) spareThreads().fetch_add(1);
  }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

  bool had() const { return had_; }

 private:
  const bool had_;
};

/// What `work` throws, or null.
std::exception_ptr failureOf(const std::function<void()>& work) {
  try {
    work();
    return nullptr;
  } catch (...) {
    return std::current_exception();
  }
}

}  // namespace

void runSideBySide(const std::function<void()>& first, const std::function<void()>& second) {
  const Place place;
  std::exception_ptr failures[2];
  std::thread other;
  if (place.had()) {
    // Without a thread, for whatever reason, it goes without.
    failureOf([&] { other = std::thread([&] { failures[1] = failureOf(second); }); });
  }
  failures[0] = failureOf(first);
  if (other.joinable()) {
    other.join();
  } else {
    failures[1] = failureOf(second);
  }
  for (const std::exception_ptr& failure : failures) {
    if (failure) std::rethrow_exception(failure);
  }
}

void forBothSides(uint64_t bytes, const std::function<void(int)>& work) {
  constexpr uint64_t many = uint64_t{1} << 18;
  if (bytes < many) {
    for (const int side : {0, 1}) work(side);
  } else {
    runSideBySide([&] { work(0); }, [&] { work(1); });
  }
}

}  // namespace merivane
