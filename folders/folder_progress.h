#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>

namespace merivane {

/// How far a comparison of folders is, for others to look at while it runs.
class FolderProgress {
 public:
  uint64_t entries() const { return entries_.load(std::memory_order_relaxed); }  // listed, of both sides
  uint64_t bytes() const { return bytes_.load(std::memory_order_relaxed); }      // read, of both sides
  /// The folder begun last, from the compared one on.
  std::string folder() const {
    const std::lock_guard lock(mutex_);
    return folder_;
  }

  void addEntries(uint64_t count) { entries_.fetch_add(count, std::memory_order_relaxed); }
  void addBytes(uint64_t count) { bytes_.fetch_add(count, std::memory_order_relaxed); }
  void enter(const std::string& folder) {
    const std::lock_guard lock(mutex_);
    folder_ = folder;
  }

 private:
  std::atomic<uint64_t> entries_{0};
  std::atomic<uint64_t> bytes_{0};
  mutable std::mutex mutex_;
  std::string folder_;
};

}  // namespace merivane
