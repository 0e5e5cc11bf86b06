#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "base/byte_sink.h"
#include "cli/run_diff.h"
#include "folders/folder_progress.h"

namespace merivane {

/// While it lives, shows how far a comparison of folders is in one line of a terminal, from the first second
/// on and ten times in each. Nothing is left of it at the end. There is one at a time.
class ProgressLine {
 public:
  ProgressLine(const FolderProgress& progress, const TerminalFacts& terminal, ByteSink& standardError);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

 private:
  void show();

  const FolderProgress& progress_;
  const TerminalFacts terminal_;
  ByteSink& standardError_;
  std::mutex mutex_;
  std::condition_variable changed_;
  bool ended_ = false;
  std::thread thread_;
};

/// For the handler of a signal that ends the process: lets no line be written any more, and returns whether
/// one is there. What erases it is kErasesLine.
bool endProgressLineForSignal();
constexpr std::string_view kErasesLine = "\r\x1b[K";

/// The line, of at most so many columns; the folder's name gives way. Bytes that are no UTF-8 count as one
/// each.
std::string progressText(uint64_t entries, uint64_t bytes, const std::string& folder, uint32_t width,
                         const TerminalBytes& terminal);

}  // namespace merivane
