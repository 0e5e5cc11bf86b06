#pragma once

#include "cli/diff_options.h"
#include "cli/run_diff.h"

namespace merivane {

/// Runs merivane-diff on the two folders of a command line that is understood; `options` are ready for
/// writing. Returns the exit status. Throws what the standard library throws for want of memory.
int runFolders(const DiffOptions& options, const DiffEnvironment& environment);

}  // namespace merivane
