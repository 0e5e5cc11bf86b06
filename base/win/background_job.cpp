#include "base/win/background_job.h"

#include <objbase.h>

#include <exception>
#include <new>
#include <utility>

namespace merivane {

BackgroundJob::BackgroundJob(HWND window, UINT message, Work work)
    : window_(window), message_(message), work_(std::move(work)) {}

std::shared_ptr<BackgroundJob> BackgroundJob::start(HWND window, UINT message, Work work) {
  std::shared_ptr<BackgroundJob> job(new BackgroundJob(window, message, std::move(work)));
  auto share = std::make_unique<std::shared_ptr<BackgroundJob>>(job);
  const HANDLE thread = CreateThread(nullptr, 0, threadMain, share.get(), CREATE_SUSPENDED, nullptr);
  if (thread == nullptr) throw std::bad_alloc();
  share.release();  // the thread's now
  ResumeThread(thread);
  CloseHandle(thread);
  return job;
}

std::optional<WorkEnd> BackgroundJob::end() const {
  if (abort_.isRaised()) return WorkEnd::cancelled;
  switch (state_.load(std::memory_order_acquire)) {
    case State::running: return std::nullopt;
    case State::done: return WorkEnd::done;
    case State::outOfMemory: return WorkEnd::outOfMemory;
  }
  return std::nullopt;
}

DWORD WINAPI BackgroundJob::threadMain(void* argument) {
  const std::unique_ptr<std::shared_ptr<BackgroundJob>> share(
      static_cast<std::shared_ptr<BackgroundJob>*>(argument));
  (*share)->run();
  return 0;
}

void BackgroundJob::run() {
  const bool com = SUCCEEDED(CoInitialize(nullptr));
  State state = State::done;
  try {
    work_(abort_);
  } catch (const std::exception&) {
    state = State::outOfMemory;  // the standard library throws nothing else here
  }
  if (com) CoUninitialize();
  state_.store(state, std::memory_order_release);
  PostMessageW(window_, message_, 0, 0);
}

}  // namespace merivane
