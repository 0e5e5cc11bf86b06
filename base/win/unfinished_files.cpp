#include "base/unfinished_files.h"

#include <windows.h>

#include "base/win/wide.h"

namespace merivane {
namespace {

SRWLOCK held = SRWLOCK_INIT;

}  // namespace

// A console's signals come on a thread of their own, where nothing is forbidden. A file that is still open
// here is gone when the process is.
void removeFileForSignal(const char* path) { DeleteFileW(systemPath(path).c_str()); }

void holdSignals() { AcquireSRWLockExclusive(&held); }
void releaseSignals() { ReleaseSRWLockExclusive(&held); }

void waitForHeldSignals() {
  AcquireSRWLockExclusive(&held);
  ReleaseSRWLockExclusive(&held);
}

}  // namespace merivane
