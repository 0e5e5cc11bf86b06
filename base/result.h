#pragma once

#include <cstdint>

namespace merivane {

/// How a comparison ended. The numbers are result codes that others rely on.
enum class Result : int32_t {
  success = 0,
  outOfMemory = 1,
  cancelled = 2,
  leftPathInvalid = 3,
  rightPathInvalid = 4,
  leftBinary = 5,
  rightBinary = 6,
  leftUnreadable = 7,   // goes with a SystemError
  rightUnreadable = 8,  // goes with a SystemError
  oldFolderMissing = 9,
  newFolderMissing = 10,
  oldIsNoFolder = 11,
  newIsNoFolder = 12,
};

/// An error code of the platform: GetLastError's on Windows, errno's elsewhere. 0 is no error.
using SystemError = uint32_t;

}  // namespace merivane
