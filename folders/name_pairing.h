#pragma once

#include <cstdint>
#include <vector>

#include "base/abort_flag.h"
#include "base/folder_listing.h"

namespace merivane {

constexpr uint32_t kNoEntry = 0xFFFFFFFF;

/// Indices of two entries in the listings of both sides; kNoEntry where a side has none.
struct EntryPair {
  uint32_t index[2];
};

/// The two sides of one folder: what was listed, and the indices of those entries that take part.
struct FolderSides {
  FolderListing listings[2];
  std::vector<uint32_t> kept[2];
};

/// Pairs the entries of two folders. Each old entry, in order, gets the new one of the same name; without
/// one, if names are compared without regard to case, the first one left whose name differs in that alone. A
/// folder never pairs with anything but a folder. The old entries come first, in order, then what is left of
/// the new ones. Takes time in proportion to the entries. When the flag is raised the pairs mean nothing.
/// Throws std::bad_alloc.
std::vector<EntryPair> pairEntries(const FolderSides& sides, bool ignoreNameCase, const AbortFlag* abort);

}  // namespace merivane
