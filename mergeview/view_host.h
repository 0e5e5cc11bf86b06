#pragma once

#include <string>
#include <string_view>

#include "base/byte_array.h"

namespace merivane {

/// What the view needs of the window it is shown in while an action runs. Nothing here calls back into the
/// view, and whatever is thrown here leaves the view as it was.
class ViewHost {
 public:
  virtual ~ViewHost() = default;

  virtual void beep() = 0;

  /// Beeps and says why without waiting for the user.
  virtual void refuse(const std::string& why) = 0;

  /// Asks whether to go on.
  virtual bool confirm(const std::string& question) = 0;

  /// Puts a text in UTF-8, with CR LF line ends, on the clipboard. False when that fails, of which the host
  /// tells the user.
  virtual bool setClipboardText(std::string_view text) = 0;

  /// Fetches the clipboard's text in well-formed UTF-8. False when there is none, and when fetching it fails,
  /// of which the host tells the user.
  virtual bool clipboardText(ByteArray& text) = 0;

  /// An action was given up as there was no memory for it.
  virtual void reportOutOfMemory() = 0;
};

}  // namespace merivane
