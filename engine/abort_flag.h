#pragma once

#include <atomic>
#include <cstdint>

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

}  // namespace merivane
