#pragma once

#include <string>
#include <vector>

#include "base/file_system.h"
#include "folders/folder_comparison.h"
#include "folders/folder_options.h"

namespace merivane {

/// Lists all files below an entry of one side, which stands for them in a comparison: under the same filter,
/// links followed in the same way, in the order of their names. The names begin at `top`; the entry's own
/// is `name`, which may be a file's. Folders that could not be listed and entries that are neither files nor
/// folders are added to `troubles`. Throws std::bad_alloc.
std::vector<std::string> listFilesOf(FileSystem& files, const std::string& top, const std::string& name,
                                     int side, const FolderOptions& options,
                                     std::vector<FolderTrouble>& troubles);

}  // namespace merivane
