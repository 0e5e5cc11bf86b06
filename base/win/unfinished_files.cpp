#include "base/unfinished_files.h"

#include <windows.h>

#include "base/win/wide.h"

namespace merivane {
namespace {

SRWLOCK held = SRWLOCK_INIT;

}  // namespace

// A console's signals come on a thread of their own, where nothing is forbidden. A file that is still open
// here is gone when the process is.
bool removeFileForSignal(const char* path) {
  if (DeleteFileW(systemPath(path).c_str())) return true;
  const DWORD error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

void holdSignals() { AcquireSRWLockExclusive(&held); }
void releaseSignals() { ReleaseSRWLockExclusive(&held); }

void waitForHeldSignals() {
  AcquireSRWLockExclusive(&held);
  ReleaseSRWLockExclusive(&held);
}

}  // namespace merivane
