#pragma once

#include <vector>

#include "base/abort_flag.h"
#include "folders/folder_entry.h"

namespace merivane {

/// Puts entries into the order of comesBefore(), looking at the flag every so often. False when it was
/// raised; they are then in any order. Throws std::bad_alloc.
bool sortEntries(std::vector<const FolderEntry*>& entries, const AbortFlag* abort);

}  // namespace merivane
