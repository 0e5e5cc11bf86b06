#pragma once

#include <string>
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

/// Decides what the arguments ask for. "/" and "-" begin an option, unless the argument names a file or
/// folder that exists.
StartAction readArguments(const std::vector<std::string>& arguments, FileSystem& files);

}  // namespace merivane
