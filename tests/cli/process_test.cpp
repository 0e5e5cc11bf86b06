#ifndef _WIN32

#include "cli/process.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>
#include <string>

#include "base/file_system.h"
#include "tests/support/scratch_folder.h"

namespace merivane {
namespace {

/// Starts a new file and waits to be ended.
[[noreturn]] void writeUntilEnded(const std::string& path, int ready) {
  removeUnfinishedFilesOnSignals();
  std::unique_ptr<OutputFile> file;
  char outcome = systemFiles().create(path, file) == 0 && file->write("unfinished") == 0 ? 'y' : 'n';
  outcome = ::write(ready, &outcome, 1) == 1 ? outcome : 'n';
  while (outcome == 'y') ::pause();
  ::_exit(1);
}

TEST(Process, EndedFromOutsideLeavesNoFileBeside) {
  const ScratchFolder folder;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    SCOPED_TRACE(signal);
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
      ::signal(signal, SIG_DFL);
      writeUntilEnded(folder.at("page"), ready[1]);
    }
    char outcome = 'n';
    EXPECT_EQ(::read(ready[0], &outcome, 1), 1);
    EXPECT_EQ(outcome, 'y');
    EXPECT_EQ(folder.filesThere(), 1);
    ::kill(child, signal);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), signal) << "the caller sees what ended it";
    EXPECT_EQ(folder.filesThere(), 0);
    ::close(ready[0]);
    ::close(ready[1]);
  }
}

}  // namespace
}  // namespace merivane

#endif
