#pragma once

#include <vector>

#include "base/abort_flag.h"
#include "folders/folder_entry.h"

namespace merivane {

/// Puts entries into the order of comesBefore(), with room for two pointers an entry besides, and looks at
/// the flag every so often. False when it was raised; they then mean nothing. Throws std::bad_alloc.
bool sortEntries(std::vector<FolderEntry>& entries, const AbortFlag* abort);

}  // namespace merivane
