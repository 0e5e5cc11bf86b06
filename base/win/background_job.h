#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <optional>

#include "base/work.h"

namespace merivane {

/// Work on a thread of its own, done for a window. Window and thread share the job, so that the window can
/// let go of it at any moment: the thread then runs out by itself and what the work holds goes with it.
class BackgroundJob {
 public:
  /// Starts, with COM initialised on the thread. When the work has ended `message` is posted to `window`,
  /// without parameters. Throws std::bad_alloc, also when no thread can be created.
  static std::shared_ptr<BackgroundJob> start(HWND window, UINT message, Work work);

  /// Asks the work to stop. The job counts as cancelled at once.
  void cancel() { abort_.raise(); }

  /// None while it runs.
  std::optional<WorkEnd> end() const;

 private:
  enum class State { running, done, outOfMemory };

  BackgroundJob(HWND window, UINT message, Work work);

  static DWORD WINAPI threadMain(void* argument);
  void run();

  HWND window_;
  UINT message_;
  Work work_;
  AbortFlag abort_;
  std::atomic<State> state_{State::running};
};

}  // namespace merivane
