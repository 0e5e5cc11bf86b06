#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/abort_flag.h"
#include "base/file_system.h"
#include "base/result.h"
#include "folders/folder_entry.h"
#include "folders/folder_options.h"
#include "folders/folder_progress.h"

namespace merivane {

/// A file or folder that could not be compared, in whatever category it is or whether its folder stands
/// for it.
struct FolderTrouble {
  std::string name;  // of the side, from the compared folder on; empty for that folder itself
  int side = 0;
  NotCompared reason = NotCompared::unreadable;
  SystemError error = 0;  // 0 where the reason says it all
};

/// What a comparison of two folders leaves.
struct FolderComparison {
  std::vector<FolderEntry> entries[kFolderCategories];  // by FolderCategory, sorted
  std::vector<FolderTrouble> notCompared;               // by name, and then by side
  std::vector<std::unique_ptr<char[]>> names;           // what the entries' names are parts of

  const std::vector<FolderEntry>& category(FolderCategory category) const {
    return entries[static_cast<size_t>(category)];
  }
  bool differs() const;
  /// Everything was compared, and nothing differs.
  bool isIdentical() const { return !differs() && notCompared.empty(); }
};

/// Compares two folders and all below them. Returns success, cancelled, outOfMemory, or the first that holds
/// of oldFolderMissing, newFolderMissing, oldIsNoFolder and newIsNoFolder; only success leaves anything in
/// `comparison`. A null flag never cancels.
///
/// An entry of one side alone stands for all below it. So does a folder that does not
/// differ. One that does has what is below it listed too, and is itself listed only for a difference of its
/// own, or where subfolders are not looked into. Links to folders are followed unless that leads back into a
/// folder above. Which threads do what never shows in the result.
///
/// Memory: some 60 bytes for each entry of the folders that are being compared just now, and up to 180
/// besides the names for each that is listed.
Result compareFolders(FileSystem& files, const std::string (&paths)[2], const FolderOptions& options,
                      const AbortFlag* abort, FolderComparison& comparison,
                      FolderProgress* progress = nullptr);

/// What the user is told of a result of compareFolders(); empty for success.
std::string folderResultMessage(Result result, const std::string (&paths)[2]);

}  // namespace merivane
