#include "operations/folder_operations.h"

#include <algorithm>
#include <utility>

#include "base/message_format.h"
#include "base/paths.h"
#include "base/temp_files.h"

namespace merivane {
namespace {

FoundEntry foundWhenCompared(const FolderEntry& entry, int side) {
  FoundEntry found;
  if (entry.names[side].empty()) return found;
  found.kind = entry.isFolder ? FileKind::folder : FileKind::file;
  found.size = entry.facts[side].size;
  found.modified = entry.facts[side].modified;
  return found;
}

/// Puts the steps of an operation together.
class StepList {
 public:
  StepList(FileSystem& files, TreeOperations& trees) : files_(files), trees_(trees) {}

  std::vector<Step> steps;

  /// The folders down to `folder` that are not there. Returns them, the outermost first.
  std::vector<std::string> makeFolders(const std::string& folder) {
    std::vector<std::string> missing;
    for (std::string each = folder; !each.empty() && !exists(each); each = folderOf(each)) {
      missing.insert(missing.begin(), each);
    }
    for (const std::string& each : missing) add({Step::Kind::makeFolder, each, {}, {}});
    return missing;
  }

  void copy(const std::string& path, const std::string& folder, TextId title) {
    add({Step::Kind::copy, path, folder, {}, title});
  }

  /// Copies an entry to below a folder as it lies below `top`. Returns where to.
  std::string save(const std::string& path, const std::string& name, const std::string& folder) {
    const size_t end = name.rfind(kPathSeparator);
    const std::string below =
        end == std::string::npos ? folder : joinPath(folder, std::string_view(name).substr(0, end));
    makeFolders(below);
    copy(path, below, TextId::savingUndo);
    return joinPath(below, nameOf(path));
  }

  std::string makeTemporaryFolder(const std::string& above) {
    const std::string made = MakeTempFileName(files_, above, "cmp-", [this] { return trees_.random(); });
    add({Step::Kind::makeFolder, made, {}, {}});
    return made;
  }

  /// Moves an entry out of the way, into a folder of its own beside it, where it keeps its name.
  std::string moveAside(const std::string& path) {
    const std::string aside = joinPath(makeTemporaryFolder(folderOf(path)), nameOf(path));
    add({Step::Kind::move, path, aside, {}});
    return aside;
  }

  void add(Step step) { steps.push_back(std::move(step)); }
  bool exists(const std::string& path) { return trees_.find(path).exists(); }

 private:
  FileSystem& files_;
  TreeOperations& trees_;
};

OperationEnd failed(SystemError error) {
  // What has no error the shell has told itself.
  return {OperationEnd::Kind::failed,
          error == 0 ? std::string() : formatMessage(TextId::operationFailed, {systemErrorText(error)})};
}

/// Something is left that is not as it was. The next start finds the journal, if there is one.
OperationEnd notTakenBack(const Journal* journal) {
  return {OperationEnd::Kind::failed, journal == nullptr
                                          ? text(TextId::notTakenBack)
                                          : formatMessage(TextId::notTakenBackYet, {journal->folder()})};
}

}  // namespace

// Planning.

Examination FolderOperations::plan(const std::string (&tops)[2], const FolderEntry& entry,
                                   EntryOperation operation, bool keepsUndo) const {
  Examination planned;
  planned.operation = operation;
  planned.keepsUndo = keepsUndo;
  for (const int side : {0, 1}) {
    Examination::Side& at = planned.sides[side];
    at.top = tops[side];
    at.name = entry.names[entry.names[side].empty() ? 1 - side : side];
    at.path = joinPath(tops[side], at.name);
    at.expected = foundWhenCompared(entry, side);
  }
  return planned;
}

Examination FolderOperations::planUndo(const DoneOperation& done) const {
  Examination planned;
  planned.operation = done.operation;
  planned.keepsUndo = done.journal != nullptr;
  planned.undoes = true;
  for (const int side : {0, 1}) {
    const DoneOperation::Side& was = done.sides[side];
    if (!changes(done.operation, side)) continue;
    Examination::Side& at = planned.sides[side];
    at.path = was.made.empty() ? was.path : was.made;
    at.name = nameOf(at.path);
    at.expected = was.left;
    at.saved = was.saved;
    at.restored = was.path;
  }
  planned.refusal = refuseForLater(done);
  return planned;
}

/// What a later operation did above or below must be undone before.
std::optional<Refusal> FolderOperations::refuseForLater(const DoneOperation& done) const {
  for (const int side : {0, 1}) {
    if (!changes(done.operation, side)) continue;
    const std::string& path = done.sides[side].path;
    const std::string name = folded(path);
    const auto isLater = [&](const auto& changed) { return changed.second > done.number; };
    for (std::string above = name; !above.empty(); above = folderOf(above)) {
      const auto [first, last] = changed_.equal_range(above);
      if (std::any_of(first, last, isLater)) return Refusal{TextId::refusedLaterOperation, path};
    }
    const std::string start = name + kPathSeparator;
    for (auto at = changed_.lower_bound(start); at != changed_.end() && at->first.starts_with(start); ++at) {
      if (isLater(*at)) return Refusal{TextId::refusedLaterOperation, path};
    }
  }
  return std::nullopt;
}

// Doing.

OperationEnd FolderOperations::perform(const Examination& examination, DoneOperation& done) {
  DoneOperation made;
  made.operation = examination.operation;
  made.undoable = examination.keepsUndo;
  const auto& sides = examination.sides;
  std::unique_ptr<Journal> journal;
  if (examination.keepsUndo) {
    const std::string& name = sides[0].name;
    const std::string top = name.substr(0, name.find(kPathSeparator));
    if (const SystemError error = Journal::create(files_, trees_, top, journal)) return failed(error);
  }
  StepList list(files_, trees_);
  const bool both = examination.operation == EntryOperation::deleteBoth;
  for (const int side : {0, 1}) {
    made.sides[side].path = sides[side].path;
    if (!journal || !sides[side].lost) continue;
    const std::string folder =
        both ? joinPath(journal->folder(), side == 0 ? "old" : "new") : journal->folder();
    made.sides[side].saved = list.save(sides[side].path, sides[side].name, folder);
  }
  uint32_t keep = 0;
  std::vector<std::string> newFolders;
  if (isCopy(examination.operation)) {
    const int target = targetOf(examination.operation);
    const std::string& from = sides[1 - target].path;
    const std::string& to = sides[target].path;
    const std::string folder = folderOf(to);
    made.sides[target].made = joinPath(folder, nameOf(from));
    if (!sides[target].lost) {
      newFolders = list.makeFolders(folder);
      list.copy(from, folder, TextId::copyingFiles);
    } else if (journal) {
      const std::string aside = list.moveAside(to);
      list.copy(from, folder, TextId::copyingFiles);
      list.add({Step::Kind::remove, aside, {}, made.sides[target].saved});
      list.add({Step::Kind::removeFolder, folderOf(aside), {}, {}});
    } else {
      list.add({Step::Kind::overwrite, from, folder, {}, TextId::copyingFiles});
    }
  } else {
    for (const int side : {0, 1}) {
      if (!sides[side].lost) continue;
      if (side == 1 && both && sides[0].lost) keep = static_cast<uint32_t>(list.steps.size());
      list.add({Step::Kind::recycle, sides[side].path, {}, made.sides[side].saved});
    }
  }

  if (journal) {
    const std::string& path = sides[changes(examination.operation, 0) ? 0 : 1].path;
    const std::string words =
        formatMessage(TextId::interruptedWords, {operationName(examination.operation), path});
    if (const SystemError error = journal->begin(words, list.steps)) {
      journal->drop(files_, trees_);
      return failed(error);
    }
  }
  const StepsEnd end = runSteps(files_, trees_, list.steps, journal.get(), keep);
  if (!end.whole) return notTakenBack(journal.get());
  const bool isDone = end.done == list.steps.size();
  if (!isDone && end.done == 0) {
    if (journal) journal->drop(files_, trees_);
    return failed(end.error);
  }
  if (!isDone) {
    made.operation = EntryOperation::deleteOld;
    made.sides[1] = {};
  }
  if (journal) {
    // When that fails, a crash leaves the next start to do again what is done already.
    journal->end();
    made.journal = std::move(journal);
  }
  madeFolders_.insert(newFolders.begin(), newFolders.end());
  record(std::move(made), done);
  if (isDone) return {OperationEnd::Kind::done, {}};
  return {OperationEnd::Kind::partly, formatMessage(TextId::deletedOnOneSide, {sides[0].path})};
}

/// An operation was done.
void FolderOperations::record(DoneOperation&& made, DoneOperation& done) {
  for (const int side : {0, 1}) {
    DoneOperation::Side& at = made.sides[side];
    at.left = trees_.find(at.made.empty() ? at.path : at.made);
    if (!at.made.empty() && at.left.exists()) at.made = joinPath(folderOf(at.made), at.left.name);
  }
  const bool keeps = !made.sides[0].saved.empty() || !made.sides[1].saved.empty();
  if (made.journal && !keeps) {
    made.journal->drop(files_, trees_);
    made.journal.reset();
  }
  made.number = ++count_;
  for (const int side : {0, 1}) {
    if (changes(made.operation, side)) changed_.emplace(folded(made.sides[side].path), made.number);
  }
  done = std::move(made);
}

void FolderOperations::forget(DoneOperation& done) {
  for (const DoneOperation::Side& side : done.sides) {
    const auto [first, last] = changed_.equal_range(folded(side.path));
    for (auto at = first; at != last;) at = at->second == done.number ? changed_.erase(at) : std::next(at);
  }
  if (changed_.empty()) madeFolders_.clear();
  done = {};
}

void FolderOperations::discard(DoneOperation& done) {
  if (done.journal) done.journal->drop(files_, trees_);
  forget(done);
}

// Undoing.

OperationEnd FolderOperations::undo(const Examination& examination, DoneOperation& done) {
  StepList list(files_, trees_);
  Journal* const journal = done.journal.get();
  struct Aside {
    std::string path, backup;
  };
  std::vector<Aside> asides;
  for (const int side : {0, 1}) {
    const DoneOperation::Side& was = done.sides[side];
    if (was.saved.empty()) continue;
    if (examination.sides[side].lost) {
      const std::string& path = examination.sides[side].path;
      const std::string keeper = list.makeTemporaryFolder(journal->folder());
      list.copy(path, keeper, TextId::savingUndo);
      asides.push_back({list.moveAside(path), joinPath(keeper, nameOf(path))});
    }
    list.makeFolders(folderOf(was.path));
    list.copy(was.saved, folderOf(was.path), TextId::performingUndo);
  }
  // What is there may hold later work: it goes last, and into the recycle bin.
  for (const Aside& aside : asides) {
    list.add({Step::Kind::recycle, aside.path, {}, aside.backup});
    list.add({Step::Kind::removeFolder, folderOf(aside.path), {}, {}});
  }
  for (const int side : {0, 1}) {
    if (!examination.sides[side].lost || !done.sides[side].saved.empty()) continue;
    list.add({Step::Kind::recycle, examination.sides[side].path, {}, {}});
  }
  for (const DoneOperation::Side& side : done.sides) {
    for (std::string above = folderOf(side.path); madeFolders_.contains(above); above = folderOf(above)) {
      list.add({Step::Kind::removeFolder, above, {}, {}});
    }
  }
  if (journal != nullptr) {
    const std::string& path = done.sides[changes(done.operation, 0) ? 0 : 1].path;
    const std::string what = formatMessage(TextId::undoOf, {operationName(done.operation)});
    const std::string words = formatMessage(TextId::interruptedWords, {what, path});
    if (const SystemError error = journal->begin(words, list.steps)) return failed(error);
  }
  const StepsEnd end = runSteps(files_, trees_, list.steps, journal);
  if (end.done == list.steps.size()) {
    std::erase_if(madeFolders_,
                  [this](const auto& made) { return trees_.find(made).kind != FileKind::folder; });
    discard(done);
    return {OperationEnd::Kind::done, {}};
  }
  if (end.whole) {
    if (journal != nullptr) journal->end();
    return failed(end.error);
  }
  const OperationEnd told = notTakenBack(journal);
  // Kept for the next start.
  done.journal.reset();
  done.undoable = false;
  return told;
}

}  // namespace merivane
