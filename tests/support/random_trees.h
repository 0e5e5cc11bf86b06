#pragma once

#include <string>
#include <vector>

#include "folders/folder_options.h"
#include "tests/support/memory_files.h"
#include "tests/support/random.h"

namespace merivane {

/// Fills `top` of both paths with trees that are much alike: names that differ in case alone, files in place
/// of folders, texts that differ in blanks or line ends, binary files.
void makeTrees(MemoryFiles& files, const std::string (&paths)[2], Random& random);

FolderOptions randomFolderOptions(Random& random);

}  // namespace merivane
