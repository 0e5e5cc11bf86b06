#include "folders/level.h"

#include <cstring>
#include <iterator>
#include <optional>
#include <utility>

#include "base/paths.h"

namespace merivane {
namespace {

/// Where an entry belongs; nowhere for a folder whose differences are all listed themselves.
std::optional<FolderCategory> categoryOf(const Level& level, uint32_t pair, bool subfolders) {
  const EntryPair& indices = level.pairs[pair];
  if (indices.index[1] == kNoEntry) return FolderCategory::onlyOld;
  if (indices.index[0] == kNoEntry) return FolderCategory::onlyNew;
  const PairState& state = level.states[pair];
  if (!state.changed) return FolderCategory::same;
  if (level.isFolder(pair) && subfolders && state.differences == kContents) return std::nullopt;
  return FolderCategory::changed;
}

/// The names of a batch, in one piece of memory.
class NameWriter {
 public:
  NameWriter(const Level& level, EntryBatch& batch, const AbortFlag* abort) : level_(level) {
    size_t size = 0;
    forEach<uint32_t>(0, static_cast<uint32_t>(level.pairs.size()), abort, [&](uint32_t pair) {
      for (const int side : {0, 1}) {
        const bool has = level.pairs[pair].index[side] != kNoEntry;
        if (has && !(side == 1 && sharesName(pair))) size += lengthOf(pair, side);
      }
    });
    batch.names = std::make_unique<char[]>(size);
    at_ = batch.names.get();
  }

  void write(uint32_t pair, FolderEntry& entry) {
    const EntryPair& indices = level_.pairs[pair];
    for (const int side : {0, 1}) {
      if (indices.index[side] == kNoEntry) continue;
      entry.names[side] = side == 1 && sharesName(pair) ? entry.names[0] : written(pair, side);
    }
  }

 private:
  std::string_view own(uint32_t pair, int side) const {
    return level_.sides.listings[side].name(level_.pairs[pair].index[side]);
  }
  size_t lengthOf(uint32_t pair, int side) const {
    const std::string& folder = level_.names[side];
    return (folder.empty() ? 0 : folder.size() + 1) + own(pair, side).size();
  }
  bool sharesName(uint32_t pair) const {
    return level_.isPaired(pair) && level_.names[0] == level_.names[1] && own(pair, 0) == own(pair, 1);
  }

  std::string_view written(uint32_t pair, int side) {
    const std::string& folder = level_.names[side];
    const std::string_view name = own(pair, side);
    char* const begin = at_;
    if (!folder.empty()) {
      at_ = static_cast<char*>(std::memcpy(at_, folder.data(), folder.size())) + folder.size();
      *at_++ = kPathSeparator;
    }
    std::memcpy(at_, name.data(), name.size());
    at_ += name.size();
    return {begin, static_cast<size_t>(at_ - begin)};
  }

  const Level& level_;
  char* at_ = nullptr;
};

EntryBatch batchOf(const Level& level, const FolderOptions& options, const AbortFlag* abort) {
  EntryBatch batch;
  const uint32_t pairs = static_cast<uint32_t>(level.pairs.size());
  NameWriter names(level, batch, abort);
  size_t counts[kFolderCategories] = {};
  forEach<uint32_t>(0, pairs, abort, [&](uint32_t pair) {
    if (const auto category = categoryOf(level, pair, options.subfolders))
      ++counts[static_cast<size_t>(*category)];
  });
  for (int category = 0; category < kFolderCategories; ++category)
    batch.entries[category].reserve(counts[category]);
  forEach<uint32_t>(0, pairs, abort, [&](uint32_t pair) {
    const auto category = categoryOf(level, pair, options.subfolders);
    if (!category) return;
    FolderEntry entry;
    names.write(pair, entry);
    for (const int side : {0, 1}) {
      if (level.pairs[pair].index[side] == kNoEntry) continue;
      const ListedEntry& listed = level.entry(pair, side);
      entry.facts[side] = {listed.size, listed.modified};
      if (!level.isPaired(pair)) entry.differences = attributeBits(listed, options);
    }
    const PairState& state = level.states[pair];
    if (level.isPaired(pair)) entry.differences = state.differences;
    entry.isFolder = level.isFolder(pair);
    entry.inSubfolder = level.parent != nullptr;
    entry.notCompared = state.notCompared;
    batch.entries[static_cast<size_t>(*category)].push_back(entry);
  });
  return batch;
}

void appendTroubles(Level& level) {
  for (const int side : {0, 1}) {
    const SystemError error = level.listError[side];
    if (error != 0) level.troubles.push_back({level.names[side], side, reasonFor(error), error});
  }
  for (uint32_t pair = 0; pair < level.states.size(); ++pair) {
    const PairState& state = level.states[pair];
    if (state.notCompared != NotCompared::nothing && !state.toldBelow) {
      level.troubles.push_back(
          {level.entryName(pair, state.side), state.side, state.notCompared, state.error});
    }
  }
}

}  // namespace

std::string Level::entryName(uint32_t pair, int side) const {
  return joinPath(names[side], sides.listings[side].name(pairs[pair].index[side]));
}

bool Level::hasDifference() const {
  for (uint32_t pair = 0; pair < pairs.size(); ++pair) {
    if (states[pair].changed || !isPaired(pair)) return true;
  }
  return false;
}

void endLevel(Level& level, const FolderOptions& options, const AbortFlag* abort) {
  level.differs = level.hasDifference();
  appendTroubles(level);
  if (level.searching) {
    if (level.differs) level.searched->found = true;
    level.differs = level.searched->found;
    // The search ended where a difference was found first, and what it met on the way there is chance.
    if (level.searched == &level && level.differs) level.troubles.clear();
  } else if (level.differs || level.parent == nullptr || level.parent->states[level.pairInParent].changed) {
    level.batches.push_back(batchOf(level, options, abort));
  }
  level.sides = {};
  std::vector<EntryPair>().swap(level.pairs);
  std::vector<PairState>().swap(level.states);
}

void handOn(Level& level, Level& parent) {
  PairState& state = parent.states[level.pairInParent];
  if (level.differs) state.add(kContents);
  if (!level.troubles.empty()) {
    const SystemError error = level.listError[0] != 0 ? level.listError[0] : level.listError[1];
    state.notCompared = error != 0 ? reasonFor(error) : NotCompared::below;
    state.toldBelow = true;
  }
  const auto append = [](auto& to, auto& from) {
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
  };
  append(parent.batches, level.batches);
  append(parent.troubles, level.troubles);
}

}  // namespace merivane
