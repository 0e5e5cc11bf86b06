#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "operations/steps.h"
#include "operations/tree_operations.h"

namespace merivane {

/// A folder in the user's temporary folder that keeps what an operation replaces or deletes, and a file in it
/// that tells what is under way. The file is open, for nobody else, as long as this lives.
class Journal final : public StepLog {
 public:
  /// Makes the folder and its file. The folder's name is another than `entry`, which it is to keep. Returns 0
  /// or the error, with nothing left.
  static SystemError create(FileSystem& files, TreeOperations& trees, const std::string& entry,
                            std::unique_ptr<Journal>& journal);

  const std::string& folder() const { return folder_; }

  /// Notes what is going to be done, in words for the user and as steps.
  SystemError begin(const std::string& words, const std::vector<Step>& steps);
  SystemError atStep(uint32_t index) override;
  /// Nothing is under way any more.
  SystemError end();

  /// Removes the folder with all that it keeps; what cannot be removed now, the next start removes. Nothing
  /// else is called after this.
  void drop(FileSystem& files, TreeOperations& trees);

 private:
  friend std::vector<struct InterruptedOperation> findInterrupted(FileSystem&, TreeOperations&);
  Journal(std::string folder, std::unique_ptr<JournalFile> file)
      : folder_(std::move(folder)), file_(std::move(file)) {}

  std::string folder_;
  std::unique_ptr<JournalFile> file_;
};

/// What a program that ended before its time was about to do.
struct InterruptedOperation {
  std::string words;
  std::vector<Step> steps;
  uint32_t at = 0;  // the step that it was at
  std::unique_ptr<Journal> journal;
};

/// Looks through the temporary folder for journals whose program is gone. Those with nothing under way are
/// removed, as the end of the program would have done.
std::vector<InterruptedOperation> findInterrupted(FileSystem& files, TreeOperations& trees);

/// Does the rest of an operation, or puts everything back; then its journal is removed. Returns whether that
/// worked; when not, the journal stays, and the next start finds it again.
bool finish(FileSystem& files, TreeOperations& trees, InterruptedOperation& operation);
bool putBack(FileSystem& files, TreeOperations& trees, InterruptedOperation& operation);

}  // namespace merivane
