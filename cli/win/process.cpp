#include "cli/process.h"

#include <windows.h>

#include "base/unfinished_files.h"
#include "base/win/command_line.h"

namespace merivane {
namespace {

/// Runs on a thread of its own; FALSE lets the system end the process.
BOOL WINAPI onConsoleEvent(DWORD) {
  removeUnfinishedFiles();
  return FALSE;
}

}  // namespace

// The system's heap does so.
void keepFreedMemory() {}

void removeUnfinishedFilesOnSignals() { SetConsoleCtrlHandler(onConsoleEvent, TRUE); }

std::vector<std::string> commandLineArguments(int, char**) { return commandLineArguments(); }

}  // namespace merivane
