#include "tests/support/reference_folders.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "base/names.h"
#include "base/paths.h"
#include "engine/comparison.h"
#include "folders/name_filter.h"

namespace merivane {

ReferenceFolders::ReferenceFolders(FileSystem& files, const std::string (&paths)[2],
                                   const FolderOptions& options)
    : files_(files), paths_{paths[0], paths[1]}, options_(options) {
  compareLevel(scan(0, ""), scan(1, ""), false);
  const auto folded = [](std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), lowerCase);
    return name;
  };
  for (std::vector<Entry>& category : entries) {
    std::stable_sort(category.begin(), category.end(), [&](const Entry& a, const Entry& b) {
      const bool x = a.isFolder || a.inSubfolder, y = b.isFolder || b.inSubfolder;
      if (x != y) return x;
      if (folded(a.name) != folded(b.name)) return folded(a.name) < folded(b.name);
      return a.name != b.name ? a.name < b.name : a.isFolder > b.isFolder;
    });
  }
}

std::vector<ReferenceFolders::Found> ReferenceFolders::scan(int side, const std::string& folder) {
  std::vector<Found> found;
  FolderListing listing;
  files_.list(joinPath(paths_[side], folder), nullptr, listing);
  std::vector<std::string> patterns;
  if (options_.hasIncludeFilter) {
    patterns = parseFilter(options_.includeFilter);
  } else if (options_.hasExcludeFilter) {
    patterns = parseFilter(options_.excludeFilter);
  }
  for (uint32_t i = 0; i < listing.size(); ++i) {
    Found entry;
    entry.own = listing.name(i);
    bool matches = false;
    for (const std::string& pattern : patterns) {
      matches = matches || referenceMatch(pattern, entry.own, !options_.ignoreNameCase);
    }
    const bool filters = options_.hasIncludeFilter || options_.hasExcludeFilter;
    if (filters && matches != options_.hasIncludeFilter) continue;
    entry.listed = listing.entry(i);
    entry.name = joinPath(folder, entry.own);
    entry.isFolder = entry.listed.kind == FileKind::folder;
    entry.inSubfolder = !folder.empty();
    if (entry.isFolder ? options_.folderAttributes : options_.attributes) {
      if (entry.listed.isHidden) entry.differences |= 1;
      if (entry.listed.isReadOnly) entry.differences |= 4;
    }
    found.push_back(entry);
  }
  return found;
}

bool ReferenceFolders::compareLevel(std::vector<Found> oldList, std::vector<Found> newList,
                                    bool stopAtFirst) {
  bool differs = false;
  for (const Found& oldEntry : oldList) {
    auto partner = std::find_if(newList.begin(), newList.end(), [&](const Found& entry) {
      return entry.own == oldEntry.own && entry.isFolder == oldEntry.isFolder;
    });
    if (partner == newList.end() && options_.ignoreNameCase) {
      partner = std::find_if(newList.begin(), newList.end(), [&](const Found& entry) {
        return equalNames(entry.own, oldEntry.own, false) && entry.isFolder == oldEntry.isFolder;
      });
    }
    if (partner == newList.end()) {
      if (stopAtFirst) return true;
      add(FolderCategory::onlyOld, oldEntry);
      differs = true;
      continue;
    }
    if (comparePair(oldEntry, *partner, stopAtFirst)) {
      if (stopAtFirst) return true;
      differs = true;
    }
    newList.erase(partner);
  }
  if (stopAtFirst) return differs || !newList.empty();
  for (const Found& entry : newList) add(FolderCategory::onlyNew, entry);
  return differs || !newList.empty();
}

bool ReferenceFolders::comparePair(const Found& oldEntry, Found& newEntry, bool stopAtFirst) {
  bool changed = false;
  for (const uint16_t bit : {1, 4}) {
    const bool had = oldEntry.differences & bit, has = newEntry.differences & bit;
    if (had && !has) newEntry.differences |= static_cast<uint16_t>(bit << 1);
    changed = changed || had != has;
  }
  const auto differ = [&](uint16_t bit) {
    newEntry.differences |= bit;
    changed = true;
  };
  if (newEntry.isFolder ? options_.folderDate : options_.date) {
    if (oldEntry.listed.modified < newEntry.listed.modified) differ(16);
    if (oldEntry.listed.modified > newEntry.listed.modified) differ(32);
  }
  if (!newEntry.isFolder && options_.size) {
    if (oldEntry.listed.size < newEntry.listed.size) differ(64);
    if (oldEntry.listed.size > newEntry.listed.size) differ(128);
  }
  std::vector<Entry>& same = entries[static_cast<size_t>(FolderCategory::same)];
  const size_t sameBefore = same.size();
  if (newEntry.isFolder) {
    if (compareLevel(scan(0, oldEntry.name), scan(1, newEntry.name), stopAtFirst || !options_.subfolders)) {
      differ(256);
    }
  } else {
    const std::string paths[2] = {joinPath(paths_[0], oldEntry.name), joinPath(paths_[1], newEntry.name)};
    if (options_.quickContents) {
      if (oldEntry.listed.size != newEntry.listed.size || differByBytes(paths)) differ(256);
    } else if (options_.fullContents && differAsTexts(paths)) {
      differ(256);
    }
  }
  if (stopAtFirst) return changed;
  if (newEntry.isFolder && !changed) same.resize(sameBefore);
  const bool listedBelow = newEntry.isFolder && changed && options_.subfolders && newEntry.differences == 256;
  if (!listedBelow) add(changed ? FolderCategory::changed : FolderCategory::same, newEntry);
  return changed;
}

bool ReferenceFolders::differByBytes(const std::string (&paths)[2]) {
  std::unique_ptr<InputFile> opened[2];
  for (const int side : {0, 1}) {
    if (files_.open(paths[side], opened[side]) != 0) return false;
  }
  for (;;) {
    char blocks[2][4096];
    uint32_t got[2] = {0, 0};
    for (const int side : {0, 1}) {
      if (opened[side]->read(blocks[side], 4096, got[side]) != 0) return false;
    }
    if (std::string_view(blocks[0], got[0]) != std::string_view(blocks[1], got[1])) return true;
    if (got[0] < 4096) return false;
  }
}

bool ReferenceFolders::differAsTexts(const std::string (&paths)[2]) {
  FileComparison comparison;
  if (!compareFiles(files_, paths, options_.text, nullptr, comparison).succeeded()) return false;
  return comparison.model.differingRows() > 0;
}

void ReferenceFolders::add(FolderCategory category, const Found& entry) {
  entries[static_cast<size_t>(category)].push_back(entry);
}

std::vector<ReferenceFolders::Entry> plainEntries(const std::vector<FolderEntry>& entries) {
  std::vector<ReferenceFolders::Entry> plain;
  for (const FolderEntry& entry : entries) {
    plain.push_back({std::string(entry.name()), entry.isFolder, entry.inSubfolder, entry.differences});
  }
  return plain;
}

const FolderEntry& entryNamed(const FolderComparison& comparison, const std::string& name) {
  for (const auto& entries : comparison.entries) {
    for (const FolderEntry& each : entries) {
      if (each.name() == name) return each;
    }
  }
  throw std::invalid_argument(name);
}

bool referenceMatch(std::string_view pattern, std::string_view name, bool caseSensitive) {
  if (pattern.size() >= 3 && pattern.substr(pattern.size() - 3) == "*.*") pattern.remove_suffix(2);
  // matches[i][j]: what of the pattern comes from i on matches what of the name comes from j on.
  const size_t rows = pattern.size(), columns = name.size();
  std::vector<std::vector<bool>> matches(rows + 1, std::vector<bool>(columns + 1));
  matches[rows][columns] = true;
  for (size_t i = rows; i-- > 0;) {
    for (size_t j = columns + 1; j-- > 0;) {
      if (pattern[i] == '*') {
        matches[i][j] = matches[i + 1][j] || (j < columns && matches[i][j + 1]);
      } else if (j < columns) {
        const bool equal =
            pattern[i] == '?' || equalNames(pattern.substr(i, 1), name.substr(j, 1), caseSensitive);
        matches[i][j] = equal && matches[i + 1][j + 1];
      }
    }
  }
  return matches[0][0];
}

}  // namespace merivane
