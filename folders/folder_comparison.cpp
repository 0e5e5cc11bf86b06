#include "folders/folder_comparison.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <new>
#include <numeric>
#include <stdexcept>
#include <thread>
#include <tuple>
#include <utility>

#include "base/message_format.h"
#include "base/paths.h"
#include "base/work_pool.h"
#include "folders/contents.h"
#include "folders/level.h"
#include "folders/name_filter.h"
#include "folders/sorted_entries.h"

namespace merivane {
namespace {

unsigned threadCount(const FolderOptions& options) {
  constexpr unsigned max = 8;  // more gain nothing where a disk or a share is waited for
  return std::clamp(options.threads != 0 ? options.threads : std::thread::hardware_concurrency(), 1u, max);
}

/// A piece of what there is to do in a level.
struct LevelPiece {
  enum Kind : uint8_t { listBoth, listNew, work };

  std::shared_ptr<Level> level;
  Kind kind = listBoth;
  uint32_t begin = 0, end = 0;  // of Level::work
};

/// One comparison. Whether it is cancelled, runs out of memory or gets to its end: every level is ended, with
/// whatever it has by then, and what is of no use any more is thrown away by the caller.
class FolderRun {
 public:
  FolderRun(FileSystem& files, const std::string (&paths)[2], const FolderOptions& options,
            const AbortFlag* abort, FolderProgress& progress)
      : files_(files),
        paths_{paths[0], paths[1]},
        options_(options),
        filter_(options),
        abort_(abort),
        progress_(progress),
        pool_(threadCount(options), [this](LevelPiece piece, unsigned worker) { doPiece(piece, worker); }) {
    for (unsigned worker = 0; worker < threadCount(options); ++worker)
      contents_.emplace_back(files, abort, progress);
  }

  Result run(FolderComparison& comparison) {
    const auto top = std::make_shared<Level>();
    pool_.add({top});
    pool_.run();
    if (outOfMemory_) return Result::outOfMemory;
    if (isRaised(abort_) || !collect(*top, comparison)) return Result::cancelled;
    return Result::success;
  }

 private:
  bool isStopped() const { return isRaised(abort_) || outOfMemory_.load(std::memory_order_relaxed); }

  /// Does what may run out of memory.
  template <typename Do>
  void guarded(Do doIt) {
    try {
      doIt();
    } catch (const std::bad_alloc&) {
      outOfMemory_ = true;
    } catch (const std::length_error&) {
      outOfMemory_ = true;
    }
  }

  /// For the work to go on elsewhere, or here when there is no memory to hand it over.
  void handOver(const std::shared_ptr<Level>& level, LevelPiece::Kind kind, uint32_t begin, uint32_t end,
                unsigned worker) {
    try {
      pool_.add({level, kind, begin, end});
    } catch (const std::bad_alloc&) {
      outOfMemory_ = true;
      doPiece({level, kind, begin, end}, worker);
    }
  }

  void doPiece(const LevelPiece& piece, unsigned worker) {
    switch (piece.kind) {
      case LevelPiece::listBoth:
        return startLevel(piece.level, worker);
      case LevelPiece::listNew:
        return listSide(piece.level, 1, worker);
      case LevelPiece::work:
        return doWork(piece, worker);
    }
  }

  void startLevel(const std::shared_ptr<Level>& level, unsigned worker) {
    guarded([&] { progress_.enter(level->names[1]); });
    // A thread with nothing to do takes the other side.
    const bool shared = pool_.isHungry();
    if (shared) handOver(level, LevelPiece::listNew, 0, 0, worker);
    listSide(level, 0, worker);
    if (!shared) listSide(level, 1, worker);
  }

  void listSide(const std::shared_ptr<Level>& level, int side, unsigned worker) {
    guarded([&] {
      FolderListing& listing = level->sides.listings[side];
      if (isStopped() || isSearchedOut(*level)) return;
      level->listError[side] = files_.list(joinPath(paths_[side], level->names[side]), abort_, listing);
      listing.fit();
      progress_.addEntries(listing.size());
      std::vector<uint32_t>& kept = level->sides.kept[side];
      if (filter_.keepsAll()) {
        kept.resize(listing.size());
        std::iota(kept.begin(), kept.end(), 0u);
        return;
      }
      forEach<uint32_t>(0, listing.size(), abort_, [&](uint32_t index) {
        if (filter_.keeps(listing.name(index))) kept.push_back(index);
      });
    });
    if (level->unlisted.fetch_sub(1) == 1) pairUp(level, worker);
  }

  void pairUp(const std::shared_ptr<Level>& level, unsigned worker) {
    guarded([&] {
      if (isStopped()) return;
      level->pairs = pairEntries(level->sides, options_.ignoreNameCase, abort_);
      for (std::vector<uint32_t>& kept : level->sides.kept) std::vector<uint32_t>().swap(kept);
      level->states.resize(level->pairs.size());
      forEach<uint32_t>(0, static_cast<uint32_t>(level->pairs.size()), abort_, [&](uint32_t pair) {
        if (!level->isPaired(pair)) return;
        const ListedEntry &oldEntry = level->entry(pair, 0), &newEntry = level->entry(pair, 1);
        PairState& state = level->states[pair];
        state = compareEntries(oldEntry, newEntry, options_);
        const bool descends = newEntry.kind == FileKind::folder && state.notCompared == NotCompared::nothing;
        if (descends || needsReading(oldEntry, newEntry, state, options_)) level->work.push_back(pair);
      });
      if (level->searching && level->hasDifference()) level->searched->found = true;
    });
    const bool goesOn = !isStopped() && !isSearchedOut(*level);
    const uint32_t count = goesOn ? static_cast<uint32_t>(level->work.size()) : 0;
    if (count == 0) return endLevels(level);
    level->undone = count;
    handOver(level, LevelPiece::work, 0, count, worker);
  }

  /// In a search for whether anything differs, when something does.
  bool isSearchedOut(const Level& level) const { return level.searching && level.searched->found; }

  /// Takes one folder, or a handful of files, and leaves the others to whoever comes next.
  void doWork(const LevelPiece& piece, unsigned worker) {
    constexpr uint32_t maxFiles = 32;
    constexpr uint64_t maxBytes = 1 << 20;
    const std::shared_ptr<Level>& level = piece.level;
    uint32_t end = piece.begin;
    for (uint64_t bytes = 0; end < piece.end && end < piece.begin + maxFiles && bytes < maxBytes; ++end) {
      const uint32_t pair = level->work[end];
      if (level->isFolder(pair)) {
        if (end == piece.begin) ++end;
        break;
      }
      bytes += level->entry(pair, 0).size + level->entry(pair, 1).size;
    }
    if (isStopped() || isSearchedOut(*level)) end = piece.end;
    if (end < piece.end) handOver(level, LevelPiece::work, end, piece.end, worker);
    uint32_t done = 0;
    for (uint32_t i = piece.begin; i < end; ++i) {
      if (isStopped() || isSearchedOut(*level)) {
        done = end - piece.begin;
        break;
      }
      const uint32_t pair = level->work[i];
      if (level->isFolder(pair)) {
        if (!descend(level, pair, worker)) ++done;
      } else {
        guarded([&] { compareFiles(*level, pair, contents_[worker]); });
        ++done;
      }
    }
    if (done > 0 && level->undone.fetch_sub(done) == done) endLevels(level);
  }

  void compareFiles(Level& level, uint32_t pair, ContentsComparison& contents) {
    const std::string paths[2] = {joinPath(paths_[0], level.entryName(pair, 0)),
                                  joinPath(paths_[1], level.entryName(pair, 1))};
    PairState& state = level.states[pair];
    if (options_.quickContents) {
      contents.compareBytes(paths, state);
    } else {
      contents.compareTexts(paths, options_.text, state);
    }
    if (level.searching && state.changed) level.searched->found = true;
  }

  /// False for a folder that is not descended into.
  bool descend(const std::shared_ptr<Level>& parent, uint32_t pair, unsigned worker) {
    std::shared_ptr<Level> level;
    guarded([&] {
      for (const int side : {0, 1}) {
        if (parent->entry(pair, side).isLink && leadsBack(*parent, pair, side)) {
          parent->states[pair].cannotCompare(NotCompared::loop, side);
          return;
        }
      }
      auto made = std::make_shared<Level>();
      made->parent = parent;
      made->pairInParent = pair;
      for (const int side : {0, 1}) made->names[side] = parent->entryName(pair, side);
      made->searching = parent->searching || !options_.subfolders;
      made->searched = parent->searching ? parent->searched : made.get();
      level = std::move(made);
    });
    if (level) handOver(level, LevelPiece::listBoth, 0, 0, worker);
    return level != nullptr;
  }

  /// Whether a link to a folder leads to one of those that it is in.
  bool leadsBack(const Level& parent, uint32_t pair, int side) {
    const FileIdentity target = files_.identity(joinPath(paths_[side], parent.entryName(pair, side)));
    if (!target.known()) return false;
    for (const Level* level = &parent; level != nullptr; level = level->parent.get()) {
      if (files_.identity(joinPath(paths_[side], level->names[side])) == target) return true;
    }
    return false;
  }

  /// Ends a level, and those above for which it was the last that was missing.
  void endLevels(std::shared_ptr<Level> level) {
    for (;;) {
      const std::shared_ptr<Level> parent = level->parent;
      guarded([&] {
        if (isStopped()) return;
        endLevel(*level, options_, abort_);
        if (!parent) return;
        const std::lock_guard lock(handingOn_);
        handOn(*level, *parent);
      });
      if (!parent) return;
      if (parent->undone.fetch_sub(1) != 1) return;
      level = parent;
    }
  }

  /// False when aborted.
  bool collect(Level& top, FolderComparison& comparison) {
    for (int category = 0; category < kFolderCategories; ++category) {
      size_t count = 0;
      for (const EntryBatch& batch : top.batches) count += batch.entries[category].size();
      std::vector<FolderEntry>& entries = comparison.entries[category];
      for (EntryBatch& batch : top.batches) {
        if (isRaised(abort_)) return false;
        std::vector<FolderEntry> own;
        own.swap(batch.entries[category]);
        if (entries.empty()) {
          // A large folder's alone stay where they are.
          entries.swap(own);
          entries.reserve(count);
        } else {
          entries.insert(entries.end(), own.begin(), own.end());
        }
      }
      if (!sortEntries(entries, abort_)) return false;
    }
    for (EntryBatch& batch : top.batches) comparison.names.push_back(std::move(batch.names));
    comparison.notCompared = std::move(top.troubles);
    std::sort(comparison.notCompared.begin(), comparison.notCompared.end(),
              [](const FolderTrouble& a, const FolderTrouble& b) {
                return std::tie(a.name, a.side, a.reason) < std::tie(b.name, b.side, b.reason);
              });
    return true;
  }

  FileSystem& files_;
  const std::string paths_[2];
  const FolderOptions& options_;
  const NameFilter filter_;
  const AbortFlag* const abort_;
  FolderProgress& progress_;
  std::vector<ContentsComparison> contents_;  // a worker each
  std::atomic<bool> outOfMemory_{false};
  std::mutex handingOn_;
  WorkPool<LevelPiece> pool_;
};

Result checkFolders(FileSystem& files, const std::string (&paths)[2]) {
  const FileKind kinds[2] = {files.kind(paths[0]), files.kind(paths[1])};
  if (kinds[0] == FileKind::none) return Result::oldFolderMissing;
  if (kinds[1] == FileKind::none) return Result::newFolderMissing;
  if (kinds[0] != FileKind::folder) return Result::oldIsNoFolder;
  if (kinds[1] != FileKind::folder) return Result::newIsNoFolder;
  return Result::success;
}

}  // namespace

bool FolderComparison::differs() const {
  return !category(FolderCategory::onlyOld).empty() || !category(FolderCategory::onlyNew).empty() ||
         !category(FolderCategory::changed).empty();
}

Result compareFolders(FileSystem& files, const std::string (&paths)[2], const FolderOptions& options,
                      const AbortFlag* abort, FolderComparison& comparison, FolderProgress* progress) {
  comparison = {};
  Result result = checkFolders(files, paths);
  if (result != Result::success) return result;
  try {
    FolderProgress unseen;
    FolderComparison compared;
    result = FolderRun(files, paths, options, abort, progress ? *progress : unseen).run(compared);
    if (result == Result::success) comparison = std::move(compared);
  } catch (const std::bad_alloc&) {
    result = Result::outOfMemory;
  } catch (const std::length_error&) {
    result = Result::outOfMemory;
  }
  return result;
}

std::string folderResultMessage(Result result, const std::string (&paths)[2]) {
  switch (result) {
    case Result::outOfMemory:
      return text(TextId::outOfMemory);
    case Result::cancelled:
      return text(TextId::operationAborted);
    case Result::oldFolderMissing:
      return formatMessage(TextId::pathNotFound, {paths[0]});
    case Result::newFolderMissing:
      return formatMessage(TextId::pathNotFound, {paths[1]});
    case Result::oldIsNoFolder:
      return text(TextId::oldFolderIsNoFolder);
    case Result::newIsNoFolder:
      return text(TextId::newFolderIsNoFolder);
    default:
      return {};
  }
}

}  // namespace merivane
