#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "base/result.h"

namespace merivane {

/// Writes bytes to a console as the characters that they are in UTF-8, whatever the console's code page; a
/// byte that belongs to no such character is one of that code page.
class ConsoleWriter {
 public:
  explicit ConsoleWriter(HANDLE console);

  static bool isConsole(HANDLE handle);

  /// The start of a character waits for its rest. Returns 0 or the error.
  SystemError write(std::string_view bytes);

  /// Writes what still waits.
  SystemError finish();

 private:
  SystemError put(std::string_view bytes);

  const HANDLE console_;
  wchar_t codePage_[256];
  std::string waiting_;
};

}  // namespace merivane
