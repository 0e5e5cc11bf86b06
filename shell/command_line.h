#pragma once

#include <string>
#include <vector>

#include "base/file_system.h"
#include "shell/given_side.h"
#include "shell/window_kind.h"

namespace merivane {

/// What the program starts with.
struct StartAction {
  enum class Kind {
    emptyTextWindow,
    onePath,   // sides[0] goes into the left box; nothing to compare yet
    twoPaths,  // compared at once
    notFound,  // both go into the boxes, and the message says what is wrong
    refusal,   // the message says what is wrong, and the program ends without a window
    help,      // so it does after this message
  };

  Kind kind = Kind::emptyTextWindow;
  WindowKind window = WindowKind::text;  // that the paths go into
  GivenSide sides[2];                    // their paths absolute
  std::string message;
};

/// Decides what the arguments ask for. "/", "-" and "--" begin an option, unless the argument names a file or
/// folder that exists.
StartAction readArguments(const std::vector<std::string>& arguments, FileSystem& files);

}  // namespace merivane
