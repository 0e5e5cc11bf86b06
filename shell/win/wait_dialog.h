#pragma once

#include <memory>

#include "base/texts.h"
#include "base/win/background_job.h"
#include "base/work.h"
#include "shell/win/busy_box.h"

namespace merivane {

/// Work for a window has ended; posted to it without parameters.
extern const UINT compareDoneMessage;

/// "Please wait while..." over a window that takes no input while work is done for it on another
/// thread. The box shows itself only when the wait lasts long enough to be noticed.
class WaitDialog final : public BusyBox {
 public:
  WaitDialog() = default;
  ~WaitDialog() override;

  /// Starts `work`, and shows what is waited for, and what `progress` tells ten times a second if it is
  /// given. `owner` gets no input until the work has ended or the user has cancelled it; it is told by
  /// compareDoneMessage, on which it calls finish(). It is not disabled until the box shows, so that after a
  /// short wait it is still active and nothing has flickered. Only while isBusy() is false.
  void start(HWND owner, TextId waiting, Work work, WhenWorkEnds whenEnded, ProgressText progress);

  bool isBusy() const override { return job_ != nullptr; }

  /// The owner received compareDoneMessage: when its work has ended the box closes and `whenEnded` is called.
  void finish();

  /// Cancels the work, if any is under way, and forgets it.
  void abandon();

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  BOOL onInitDialog();
  BOOL onTimer(UINT_PTR timer);
  void showProgress();
  BOOL onCommand(int id);

  std::shared_ptr<BackgroundJob> job_;
  WhenWorkEnds whenEnded_;
  ProgressText progress_;
  TextId waiting_ = TextId::pleaseWait;
  HWND owner_ = nullptr;
};

}  // namespace merivane
