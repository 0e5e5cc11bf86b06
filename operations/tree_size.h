#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/abort_flag.h"
#include "base/texts.h"
#include "folders/folder_progress.h"
#include "operations/tree_operations.h"

namespace merivane {

/// Something that must not be handed to the shell, which would take it for something else.
struct Refusal {
  TextId reason;  // "%1" is the path
  std::string path;

  std::string message() const;
};

/// A file, or a folder with all below it, whether a filter shows it or not.
struct TreeSize {
  uint64_t files = 0;
  uint64_t folders = 0;  // itself counts
  uint64_t bytes = 0;
  size_t longest = 0;  // of the paths below it, from its own name on, in UTF-16 units

  TreeSize& operator+=(const TreeSize& other);
};

/// Measures what is at `path`, which is there. Returns why it is nothing for the shell, if it is so:
/// something in it cannot be read, is a link, which an operation would follow, or neither file nor folder, or
/// has a name that the shell does not take literally.
/// Where the flag is raised meanwhile the size means nothing; neither it nor the progress need be given.
std::optional<Refusal> measureTree(FileSystem& files, TreeOperations& trees, const std::string& path,
                                   TreeSize& size, const AbortFlag* abort, FolderProgress* progress);

/// Whether the system takes a name as it is: not for a pattern, a device, or without the dots at its end.
bool isTakenLiterally(std::string_view name);

/// The folder that a path lies in, empty for none, and the name there. A drive's keeps its separator.
std::string folderOf(const std::string& path);
std::string nameOf(const std::string& path);

/// A path in lower case, which is the same for all spellings of one path.
std::string folded(std::string path);

/// How long a path is for the system, in UTF-16 units.
size_t pathLength(std::string_view path);

/// Whether all that is at `original` is at `copy`, with the same sizes and times of files. Some file systems
/// keep times only to two seconds.
bool isCopied(FileSystem& files, TreeOperations& trees, const std::string& original, const std::string& copy);

/// Gives every folder of a copy the times and attributes of its original, as far as that can be done. False
/// when the folders cannot be found.
bool copyFolderFacts(FileSystem& files, TreeOperations& trees, const std::string& original,
                     const std::string& copy);

/// Removes a file, or a folder with all below it, for good; of a link, the link. Nothing there counts as
/// removed, and what is not taken literally is not touched. Returns 0 or the error, after which a part of it
/// may be gone.
SystemError removeTree(FileSystem& files, TreeOperations& trees, const std::string& path);

}  // namespace merivane
