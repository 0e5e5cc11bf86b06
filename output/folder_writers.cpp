#include "output/folder_writers.h"

namespace merivane {

const char* categoryName(FolderCategory category) {
  switch (category) {
    case FolderCategory::onlyOld:
      return "Old";
    case FolderCategory::onlyNew:
      return "New";
    case FolderCategory::changed:
      return "Changed";
    case FolderCategory::same:
      return "Same";
  }
  return "";
}

std::string folderCounts(const FolderComparison& comparison) {
  std::string counts;
  for (const FolderCategory category : kShownOrder) {
    if (!counts.empty()) counts += ", ";
    counts += categoryName(category) + (": " + std::to_string(comparison.category(category).size()));
  }
  const size_t notCompared = comparison.notCompared.size();
  if (notCompared > 0) counts += ", Not compared: " + std::to_string(notCompared);
  return counts;
}

void writeFolderSummary(const WrittenFolders& folders, const WriterOptions&, ByteSink& sink) {
  sink.write(folderCounts(folders.comparison) + "\n");
}

FolderWriter* findFolderWriter(const OutputFormat& format) {
  if (format.write == writeText) return writeFolderText;
  if (format.write == writeSummary) return writeFolderSummary;
  if (format.write == writeJson) return writeFolderJson;
  return format.write == writeHtml ? writeFolderHtml : nullptr;
}

}  // namespace merivane
