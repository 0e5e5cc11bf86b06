#include "operations/folder_operations.h"

#include <algorithm>
#include <utility>

#include "base/message_format.h"
#include "base/names.h"
#include "base/paths.h"
#include "base/temp_files.h"

namespace merivane {
namespace {

/// "cmp-", five digits, ".tmp".
constexpr size_t kTemporaryName = 13;

int targetOf(EntryOperation operation) { return operation == EntryOperation::copyToOld ? 0 : 1; }

std::string folded(std::string path) {
  for (char& c : path) c = lowerCase(c);
  return path;
}

/// Whether a path is another one or lies below it.
bool isWithin(const std::string& path, const std::string& other) {
  const std::string inner = folded(path), outer = folded(other);
  return inner == outer || (inner.starts_with(outer) && inner[outer.size()] == kPathSeparator);
}

/// Whether all names of a path are taken literally.
bool isLiteralPath(std::string_view path) {
  for (;;) {
    const size_t end = path.find(kPathSeparator);
    if (!isTakenLiterally(path.substr(0, end))) return false;
    if (end == std::string_view::npos) return true;
    path.remove_prefix(end + 1);
  }
}

bool isSame(const FoundEntry& a, const FoundEntry& b) {
  if (a.kind != b.kind || a.isLink != b.isLink) return false;
  // A folder's own time changes with what is done below it.
  return a.kind != FileKind::file || (a.size == b.size && a.modified == b.modified);
}

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

std::optional<Refusal> refuseLength(const std::string& folder, size_t aside, const TreeSize& size) {
  if (pathLength(folder) + 1 + aside + size.longest <= kMaxShellPath) return std::nullopt;
  return Refusal{TextId::refusedTooLong, folder};
}

}  // namespace

std::string operationName(EntryOperation operation) {
  switch (operation) {
    case EntryOperation::none:
      break;
    case EntryOperation::compared:
      return text(TextId::operationCompared);
    case EntryOperation::copyToOld:
      return text(TextId::operationCopyToOld);
    case EntryOperation::copyToNew:
      return text(TextId::operationCopyToNew);
    case EntryOperation::deleteOld:
      return text(TextId::operationDeleteOld);
    case EntryOperation::deleteNew:
      return text(TextId::operationDeleteNew);
    case EntryOperation::deleteBoth:
      return text(TextId::operationDeleteBoth);
  }
  return {};
}

// Looking.

Examination FolderOperations::examine(const std::string (&tops)[2], const FolderEntry& entry,
                                      EntryOperation operation, bool keepsUndo) {
  Examination examination;
  examination.operation = operation;
  examination.keepsUndo = keepsUndo;
  for (const int side : {0, 1}) {
    Examination::Side& at = examination.sides[side];
    at.name = entry.names[entry.names[side].empty() ? 1 - side : side];
    at.path = joinPath(tops[side], at.name);
    at.found = trees_.find(at.path);
    if (at.found.exists()) at.path = joinPath(folderOf(at.path), at.found.name);
    at.lost = at.found.exists() && changes(operation, side);
    if (!isSame(at.found, foundWhenCompared(entry, side))) examination.changedSince = true;
    if (at.lost && !trees_.hasRecycleBin(at.path)) examination.recyclable = false;
  }
  if (isCopy(operation)) {
    const int target = targetOf(operation);
    const FoundEntry& from = examination.sides[1 - target].found;
    const FoundEntry& to = examination.sides[target].found;
    examination.olderOverNewer = to.kind == FileKind::file && from.modified < to.modified;
  }
  examination.refusal = refuse(examination, tops);
  return examination;
}

std::optional<Refusal> FolderOperations::refuse(Examination& examination, const std::string (&tops)[2]) {
  if (examination.keepsUndo && trees_.temporaryFolder().empty()) {
    return Refusal{TextId::refusedNoTemporaryFolder, {}};
  }
  // Before anything else, as it may have been something of another name that was found.
  for (const Examination::Side& side : examination.sides) {
    if (!isLiteralPath(side.name)) return Refusal{TextId::refusedName, side.path};
  }
  if (auto refusal = measureLost(examination)) return refusal;
  const auto& sides = examination.sides;
  for (const int side : {0, 1}) {
    if (sides[side].lost && isWithin(tops[1 - side], sides[side].path)) {
      return Refusal{TextId::refusedSameEntry, sides[side].path};
    }
  }
  if (isCopy(examination.operation)) {
    const int target = targetOf(examination.operation);
    const Examination::Side& to = sides[target];
    Examination::Side& from = examination.sides[1 - target];
    if (!trees_.find(tops[target]).exists()) return Refusal{TextId::refusedMissing, tops[target]};
    if (auto refusal = measureTree(files_, trees_, from.path, from.size)) return refusal;
    if (trees_.find(folderThatIs(to.path)).kind != FileKind::folder) {
      return Refusal{TextId::refusedOtherKind, folderThatIs(to.path)};
    }
    if (isWithin(to.path, from.path)) return Refusal{TextId::refusedSameEntry, from.path};
    if (to.lost) {
      if (to.found.kind != from.found.kind) return Refusal{TextId::refusedOtherKind, to.path};
      if (sameFile(files_, from.path, to.path)) return Refusal{TextId::refusedSameEntry, from.path};
    }
    for (const std::string& folder : {folderOf(from.path), folderOf(to.path)}) {
      if (auto refusal = refuseLength(folder, 0, from.size)) return refusal;
    }
  }
  return refuseForRoom(examination);
}

/// Measures what is deleted or replaced, and whether it can be kept and brought back.
std::optional<Refusal> FolderOperations::measureLost(Examination& examination) {
  // Where it is kept, in the longest case.
  const size_t journal = pathLength(trees_.temporaryFolder()) + 1 + kTemporaryName + 1 + kTemporaryName + 1;
  for (Examination::Side& side : examination.sides) {
    if (!side.lost) continue;
    if (auto refusal = measureTree(files_, trees_, side.path, side.size)) return refusal;
    if (auto refusal = refuseLength(folderOf(side.path), kTemporaryName + 1, side.size)) return refusal;
    const size_t above = pathLength(side.name) - pathLength(nameOf(side.path));
    if (examination.keepsUndo && journal + above + side.size.longest > kMaxShellPath) {
      return Refusal{TextId::refusedTooLong, side.path};
    }
  }
  return std::nullopt;
}

/// The nearest folder above a path that is there.
std::string FolderOperations::folderThatIs(const std::string& path) const {
  std::string folder = folderOf(path);
  while (!folder.empty() && !trees_.find(folder).exists()) folder = folderOf(folder);
  return folder;
}

/// A disk that becomes full is to fail before anything was moved.
std::optional<Refusal> FolderOperations::refuseForRoom(const Examination& examination) const {
  struct Need {
    std::string folder;
    uint64_t bytes;
  };
  std::vector<Need> needs;
  if (examination.keepsUndo) {
    needs.push_back(
        {trees_.temporaryFolder(), examination.sides[0].lost * examination.sides[0].size.bytes +
                                       examination.sides[1].lost * examination.sides[1].size.bytes});
  }
  if (isCopy(examination.operation) &&
      examination.sides[1 - targetOf(examination.operation)].found.exists()) {
    const int target = targetOf(examination.operation);
    const std::string folder = folderThatIs(examination.sides[target].path);
    uint64_t bytes = examination.sides[1 - target].size.bytes;
    // Without undo the old contents give way to the new ones.
    if (!examination.keepsUndo) bytes -= std::min(bytes, examination.sides[target].size.bytes);
    needs.push_back({folder, bytes});
  }
  uint64_t sum = 0;
  for (size_t i = 0; i < needs.size(); ++i) {
    const bool sameDrive =
        i > 0 && files_.identity(needs[0].folder).volume == files_.identity(needs[i].folder).volume;
    sum = needs[i].bytes + (sameDrive ? sum : 0);
    const auto room = trees_.freeSpace(needs[i].folder);
    if (room && *room < sum) return Refusal{TextId::refusedNoRoom, needs[i].folder};
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

Examination FolderOperations::examineUndo(const DoneOperation& done) {
  Examination examination;
  examination.operation = done.operation;
  examination.keepsUndo = done.journal != nullptr;
  for (const int side : {0, 1}) {
    const DoneOperation::Side& was = done.sides[side];
    Examination::Side& at = examination.sides[side];
    if (!changes(done.operation, side)) continue;
    at.path = was.made.empty() ? was.path : was.made;
    at.name = nameOf(at.path);
    at.found = trees_.find(at.path);
    at.lost = at.found.exists();
    if (!isSame(at.found, was.left)) examination.changedSince = true;
    if (at.lost && !trees_.hasRecycleBin(at.path)) examination.recyclable = false;
  }
  examination.refusal = refuseUndo(examination, done);
  return examination;
}

std::optional<Refusal> FolderOperations::refuseUndo(Examination& examination, const DoneOperation& done) {
  if (auto refusal = refuseForLater(done)) return refusal;
  if (auto refusal = measureLost(examination)) return refusal;
  for (const DoneOperation::Side& side : done.sides) {
    if (side.saved.empty()) continue;
    TreeSize size;
    if (auto refusal = measureTree(files_, trees_, side.saved, size)) return refusal;
    if (auto refusal = refuseLength(folderOf(side.path), 0, size)) return refusal;
    const auto room = trees_.freeSpace(folderThatIs(side.path));
    if (room && *room < size.bytes) return Refusal{TextId::refusedNoRoom, side.path};
  }
  return refuseForRoom(examination);
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
