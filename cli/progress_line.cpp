#include "cli/progress_line.h"

#include <chrono>
#include <exception>
#include <string>

namespace merivane {

std::string progressText(uint64_t entries, uint64_t bytes, const std::string& folder, uint32_t width,
                         const TerminalBytes& terminal) {
  const std::string text =
      std::to_string(entries) + " entries, " + std::to_string(bytes >> 20) + " MB  " + folder;
  std::string line;
  CellStyle style;
  style.terminal = terminal;
  appendCell(line, text, {}, style, width > 1 ? width - 1 : 1);
  return line;
}

ProgressLine::ProgressLine(const FolderProgress& progress, const TerminalFacts& terminal,
                           ByteSink& standardError)
    : progress_(progress), terminal_(terminal), standardError_(standardError) {
  try {
    thread_ = std::thread([this] { show(); });
  } catch (const std::exception&) {
    // Goes without.
  }
}

ProgressLine::~ProgressLine() {
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
  }
  changed_.notify_one();
  if (thread_.joinable()) thread_.join();
}

void ProgressLine::show() {
  using namespace std::chrono_literals;
  std::unique_lock lock(mutex_);
  constexpr uint32_t usualWidth = 80;  // where the terminal does not tell
  const uint32_t width = terminal_.width != 0 ? terminal_.width : usualWidth;
  bool shown = false;
  try {
    for (auto wait = 1000ms; !changed_.wait_for(lock, wait, [this] { return ended_; }); wait = 100ms) {
      standardError_.write(
          "\r" +
          progressText(progress_.entries(), progress_.bytes(), progress_.folder(), width, terminal_.bytes) +
          "\x1b[K");
      shown = true;
    }
  } catch (const std::exception&) {
    // No memory for a line is no reason to stop.
  }
  if (shown) standardError_.write("\r\x1b[K");
}

}  // namespace merivane
