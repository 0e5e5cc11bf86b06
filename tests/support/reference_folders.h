#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "folders/folder_comparison.h"

namespace merivane {

/// The comparison of folders in its plainest form: one thread, partners searched for entry by entry, files
/// read in small blocks, texts loaded whole. What the real one is held to.
class ReferenceFolders {
 public:
  struct Entry {
    std::string name;
    bool isFolder = false;
    bool inSubfolder = false;
    uint16_t differences = 0;

    bool operator==(const Entry&) const = default;
  };

  ReferenceFolders(FileSystem& files, const std::string (&paths)[2], const FolderOptions& options);

  std::vector<Entry> entries[kFolderCategories];

 private:
  struct Found : Entry {
    ListedEntry listed;
    std::string own;
  };

  std::vector<Found> scan(int side, const std::string& folder);
  bool compareLevel(std::vector<Found> oldList, std::vector<Found> newList, bool stopAtFirst);
  bool comparePair(const Found& oldEntry, Found& newEntry, bool stopAtFirst);
  bool differByBytes(const std::string (&paths)[2]);
  bool differAsTexts(const std::string (&paths)[2]);
  void add(FolderCategory category, const Found& entry);

  FileSystem& files_;
  const std::string paths_[2];
  const FolderOptions options_;
};

/// What a real comparison found, in the same form.
std::vector<ReferenceFolders::Entry> plainEntries(const std::vector<FolderEntry>& entries);

/// The entry of that name; throws where there is none.
const FolderEntry& entryNamed(const FolderComparison& comparison, const std::string& name);

/// Whether a name of ASCII matches a pattern, tried in every way.
bool referenceMatch(std::string_view pattern, std::string_view name, bool caseSensitive);

}  // namespace merivane
