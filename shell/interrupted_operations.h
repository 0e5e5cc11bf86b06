#pragma once

#include "base/file_system.h"
#include "operations/tree_operations.h"
#include "shell/session_host.h"

namespace merivane {

/// Looks, when the program starts, for operations on folders that its end interrupted, and asks for each
/// whether it is to be finished, put back or left. What is left or does not work, the next start asks about
/// again.
void offerInterruptedOperations(UserBoxes& boxes, FileSystem& files, TreeOperations& trees);

}  // namespace merivane
