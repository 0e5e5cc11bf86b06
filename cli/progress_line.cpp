#include "cli/progress_line.h"

#include <atomic>
#include <chrono>
#include <exception>
#include <string>

#include "base/unfinished_files.h"

namespace merivane {
namespace {

/// What is on the terminal; the handler of a signal looks at it at any moment.
enum LineState : int { nothing, beingWritten, shown, over };
std::atomic<int> lineState{nothing};

/// Writes unless the process is about to end.
void writeLine(ByteSink& sink, const std::string& bytes, LineState after) {
  const FinishBeforeSignals hold;  // on this thread, for the handler to wait for it
  int before = lineState.load();
  if (before == over || !lineState.compare_exchange_strong(before, beingWritten)) return;
  sink.write(bytes);
  lineState.store(after);
}

}  // namespace

bool endProgressLineForSignal() {
  // A terminal that takes nothing shall not keep the process.
  constexpr int patience = 1 << 24;
  for (int tries = 0; tries < patience; ++tries) {
    int before = lineState.load();
    if (before != beingWritten && lineState.compare_exchange_strong(before, over)) return before == shown;
  }
  return false;
}

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
  try {
    for (auto wait = 1000ms; !changed_.wait_for(lock, wait, [this] { return ended_; }); wait = 100ms) {
      writeLine(standardError_,
                "\r" +
                    progressText(progress_.entries(), progress_.bytes(), progress_.folder(), width,
                                 terminal_.bytes) +
                    "\x1b[K",
                shown);
    }
  } catch (const std::exception&) {
    // No memory for a line is no reason to stop.
  }
  if (lineState == shown) writeLine(standardError_, std::string(kErasesLine), nothing);
}

}  // namespace merivane
