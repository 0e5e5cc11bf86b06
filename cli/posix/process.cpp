#include "cli/process.h"

#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "base/unfinished_files.h"
#include "cli/progress_line.h"

namespace merivane {
namespace {

/// The signal's own action is in force again and ends the process once this returns.
void onEndingSignal(int signal) {
  removeUnfinishedFiles();
  if (endProgressLineForSignal()) {
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, kErasesLine.data(), kErasesLine.size());
  }
  ::raise(signal);
}

}  // namespace

void keepFreedMemory() {
#ifdef __GLIBC__
  mallopt(M_TOP_PAD, 1 << 20);
  mallopt(M_TRIM_THRESHOLD, 1 << 24);
  mallopt(M_MMAP_THRESHOLD, 1 << 21);
#endif
}

void removeUnfinishedFilesOnSignals() {
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
    struct sigaction action = {};
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action.sa_handler = onEndingSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    ::sigaction(signal, &action, nullptr);
  }
}

std::vector<std::string> commandLineArguments(int count, char** arguments) {
  return {arguments + (count > 0), arguments + count};
}

}  // namespace merivane
