#include "base/folder_listing.h"

#include <windows.h>

#include <memory>
#include <string>

#include "base/paths.h"
#include "base/win/file_facts.h"
#include "base/win/handle.h"
#include "base/win/wide.h"

namespace merivane {
namespace {

/// What a path leads to, through all links. Returns 0 or the error.
SystemError lookThrough(const std::wstring& path, BY_HANDLE_FILE_INFORMATION& found) {
  // Backup semantics open folders too; asking for no rights opens what may not be read.
  const Handle file(
      CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!file.valid() || !GetFileInformationByHandle(file.get(), &found)) return GetLastError();
  return 0;
}

/// Both ways of asking for an entry have the same fields.
template <typename Found>
void fill(const Found& found, ListedEntry& entry) {
  const DWORD attributes = found.dwFileAttributes;
  entry.kind = attributes & FILE_ATTRIBUTE_DIRECTORY ? FileKind::folder : FileKind::file;
  entry.size = entry.kind == FileKind::file ? joined(found.nFileSizeHigh, found.nFileSizeLow) : 0;
  entry.modified = wholeSeconds(found.ftLastWriteTime);
  entry.isHidden = (attributes & FILE_ATTRIBUTE_HIDDEN) != 0;
  entry.isReadOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

}  // namespace

SystemError listSystemFolder(const std::string& path, const AbortFlag* abort, FolderListing& listing) {
  listing.clear();
  WIN32_FIND_DATAW found;
  // Without short names and in large pieces; what is found tells all there is to know, save of links.
  const HANDLE search = FindFirstFileExW(systemPath(joinPath(path, "*")).c_str(), FindExInfoBasic, &found,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
  if (search == INVALID_HANDLE_VALUE) {
    const SystemError error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND ? 0 : error;  // the root of an empty drive lists not even itself
  }
  const auto close = [](void* handle) { FindClose(handle); };
  const std::unique_ptr<void, decltype(close)> closing(search, close);
  do {
    if (isRaised(abort)) return 0;
    const std::string name = utf8(found.cFileName);
    if (name == "." || name == "..") continue;
    ListedEntry entry;
    fill(found, entry);
    entry.isLink = isLink(found);
    if (entry.isLink) {
      BY_HANDLE_FILE_INFORMATION target;
      entry.error = lookThrough(systemPath(joinPath(path, name)), target);
      if (entry.error == 0) fill(target, entry);
    }
    listing.add(name, entry);
  } while (FindNextFileW(search, &found));
  const SystemError error = GetLastError();
  if (error == ERROR_NO_MORE_FILES) return 0;
  listing.clear();
  return error;
}

}  // namespace merivane
