#pragma once

#include <windows.h>

namespace merivane {

/// A comparison has ended; posted by its thread to the window that started it, without parameters.
extern const UINT compareDoneMessage;

/// What the Find dialog sends to its owner.
extern const UINT findReplaceMessage;

}  // namespace merivane
