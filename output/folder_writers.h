#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/byte_sink.h"
#include "folders/folder_comparison.h"
#include "output/writers.h"

namespace merivane {

/// A comparison of folders as a writer gets it. Holds nothing itself: all of it outlives the writing.
struct WrittenFolders {
  const FolderComparison& comparison;
  std::string_view paths[2];
  bool shows[kFolderCategories];  // which categories' entries are listed, by FolderCategory; all are counted
};

/// Writes a comparison of folders. Throws nothing but std::bad_alloc.
using FolderWriter = void(const WrittenFolders& folders, const WriterOptions& options, ByteSink& sink);

/// A line for every entry, with its category, its name and in what it differs, and the counts.
FolderWriter writeFolderText;

/// The counts alone.
FolderWriter writeFolderSummary;

/// One JSON object, with a line for every entry.
FolderWriter writeFolderJson;

/// One page in UTF-8, with a section for every category.
FolderWriter writeFolderHtml;

/// The writer of a format; null for the patch, which reads the files (folder_patch.h).
FolderWriter* findFolderWriter(const OutputFormat& format);

/// "Changed: 3, Old: 1, New: 2, Same: 40", and how many could not be compared, if any.
std::string folderCounts(const FolderComparison& comparison);

/// "Changed", "Old", "New", "Same".
const char* categoryName(FolderCategory category);

/// The order in which the categories are shown.
constexpr FolderCategory kShownOrder[] = {FolderCategory::changed, FolderCategory::onlyOld,
                                          FolderCategory::onlyNew, FolderCategory::same};

}  // namespace merivane
