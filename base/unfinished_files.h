#pragma once

#include <string>

namespace merivane {

/// Notes a file that is there only until what it is made for is done, so that removeUnfinishedFiles() knows
/// it. Removing it otherwise is the owner's. Of one thread at a time.
class UnfinishedFile {
 public:
  UnfinishedFile() = default;
  ~UnfinishedFile() { end(); }
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  /// The file at an absolute path has just been made.
  void begin(const std::string& path);

  /// It has got another name, is gone, or is to stay.
  void end();

 private:
  int slot_ = -1;
};

/// Removes every unfinished file of the process: for the handler of a signal that ends it. Takes no memory
/// and may be called from a signal handler. A file that is just being written in place is written to the end
/// first (FinishBeforeSignals).
void removeUnfinishedFiles();

/// While it lives, the signals that end the process are held back on this thread: between these two moments a
/// file of the user's is only half written.
class FinishBeforeSignals {
 public:
  FinishBeforeSignals();
  ~FinishBeforeSignals();
  FinishBeforeSignals(const FinishBeforeSignals&) = delete;
  FinishBeforeSignals& operator=(const FinishBeforeSignals&) = delete;
};

/// The platform's parts of it: removes a file. Holds the signals back, once at a time. Waits until they are
/// not held back, where a signal comes on another thread.
void removeFileForSignal(const char* path);
void holdSignals();
void releaseSignals();
void waitForHeldSignals();

}  // namespace merivane
