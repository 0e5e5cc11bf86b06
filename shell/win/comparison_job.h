#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <string>

#include "base/abort_flag.h"
#include "engine/compare_options.h"
#include "engine/comparison.h"

namespace merivane {

/// One comparison of two files, on a thread of its own. Window and thread share it, so that the window can
/// let go of it at any moment: the thread then runs out by itself and its result goes with it.
class ComparisonJob {
 public:
  /// Starts. When the comparison has ended compareDoneMessage is posted to `window`.
  static std::shared_ptr<ComparisonJob> start(HWND window, const std::string (&paths)[2],
                                              const CompareOptions& options);

  /// Asks the comparison to stop and counts as cancelled at once.
  void cancel() { abort_.raise(); }

  /// Whether there is an outcome to ask for.
  bool isDone() const { return abort_.isRaised() || finished_.load(std::memory_order_acquire); }

  Outcome outcome() const;

  /// The files compared: shortcuts are replaced by their targets.
  const std::string& path(int side) const { return paths_[side]; }

  /// What the comparison left, once it has succeeded.
  FileComparison& result() { return comparison_; }

 private:
  ComparisonJob(HWND window, const std::string (&paths)[2], const CompareOptions& options);

  static DWORD WINAPI threadMain(void* argument);
  void run();

  HWND window_;
  std::string paths_[2];
  CompareOptions options_;
  AbortFlag abort_;
  std::atomic<bool> finished_{false};
  // The thread's until it has finished.
  Outcome outcome_;
  FileComparison comparison_;
};

}  // namespace merivane
