// The console companion as a process: its standard streams, and signals that end it.

#ifndef _WIN32

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <memory>
#include <string>
#include <string_view>

#include "base/file_system.h"
#include "cli/process.h"
#include "cli/standard_streams.h"
#include "tests/support/scratch_folder.h"

namespace merivane {
namespace {

TEST(Process, EndedFromOutsideLeavesNoFileBeside) {
  const ScratchFolder folder;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    SCOPED_TRACE(signal);
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
      ::signal(signal, SIG_DFL);
      removeUnfinishedFilesOnSignals();
      std::unique_ptr<OutputFile> file;
      const bool begun = systemFiles().create(folder.at("page"), file) == 0 && file->write("unfinished") == 0;
      while (begun && ::write(ready[1], "y", 1) == 1) ::pause();
      ::_exit(1);
    }
    ::close(ready[1]);
    char outcome = 'n';
    EXPECT_EQ(::read(ready[0], &outcome, 1), 1) << "the file is begun";
    EXPECT_EQ(folder.filesThere(), 1);
    ::kill(child, signal);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), signal) << "the caller sees what ended it";
    EXPECT_EQ(folder.filesThere(), 0);
    ::close(ready[0]);
  }
}

/// Gives the process its standard input back after a test that took it away.
class StandardStreamsTest : public testing::Test {
 protected:
  StandardStreamsTest() : input_(::dup(STDIN_FILENO)), onBrokenPipe_(std::signal(SIGPIPE, SIG_DFL)) {}
  ~StandardStreamsTest() override {
    ::dup2(input_, STDIN_FILENO);
    ::close(input_);
    std::signal(SIGPIPE, onBrokenPipe_);
  }

  const int input_;
  void (*const onBrokenPipe_)(int);
};

TEST_F(StandardStreamsTest, ClosedInputIsAnErrorAndNoOtherFile) {
  ::close(STDIN_FILENO);
  StandardStreams streams;
  const int other = ::open(MERIVANE_SOURCE_DIR "/examples/left.txt", O_RDONLY);
  EXPECT_GT(other, STDERR_FILENO);
  char bytes[16];
  uint32_t got = 0;
  EXPECT_EQ(streams.input().read(bytes, sizeof bytes, got), static_cast<SystemError>(EBADF));
  ::close(other);
}

TEST_F(StandardStreamsTest, ATerminalsEndOfFileIsSaidOnce) {
  const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (terminal < 0) GTEST_SKIP() << "there are no terminals here";
  ASSERT_EQ(::grantpt(terminal), 0);
  ASSERT_EQ(::unlockpt(terminal), 0);
  const int line = ::open(::ptsname(terminal), O_RDWR | O_NOCTTY);
  ::dup2(line, STDIN_FILENO);
  ::close(line);
  StandardStreams streams;
  constexpr std::string_view typed = "x\n\x04y\n\x04";
  ASSERT_EQ(::write(terminal, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
  char bytes[16];
  uint32_t got = 0;
  EXPECT_EQ(streams.input().read(bytes, sizeof bytes, got), 0u);
  EXPECT_EQ(std::string_view(bytes, got), "x\n");
  EXPECT_EQ(streams.input().read(bytes, sizeof bytes, got), 0u);
  EXPECT_EQ(got, 0u);
  ::close(terminal);
}

}  // namespace
}  // namespace merivane

#endif
