#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

namespace merivane {

enum class FolderCategory : uint8_t { onlyOld = 0, onlyNew = 1, changed = 2, same = 3 };
constexpr int kFolderCategories = 4;

/// In what the new one of two entries differs from the old one; a bit set. The bits of the new one's own
/// attributes say no more than that it has them, and are there only where attributes count.
enum Difference : uint16_t {
  kHidden = 1,
  kWasHidden = 2,
  kReadOnly = 4,
  kWasReadOnly = 8,
  kNewer = 16,
  kOlder = 32,
  kLarger = 64,
  kSmaller = 128,
  kContents = 256,
};

/// Why two entries could not be compared all the way. They are in the category that what is known of them
/// gives, with contents that count as equal.
enum class NotCompared : uint8_t {
  nothing,     // they were
  unreadable,  // goes with a SystemError
  vanished,    // meanwhile
  tooLong,     // the path, for the system
  brokenLink,  // a link that leads nowhere
  loop,        // a link to a folder that it is in itself
  special,     // a device, a pipe: these are never opened
  binary,      // not equal byte for byte, and no texts
  outOfMemory,
  below,  // a folder with such an entry in it
};

/// What a reason is called where programs read it, and how the user is told of it.
const char* notComparedKey(NotCompared reason);
const char* notComparedText(NotCompared reason);

/// What a side had of an entry when its folder was listed.
struct EntryFacts {
  uint64_t size = 0;     // of a file, in bytes
  int64_t modified = 0;  // seconds since 1970
};

/// One file or folder of a folder comparison. The names are parts of memory that the FolderComparison owns.
struct FolderEntry {
  /// For each side the path from the compared folder on; empty where the side does not have the entry. They
  /// are not the same where names pair up without regard to case.
  std::string_view names[2];
  EntryFacts facts[2];
  uint16_t differences = 0;  // Difference bits
  bool isFolder = false;
  bool inSubfolder = false;  // the names are more than a name
  NotCompared notCompared = NotCompared::nothing;

  /// As it is shown: the new side's, where that has one.
  std::string_view name() const { return names[names[1].empty() ? 0 : 1]; }
};

/// The words for the differences in the order in which they are shown. Of an attribute's two bits the first
/// wins.
std::vector<const char*> differenceWords(uint16_t differences);

/// "(newer, larger)"; empty for no difference.
std::string differenceText(uint16_t differences);

/// The order of a category: folders and what is in subfolders first, then by name without regard to case;
/// what is equal then, by bytes.
bool comesBefore(const FolderEntry& a, const FolderEntry& b);

}  // namespace merivane
