#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/abort_flag.h"
#include "folders/folder_progress.h"
#include "operations/tree_operations.h"
#include "operations/tree_size.h"

namespace merivane {

/// What was done last to an entry of a folder comparison.
enum class EntryOperation : uint8_t {
  none = 0,
  compared = 1,
  copyToOld = 2,
  copyToNew = 3,
  deleteOld = 4,
  deleteNew = 5,
  deleteBoth = 6,
};

/// "copy to old"; empty for none.
std::string operationName(EntryOperation operation);

constexpr bool isCopy(EntryOperation operation) {
  return operation == EntryOperation::copyToOld || operation == EntryOperation::copyToNew;
}
constexpr int targetOf(EntryOperation copy) { return copy == EntryOperation::copyToOld ? 0 : 1; }
/// Whether an operation changes a side.
constexpr bool changes(EntryOperation operation, int side) {
  return operation == EntryOperation::deleteBoth ||
         operation == (side == 0 ? EntryOperation::copyToOld : EntryOperation::copyToNew) ||
         operation == (side == 0 ? EntryOperation::deleteOld : EntryOperation::deleteNew);
}

/// What there is to know of an operation, or of its undoing, before it touches anything.
struct Examination {
  EntryOperation operation = EntryOperation::none;
  bool keepsUndo = false;
  bool undoes = false;

  struct Side {
    // What it is about; without a path the side has nothing to do with it.
    std::string top;       // the compared folder
    std::string name;      // from the compared folder on
    std::string path;      // of the entry; where it is not there, where it would be
    FoundEntry expected;   // what was there when it was compared, or when the operation had ended
    std::string saved;     // what undoing puts back, if it does,
    std::string restored;  // and the path that it gets

    // What examine() finds.
    FoundEntry found;   // what is there
    TreeSize size;      // how much that is
    bool lost = false;  // it will be deleted or replaced
    bool recyclable = true;
  };
  Side sides[2];

  std::optional<Refusal> refusal;  // it cannot be done
  bool recyclable = true;          // what is deleted goes into the recycle bin
  bool changedSince = false;       // a side is no longer as expected
  bool olderOverNewer = false;     // a file is replaced by an older one
};

/// Looks at both sides of what is planned, and measures it unless it is refused already. Changes nothing, and
/// may be called on any thread. When the flag is raised the result means nothing; a null flag never aborts.
/// Throws std::bad_alloc.
Examination examine(FileSystem& files, TreeOperations& trees, Examination planned,
                    const AbortFlag* abort = nullptr, FolderProgress* progress = nullptr);

}  // namespace merivane
