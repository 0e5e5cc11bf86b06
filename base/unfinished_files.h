#pragma once

#include <string>

namespace merivane {

/// The name of a file that is there only until what it is made for is done. It is removed when this goes, or
/// by removeUnfinishedFiles(). Of one thread at a time.
class UnfinishedFile {
 public:
  UnfinishedFile() = default;
  ~UnfinishedFile() { remove(); }
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  /// Takes on the absolute path of a file, before or just after it is made. The one so far is kept.
  void take(std::string path);

  /// The file has got another name, is gone, or is to stay.
  void keep();

  /// Removes the file, if it has not been kept. Whether it is gone.
  bool remove();

  const std::string& path() const { return path_; }

 private:
  std::string path_;
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

/// The platform's parts of it: removes a file of the process's own; returns whether it is gone. Holds the
/// signals back, once at a time. Waits until they are not held back, where a signal comes on another thread.
bool removeFileForSignal(const char* path);
void holdSignals();
void releaseSignals();
void waitForHeldSignals();

}  // namespace merivane
