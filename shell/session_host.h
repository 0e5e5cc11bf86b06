#pragma once

#include <string>

#include "base/texts.h"
#include "base/work.h"

namespace merivane {

/// Something the user is asked with Yes and No.
struct Question {
  std::string text;
  bool cancel = false;       // Cancel is offered, too
  bool warning = false;      // has the sign of a warning
  bool noByDefault = false;  // Enter chooses No
};

enum class Answer { yes, no, cancel };

enum class ReportKind { information, error };

/// Asks the user and tells him. Everything here may throw std::bad_alloc.
class UserBoxes {
 public:
  virtual ~UserBoxes() = default;

  virtual Answer ask(const Question& question) = 0;
  virtual void report(const std::string& message, ReportKind kind) = 0;
};

/// What a comparison needs of the window that shows it, whatever it compares. Nothing here calls back into
/// the session, save the end of a job, and everything may throw std::bad_alloc.
class SessionHost : public UserBoxes {
 public:
  /// What stands in a side's name box.
  virtual std::string name(int side) const = 0;
  virtual void setName(int side, const std::string& name) = 0;

  virtual void reportOutOfMemory() = 0;

  /// Says in the status bar what was done.
  virtual void showStatus(const std::string& text) = 0;

  /// Has work done on a thread of its own while the user waits, told for what, and may cancel, and sees how
  /// far it is if `progress` tells. `whenEnded` is called after this call has returned, unless the window
  /// closes before; it may start another job.
  virtual void startJob(TextId waiting, Work work, WhenWorkEnds whenEnded,
                        ProgressText progress = nullptr) = 0;
};

}  // namespace merivane
