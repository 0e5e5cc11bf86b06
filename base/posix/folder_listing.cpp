#include "base/folder_listing.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>

namespace merivane {
namespace {

SystemError lastError() { return static_cast<SystemError>(errno); }

FileKind kindOf(mode_t mode) {
  if (S_ISREG(mode)) return FileKind::file;
  return S_ISDIR(mode) ? FileKind::folder : FileKind::other;
}

/// As far as the folder itself tells, for an entry that could not be looked at.
FileKind listedKind(unsigned char type) {
  switch (type) {
    case DT_DIR:
      return FileKind::folder;
    case DT_REG:
      return FileKind::file;
    case DT_LNK:
    case DT_UNKNOWN:
      return FileKind::none;
    default:
      return FileKind::other;
  }
}

void fill(const struct stat& status, ListedEntry& entry) {
  entry.kind = kindOf(status.st_mode);
  entry.size = entry.kind == FileKind::file ? static_cast<uint64_t>(status.st_size) : 0;
  entry.modified = status.st_mtim.tv_sec;
  entry.identity = {static_cast<uint64_t>(status.st_dev), static_cast<uint64_t>(status.st_ino)};
  entry.isReadOnly = (status.st_mode & S_IWUSR) == 0;
}

/// Looks at an entry and, where it is a link, at what it leads to. False when it is no longer there.
bool look(int folder, const dirent& found, ListedEntry& entry) {
  struct stat status;
  entry.kind = listedKind(found.d_type);
  entry.isLink = found.d_type == DT_LNK;
  if (!entry.isLink) {
    if (::fstatat(folder, found.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
      entry.error = lastError();
      return entry.error != ENOENT;
    }
    entry.isLink = S_ISLNK(status.st_mode);
  }
  if (entry.isLink && ::fstatat(folder, found.d_name, &status, 0) != 0) {
    entry.kind = FileKind::none;
    entry.error = lastError();
    return true;
  }
  fill(status, entry);
  return true;
}

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

}  // namespace

SystemError listSystemFolder(const std::string& path, const AbortFlag* abort, FolderListing& listing) {
  listing.clear();
  const std::unique_ptr<DIR, CloseFolder> folder(::opendir(path.c_str()));
  if (!folder) return lastError();
  while (!isRaised(abort)) {
    errno = 0;
    const dirent* const found = ::readdir(folder.get());
    if (found == nullptr) {
      const SystemError error = lastError();
      if (error != 0) listing.clear();
      return error;
    }
    const std::string_view name = found->d_name;
    ListedEntry entry;
    if (name != "." && name != ".." && look(::dirfd(folder.get()), *found, entry)) listing.add(name, entry);
  }
  return 0;
}

}  // namespace merivane
