#include "cli/process.h"

#include <windows.h>

#include <shellapi.h>

#include <new>

#include "base/unfinished_files.h"
#include "base/win/wide.h"

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

std::vector<std::string> commandLineArguments(int, char**) {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (words == nullptr) throw std::bad_alloc();
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(utf8(words[i]));
  LocalFree(words);
  return arguments;
}

}  // namespace merivane
