#pragma once

#include <memory>

#include "operations/tree_operations.h"

namespace merivane {

/// Copies and deletes with the shell. What it shows belongs to the window `owner`, an HWND, or to none.
std::unique_ptr<TreeOperations> makeShellTrees(void* owner);

}  // namespace merivane
