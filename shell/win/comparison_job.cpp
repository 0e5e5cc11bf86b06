#include "shell/win/comparison_job.h"

#include <objbase.h>

#include <exception>

#include "shell/win/registered_messages.h"
#include "shell/win/shell_utilities.h"

namespace merivane {

ComparisonJob::ComparisonJob(HWND window, const std::string (&paths)[2], const CompareOptions& options)
    : window_(window), paths_{paths[0], paths[1]}, options_(options) {}

std::shared_ptr<ComparisonJob> ComparisonJob::start(HWND window, const std::string (&paths)[2],
                                                    const CompareOptions& options) {
  std::shared_ptr<ComparisonJob> job(new ComparisonJob(window, paths, options));
  auto share = std::make_unique<std::shared_ptr<ComparisonJob>>(job);
  const HANDLE thread = CreateThread(nullptr, 0, threadMain, share.get(), CREATE_SUSPENDED, nullptr);
  if (thread == nullptr) throw std::bad_alloc();
  share.release();  // the thread's now
  ResumeThread(thread);
  CloseHandle(thread);
  return job;
}

Outcome ComparisonJob::outcome() const { return abort_.isRaised() ? Outcome{Result::cancelled} : outcome_; }

DWORD WINAPI ComparisonJob::threadMain(void* argument) {
  const std::unique_ptr<std::shared_ptr<ComparisonJob>> share(
      static_cast<std::shared_ptr<ComparisonJob>*>(argument));
  (*share)->run();
  return 0;
}

void ComparisonJob::run() {
  CoInitialize(nullptr);  // for the shortcuts
  try {
    for (std::string& path : paths_) path = ResolveShortcut(path);
    outcome_ = compareFiles(systemFiles(), paths_, options_, &abort_, comparison_);
  } catch (const std::exception&) {
    outcome_ = {Result::outOfMemory};
  }
  CoUninitialize();
  finished_.store(true, std::memory_order_release);
  PostMessageA(window_, compareDoneMessage, 0, 0);
}

}  // namespace merivane
