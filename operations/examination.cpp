#include "operations/examination.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/paths.h"

namespace merivane {
namespace {

/// "cmp-", five digits, ".tmp".
constexpr size_t kTemporaryName = 13;

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

std::optional<Refusal> refuseLength(const std::string& folder, size_t aside, const TreeSize& size) {
  if (pathLength(folder) + 1 + aside + size.longest <= kMaxShellPath) return std::nullopt;
  return Refusal{TextId::refusedTooLong, folder};
}

class Examiner {
 public:
  Examiner(FileSystem& files, TreeOperations& trees, const AbortFlag* abort, FolderProgress* progress)
      : files_(files), trees_(trees), abort_(abort), progress_(progress) {}

  void look(Examination& examination) {
    for (const int side : {0, 1}) {
      Examination::Side& at = examination.sides[side];
      if (at.path.empty()) continue;
      at.found = trees_.find(at.path);
      if (at.found.exists()) at.path = joinPath(folderOf(at.path), at.found.name);
      at.lost = at.found.exists() && changes(examination.operation, side);
      if (!isSame(at.found, at.expected)) examination.changedSince = true;
      if (at.lost && !trees_.hasRecycleBin(at.path)) examination.recyclable = false;
    }
  }

  std::optional<Refusal> refuse(Examination& examination) {
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
      if (sides[side].lost && isWithin(sides[1 - side].top, sides[side].path)) {
        return Refusal{TextId::refusedSameEntry, sides[side].path};
      }
    }
    if (isCopy(examination.operation)) {
      const int target = targetOf(examination.operation);
      const Examination::Side& to = sides[target];
      Examination::Side& from = examination.sides[1 - target];
      examination.olderOverNewer = to.found.kind == FileKind::file && from.found.modified < to.found.modified;
      if (!trees_.find(to.top).exists()) return Refusal{TextId::refusedMissing, to.top};
      if (auto refusal = measure(from.path, from.size)) return refusal;
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

  std::optional<Refusal> refuseUndo(Examination& examination) {
    if (auto refusal = measureLost(examination)) return refusal;
    for (const Examination::Side& side : examination.sides) {
      if (side.saved.empty()) continue;
      TreeSize size;
      if (auto refusal = measure(side.saved, size)) return refusal;
      if (auto refusal = refuseLength(folderOf(side.restored), 0, size)) return refusal;
      const auto room = trees_.freeSpace(folderThatIs(side.restored));
      if (room && *room < size.bytes) return Refusal{TextId::refusedNoRoom, side.restored};
    }
    return refuseForRoom(examination);
  }

 private:
  std::optional<Refusal> measure(const std::string& path, TreeSize& size) {
    return measureTree(files_, trees_, path, size, abort_, progress_);
  }

  /// Measures what is deleted or replaced, and whether it can be kept and brought back.
  std::optional<Refusal> measureLost(Examination& examination) {
    // Where it is kept, in the longest case.
    const size_t journal = pathLength(trees_.temporaryFolder()) + 1 + kTemporaryName + 1 + kTemporaryName + 1;
    for (Examination::Side& side : examination.sides) {
      if (!side.lost) continue;
      if (auto refusal = measure(side.path, side.size)) return refusal;
      if (auto refusal = refuseLength(folderOf(side.path), kTemporaryName + 1, side.size)) return refusal;
      const size_t above = pathLength(side.name) - pathLength(nameOf(side.path));
      if (examination.keepsUndo && journal + above + side.size.longest > kMaxShellPath) {
        return Refusal{TextId::refusedTooLong, side.path};
      }
    }
    return std::nullopt;
  }

  /// The nearest folder above a path that is there.
  std::string folderThatIs(const std::string& path) {
    std::string folder = folderOf(path);
    while (!folder.empty() && !trees_.find(folder).exists()) folder = folderOf(folder);
    return folder;
  }

  /// A disk that becomes full is to fail before anything was moved.
  std::optional<Refusal> refuseForRoom(const Examination& examination) {
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

  FileSystem& files_;
  TreeOperations& trees_;
  const AbortFlag* const abort_;
  FolderProgress* const progress_;
};

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

Examination examine(FileSystem& files, TreeOperations& trees, Examination examination, const AbortFlag* abort,
                    FolderProgress* progress) {
  Examiner examiner(files, trees, abort, progress);
  examiner.look(examination);
  if (!examination.refusal) {
    examination.refusal =
        examination.undoes ? examiner.refuseUndo(examination) : examiner.refuse(examination);
  }
  return examination;
}

}  // namespace merivane
