#pragma once

#include <cstdint>

#include "base/folder_listing.h"
#include "folders/folder_entry.h"
#include "folders/folder_options.h"

namespace merivane {

/// What is known of two entries that pair up. Entries of a file system's listing are compared without
/// another look at them; what that does not tell, the contents, is added by others.
struct PairState {
  uint16_t differences = 0;
  NotCompared notCompared = NotCompared::nothing;
  bool changed : 1 = false;  // apart from the new one's own attributes, which are no difference by themselves
  bool toldBelow : 1 = false;  // a folder's reason has its trouble in the level below already
  uint8_t side : 1 = 0;        // on which it could not be compared
  SystemError error = 0;       // goes with some reasons

  void add(Difference difference) {
    differences |= difference;
    changed = true;
  }
  /// Keeps the first reason.
  void cannotCompare(NotCompared reason, int onSide, SystemError why = 0) {
    if (notCompared != NotCompared::nothing) return;
    notCompared = reason;
    side = onSide & 1;
    error = why;
  }
};

/// The bits for an entry's own attributes, where they count.
uint16_t attributeBits(const ListedEntry& entry, const FolderOptions& options);

/// Compares two entries, both folders or neither, by what their listings tell: attributes, date and size;
/// under quick contents also whether sizes that differ leave nothing to read.
PairState compareEntries(const ListedEntry& oldEntry, const ListedEntry& newEntry,
                         const FolderOptions& options);

/// Whether two files' contents have to be read to tell whether they differ.
bool needsReading(const ListedEntry& oldEntry, const ListedEntry& newEntry, const PairState& state,
                  const FolderOptions& options);

/// The reason for an error of the system.
NotCompared reasonFor(SystemError error);

}  // namespace merivane
