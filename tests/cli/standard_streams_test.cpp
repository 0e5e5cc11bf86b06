#ifndef _WIN32

#include "cli/standard_streams.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace merivane {
namespace {

struct ErrorSink final : ByteSink {
  void write(std::string_view bytes) override { std::fwrite(bytes.data(), 1, bytes.size(), stderr); }
};

/// Ends the process with what merivane-diff answers when its standard output is this descriptor.
[[noreturn]] void runInto(int descriptor) {
  ::dup2(descriptor, STDOUT_FILENO);
  ErrorSink errors;
  StandardStreams streams;
  const std::string_view arguments[] = {"--help"};
  std::exit(runDiff(arguments, {systemFiles(), streams.input(), streams.output(), errors,
                                [&] { return streams.terminal(); }, nullptr, nullptr, nullptr,
                                StandardStreams::brokenPipe()}));
}

TEST(StandardStreamsDeathTest, FullDiskAndClosedPipeEndInTrouble) {
  EXPECT_EXIT(runInto(::open("/dev/full", O_WRONLY)), testing::ExitedWithCode(2), "Could not export");
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ::close(ends[0]);
  EXPECT_EXIT(runInto(ends[1]), testing::ExitedWithCode(2), "^$");
  ::close(ends[1]);
}

}  // namespace
}  // namespace merivane

#endif
