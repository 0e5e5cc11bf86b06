#include "cli/process.h"

#include <windows.h>

#include "base/unfinished_files.h"
#include "base/win/command_line.h"
#include "cli/progress_line.h"

namespace merivane {
namespace {

/// Runs on a thread of its own; FALSE lets the system end the process.
BOOL WINAPI onConsoleEvent(DWORD) {
  removeUnfinishedFiles();
  DWORD written = 0;
  if (endProgressLineForSignal()) {
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), kErasesLine.data(), static_cast<DWORD>(kErasesLine.size()),
              &written, nullptr);
  }
  return FALSE;
}

}  // namespace

// The system's heap does so.
void keepFreedMemory() {}

void removeUnfinishedFilesOnSignals() { SetConsoleCtrlHandler(onConsoleEvent, TRUE); }

std::vector<std::string> commandLineArguments(int, char**) { return commandLineArguments(); }

}  // namespace merivane
