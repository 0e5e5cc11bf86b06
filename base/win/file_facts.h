#pragma once

#include <windows.h>

#include <cstdint>

namespace merivane {

/// What the system tells of files, as numbers of ours.

constexpr uint64_t joined(DWORD high, DWORD low) { return uint64_t{high} << 32 | low; }

/// Since 1970, rounded down.
constexpr int64_t wholeSeconds(const FILETIME& time) {
  constexpr int64_t aSecond = 10'000'000, until1970 = 11'644'473'600;
  return static_cast<int64_t>(joined(time.dwHighDateTime, time.dwLowDateTime)) / aSecond - until1970;
}

/// Other reparse points, such as files that are kept in a cloud, are what they seem to be.
inline bool isLink(const WIN32_FIND_DATAW& found) {
  return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK || found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

}  // namespace merivane
