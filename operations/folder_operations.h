#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "folders/folder_comparison.h"
#include "operations/examination.h"
#include "operations/journal.h"
#include "operations/tree_operations.h"

namespace merivane {

/// An operation that was done, with all that undoing it takes. Destroyed without being undone or discarded it
/// leaves its journal on the disk, for the next start to find.
struct DoneOperation {
  EntryOperation operation = EntryOperation::none;
  bool undoable = false;

  struct Side {
    std::string path;   // of the entry before
    std::string saved;  // where the journal has what was there, if anything was
    std::string made;   // what the operation put there; empty where it put nothing
    FoundEntry left;    // what it left there
  };
  Side sides[2];
  uint64_t number = 0;               // counts the operations
  std::unique_ptr<Journal> journal;  // none without anything saved
};

struct OperationEnd {
  enum class Kind {
    done,
    partly,  // of a deletion on both sides only the first was done; that is an operation of its own now
    failed,  // everything is as it was, unless the message says otherwise
  };
  Kind kind = Kind::failed;
  std::string message;  // what the shell has not told itself; may be empty
};

/// The operations on the entries of a folder comparison. Each is a list of steps, done one after the other
/// and taken back when one fails. With undo, what an operation replaces or deletes is copied into a journal
/// first; the journal also tells what is under way, so that the next start can end what a crash interrupted.
///
/// An operation is undone before those that it came after where one is about what is in the other's folder.
///
/// Nothing is followed, cut short or taken for a pattern: what the shell would misread is refused before
/// anything is touched. Everything may throw std::bad_alloc before it has touched anything.
class FolderOperations {
 public:
  FolderOperations(FileSystem& files, TreeOperations& trees) : files_(files), trees_(trees) {}

  /// What an operation on an entry is about, for examine() to look at. Touches nothing.
  Examination plan(const std::string (&tops)[2], const FolderEntry& entry, EntryOperation operation,
                   bool keepsUndo) const;

  /// Does what was examined. Only a failure leaves `done` as it was.
  OperationEnd perform(const Examination& examination, DoneOperation& done);

  /// The same for undoing; refused already where a later operation has to be undone before. `done` is gone
  /// when it succeeds, and stays as it was when it fails.
  Examination planUndo(const DoneOperation& done) const;
  OperationEnd undo(const Examination& examination, DoneOperation& done);

  /// Gives up undoing an operation, and removes its journal.
  void discard(DoneOperation& done);

 private:
  std::optional<Refusal> refuseForLater(const DoneOperation& done) const;
  void record(DoneOperation&& made, DoneOperation& done);
  void forget(DoneOperation& done);

  FileSystem& files_;
  TreeOperations& trees_;
  uint64_t count_ = 0;
  // The paths that operations not yet undone have changed, by their names' lower case.
  std::multimap<std::string, uint64_t> changed_;
  std::set<std::string> madeFolders_;  // that such operations needed; gone again when they are empty
};

}  // namespace merivane
