#pragma once

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace merivane {

/// Works off a stack of pieces of work on several threads until it is empty and nobody works any more. A
/// piece may add others; the last added is taken first, so that what has been begun is ended before more is
/// begun. Threads are started as there is work for them.
template <typename Piece>
class WorkPool {
 public:
  /// Does a piece; `worker` is below the number of threads, and no two pieces with one number are done at the
  /// same time. Must not throw.
  using Work = std::function<void(Piece piece, unsigned worker)>;

  /// `threads` is at least 1 and counts the one that calls run().
  WorkPool(unsigned threads, Work work) : threads_(threads), work_(std::move(work)) {}

  WorkPool(const WorkPool&) = delete;
  WorkPool& operator=(const WorkPool&) = delete;

  /// Throws std::bad_alloc, and then has not added the piece.
  void add(Piece piece) {
    const std::lock_guard lock(mutex_);
    stack_.push_back(std::move(piece));
    if (waiting_ > 0) {
      changed_.notify_one();
    } else if (running_ && helpers_.size() + 1 < threads_) {
      startHelper();
    }
  }

  /// Whether a thread has nothing to do just now.
  bool isHungry() {
    const std::lock_guard lock(mutex_);
    return stack_.empty() && (waiting_ > 0 || helpers_.size() + 1 < threads_);
  }

  /// Returns when all is done. Once only.
  void run() {
    {
      const std::lock_guard lock(mutex_);
      running_ = true;
    }
    workOff(0);
    for (std::thread& helper : helpers_) helper.join();
  }

 private:
  void startHelper() {
    try {
      helpers_.reserve(threads_);
      helpers_.emplace_back([this, worker = static_cast<unsigned>(helpers_.size()) + 1] { workOff(worker); });
    } catch (const std::exception&) {
      threads_ = static_cast<unsigned>(helpers_.size()) + 1;  // without another, for whatever reason
    }
  }

  void workOff(unsigned worker) {
    std::unique_lock lock(mutex_);
    for (;;) {
      if (!stack_.empty()) {
        Piece piece = std::move(stack_.back());
        stack_.pop_back();
        ++busy_;
        lock.unlock();
        work_(std::move(piece), worker);
        lock.lock();
        --busy_;
      } else if (busy_ > 0) {
        ++waiting_;
        changed_.wait(lock);
        --waiting_;
      } else {
        changed_.notify_all();
        return;
      }
    }
  }

  unsigned threads_;
  const Work work_;
  std::mutex mutex_;
  std::condition_variable changed_;  // there is work, or none is left
  std::vector<Piece> stack_;
  std::vector<std::thread> helpers_;
  unsigned busy_ = 0;
  unsigned waiting_ = 0;
  bool running_ = false;
};

}  // namespace merivane
