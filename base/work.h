#pragma once

#include <functional>
#include <string>

#include "base/abort_flag.h"

namespace merivane {

/// Work that takes long enough to be done beside the user interface. It looks at the flag every so often;
/// what it holds and changes is its own until it has ended.
using Work = std::function<void(const AbortFlag& abort)>;

enum class WorkEnd { done, cancelled, outOfMemory };

/// Called once, on the user interface's thread, when the work has ended. After `cancelled` the work may still
/// run, so that what it changes must not be looked at.
using WhenWorkEnds = std::function<void(WorkEnd end)>;

/// Tells on the user interface's thread, while the work is under way, how far it is, in two
/// lines.
using ProgressText = std::function<std::string()>;

}  // namespace merivane
