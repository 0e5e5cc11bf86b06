#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/abort_flag.h"
#include "folders/entry_comparison.h"
#include "folders/folder_comparison.h"
#include "folders/name_pairing.h"

namespace merivane {

/// The entries that one folder gives to a result, unsorted, and their names.
struct EntryBatch {
  std::unique_ptr<char[]> names;
  std::vector<FolderEntry> entries[kFolderCategories];
};

/// Two folders while their entries are compared. Which thread may do what: whoever lists a side writes that
/// side; whoever does the last of both pairs them; then every pair is written by the one who does its work,
/// and the rest by whoever ends the level, when all work is done.
struct Level {
  std::shared_ptr<Level> parent;  // null for the compared folders
  uint32_t pairInParent = 0;
  std::string names[2];            // from the compared folders on; empty for these
  bool searching = false;          // only whether anything differs is asked for,
  Level* searched = nullptr;       // of this level,
  std::atomic<bool> found{false};  // which has the answer

  FolderSides sides;
  SystemError listError[2] = {0, 0};
  std::atomic<uint32_t> unlisted{2};
  std::vector<EntryPair> pairs;
  std::vector<PairState> states;    // of the pairs
  std::vector<uint32_t> work;       // the pairs that take more than a look at the listings
  std::atomic<uint32_t> undone{0};  // how many of these are left

  // What comes of it, with what is below.
  bool differs = false;
  std::vector<EntryBatch> batches;
  std::vector<FolderTrouble> troubles;

  const ListedEntry& entry(uint32_t pair, int side) const {
    return sides.listings[side].entry(pairs[pair].index[side]);
  }
  /// From the compared folder on.
  std::string entryName(uint32_t pair, int side) const;
  /// As far as is known.
  bool hasDifference() const;
  bool isPaired(uint32_t pair) const {
    return pairs[pair].index[0] != kNoEntry && pairs[pair].index[1] != kNoEntry;
  }
  bool isFolder(uint32_t pair) const {
    return entry(pair, pairs[pair].index[0] != kNoEntry ? 0 : 1).kind == FileKind::folder;
  }
};

/// Ends a level whose work is all done: whether it differs, and its own batch and troubles besides those from
/// below; what it was made of is given back. When the flag is raised the level means nothing. Throws
/// std::bad_alloc.
void endLevel(Level& level, const FolderOptions& options, const AbortFlag* abort);

/// Hands what came of a level on to the one above and to its pair there. Throws std::bad_alloc.
void handOn(Level& level, Level& parent);

}  // namespace merivane
