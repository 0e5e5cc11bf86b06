#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/abort_flag.h"
#include "base/result.h"

namespace merivane {

enum class FileKind : uint8_t { none, file, folder, other };

/// What a file or folder is, whatever name leads to it: the same for two names when, and only when, the file
/// system says that they are one file. Unknown where nothing is there.
struct FileIdentity {
  uint64_t volume = 0;
  uint64_t index = 0;

  bool known() const { return volume != 0 || index != 0; }  // or there is nothing
  bool operator==(const FileIdentity&) const = default;
};

/// What a listing tells of one entry of a folder; of a link, what it leads to.
struct ListedEntry {
  uint64_t size = 0;               // of a file, in bytes; 0 for everything else
  int64_t modified = 0;            // whole seconds since 1970 in UTC, rounded down
  FileIdentity identity;           // where it costs nothing to tell
  SystemError error = 0;           // why the entry could not be looked at; size and time then mean nothing
  FileKind kind = FileKind::none;  // none for a link that leads nowhere
  bool isLink = false;             // a symbolic link or a junction
  bool isHidden = false;           // never on systems that tell it by the name
  bool isReadOnly = false;         // the attribute; where there are rights instead, the owner may not write
};

/// The entries of one folder in the order in which the system gives them. Names are kept in one piece of
/// memory, so that large folders are listed without an allocation for each.
class FolderListing {
 public:
  uint32_t size() const { return static_cast<uint32_t>(entries_.size()); }
  const ListedEntry& entry(uint32_t index) const { return entries_[index]; }
  std::string_view name(uint32_t index) const {
    return std::string_view(names_).substr(begins_[index], begins_[index + 1] - begins_[index]);
  }

  /// Throws std::bad_alloc, also when the names have no room in 32-bit positions.
  void add(std::string_view name, const ListedEntry& entry);
  void clear();
  /// Gives back the room that adding has kept ahead.
  void fit();

 private:
  std::string names_;
  std::vector<uint32_t> begins_ = {0};  // one more than there are entries
  std::vector<ListedEntry> entries_;
};

/// What systemFiles() lists folders with: see FileSystem::list().
SystemError listSystemFolder(const std::string& path, const AbortFlag* abort, FolderListing& listing);

}  // namespace merivane
