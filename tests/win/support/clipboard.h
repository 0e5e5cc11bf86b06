#pragma once

#include <windows.h>

#include <string>

namespace merivane {

/// What the program puts into the clipboard, which all programs share, after this was made. Looking at the
/// clipboard again and again would keep the program from it.
class ClipboardWatch {
 public:
  ClipboardWatch() : before_(GetClipboardSequenceNumber()) {}

  /// Waits for it.
  std::string text() const;

 private:
  DWORD before_;
};

}  // namespace merivane
