#pragma once

#include <string>

#include "shell/window_title.h"

namespace merivane {

enum class CloseAnswer { yes, no, cancel };

/// What a text window does while it is asked whether it may close.
class ClosingWindow {
 public:
  virtual ~ClosingWindow() = default;

  virtual TitleSide side(int side) = 0;

  /// Asks `question` with Yes, No and Cancel.
  virtual CloseAnswer ask(const std::string& question) = 0;

  /// Saves a side to a path, which becomes its saved path. False: not saved, and the user was told why.
  virtual bool save(int side, const std::string& path) = 0;

  /// Asks for a name under `title` and saves. False when cancelled or not saved.
  virtual bool saveAs(int side, const char* title) = 0;
};

/// Whether a window may close: asks about each side with unsaved changes, the left one first, and saves what
/// is wanted. Without `askConfirmation` nothing is asked and unsaved changes are lost.
bool mayClose(ClosingWindow& window, bool askConfirmation);

}  // namespace merivane
