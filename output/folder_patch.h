#pragma once

#include <vector>

#include "base/byte_sink.h"
#include "base/file_system.h"
#include "folders/folder_comparison.h"
#include "folders/folder_options.h"
#include "output/folder_writers.h"

namespace merivane {

/// Writes one patch of all text files of a comparison that changed or are on one side alone: the one that
/// makes the old folder the new one, for programs that leave out the first part of each name. The files are
/// read anew. What cannot be part of it, such as binary files, is added to `left`. Throws std::bad_alloc.
void writeFolderPatch(FileSystem& files, const WrittenFolders& folders, const FolderOptions& compared,
                      const WriterOptions& options, ByteSink& sink, std::vector<FolderTrouble>& left);

}  // namespace merivane
