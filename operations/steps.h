#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/texts.h"
#include "operations/tree_operations.h"

namespace merivane {

/// One thing that is done to the disk. Each can be taken back, and done again when it was interrupted.
struct Step {
  enum class Kind : uint8_t {
    makeFolder,    // path
    copy,          // path into the folder target, which has nothing of its name
    overwrite,     // the same where it has; taken back by deleting what is there
    move,          // path to target
    recycle,       // path
    remove,        // path, for good
    removeFolder,  // path, which is empty; stays where it is not
  };
  Kind kind = Kind::makeFolder;
  std::string path;
  std::string target;
  std::string backup;                   // of recycle and remove: a copy under the same name, if there is one
  TextId title = TextId::copyingFiles;  // of copy and overwrite, for the shell's progress window

  bool operator==(const Step&) const = default;
};

/// Is told of each step before it begins, when it is done as when it is taken back.
class StepLog {
 public:
  virtual ~StepLog() = default;
  virtual SystemError atStep(uint32_t index) = 0;
};

/// How running a list of steps ended.
struct StepsEnd {
  uint32_t done = 0;      // how many of the first steps are done now
  SystemError error = 0;  // why it is not all of them, where the shell has not told that itself
  bool whole = true;      // what was to be taken back, was
};

/// Does the steps in order, from `first` on; `resumed` when that one may have been begun before. When one
/// fails, those from `keep` on are taken back. A null log is told nothing.
StepsEnd runSteps(FileSystem& files, TreeOperations& trees, const std::vector<Step>& steps, StepLog* log,
                  uint32_t keep = 0, uint32_t first = 0, bool resumed = false);

/// Takes back the steps from `last` to `keep`; that one may not have been done to its end. False when
/// something could not be taken back, where it stops.
bool takeBackSteps(FileSystem& files, TreeOperations& trees, const std::vector<Step>& steps, StepLog* log,
                   uint32_t last, uint32_t keep);

}  // namespace merivane
