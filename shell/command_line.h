#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_system.h"

namespace merivane {

/// What the program starts with.
struct StartAction {
  enum class Kind {
    emptyTextWindow,
    oneFile,   // paths[0] goes into the left box; nothing to compare yet
    twoFiles,  // compared at once
    message,   // shown, and the program ends without a window
  };

  Kind kind = Kind::emptyTextWindow;
  std::string paths[2];  // absolute
  std::string message;
};

/// Splits a command line, which does not hold the program's name, by the system's quoting rules: blanks and
/// tabs separate arguments outside double quotes; 2n backslashes and a quote are n backslashes and a quoting
/// mark, 2n + 1 are n backslashes and a plain quote; two quotes inside quotes are a plain one.
std::vector<std::string> splitArguments(std::string_view commandLine);

/// Decides what the arguments ask for. "/" and "-" begin an option, unless the argument names a file or
/// folder that exists. `makeAbsolute` completes a path that does.
StartAction readArguments(const std::vector<std::string>& arguments, FileSystem& files,
                          const std::function<std::string(const std::string&)>& makeAbsolute);

}  // namespace merivane
