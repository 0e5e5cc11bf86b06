#include "base/unfinished_files.h"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace merivane {
namespace {

thread_local sigset_t maskBefore;

}  // namespace

void removeFileForSignal(const char* path) {
  const int errnoBefore = errno;
  ::unlink(path);
  errno = errnoBefore;
}

void holdSignals() {
  sigset_t ending;
  ::sigemptyset(&ending);
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) ::sigaddset(&ending, signal);
  ::pthread_sigmask(SIG_BLOCK, &ending, &maskBefore);
}

void releaseSignals() { ::pthread_sigmask(SIG_SETMASK, &maskBefore, nullptr); }

// A signal's handler runs on a thread that does not hold them back.
void waitForHeldSignals() {}

}  // namespace merivane
