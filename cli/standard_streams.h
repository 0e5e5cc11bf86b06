#pragma once

#include <memory>
#include <string_view>

#include "base/file_system.h"
#include "base/result.h"
#include "cli/run_diff.h"

namespace merivane {

/// Writes to standard error as far as that takes it.
void writeStandardError(std::string_view bytes);

/// The process's standard streams, byte for byte on every platform, save that a Windows console gets UTF-8 as
/// characters. There is one of these a process.
class StandardStreams {
 public:
  /// From here on a reader that went away is an error of writing, not the end of the process, and a closed
  /// stream stays an error whatever files are opened.
  StandardStreams();
  ~StandardStreams();
  StandardStreams(const StandardStreams&) = delete;
  StandardStreams& operator=(const StandardStreams&) = delete;

  InputFile& input() { return *input_; }

  /// Commit it at the end: some errors of writing show only then. Nothing can be written after that.
  OutputFile& output() { return *output_; }

  /// Looks at the terminal at standard output, and switches its colours on where they have to be.
  TerminalFacts terminal();

  /// The error of writing to where nobody reads any more.
  static SystemError brokenPipe();

 private:
  std::unique_ptr<InputFile> input_;
  std::unique_ptr<OutputFile> output_;
  [[maybe_unused]] uint32_t modeBefore_ = 0;  // of a Windows console whose mode was changed; else 0
};

}  // namespace merivane
