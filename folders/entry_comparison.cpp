#include "folders/entry_comparison.h"

#include "base/file_system.h"

namespace merivane {
namespace {

/// An attribute that both have or both lack is no difference.
void compareAttribute(PairState& state, uint16_t oldBits, Difference has, Difference had) {
  const bool before = (oldBits & has) != 0, after = (state.differences & has) != 0;
  if (before && !after) state.add(had);
  if (!before && after) state.changed = true;
}

/// Marks what there is to say against comparing two entries at all.
void markUncomparable(PairState& state, const ListedEntry (&entries)[2], const FolderOptions& options) {
  for (const int side : {0, 1}) {
    const SystemError error = entries[side].error;
    if (error == 0) continue;
    const bool leadsNowhere = entries[side].isLink && meansMissing(error);
    state.cannotCompare(leadsNowhere ? NotCompared::brokenLink : reasonFor(error), side, error);
  }
  const bool sameKind = entries[0].kind == entries[1].kind;
  for (const int side : {0, 1}) {
    if (entries[side].kind == FileKind::other && (options.comparesContents() || !sameKind)) {
      state.cannotCompare(NotCompared::special, side);
    }
  }
}

}  // namespace

NotCompared reasonFor(SystemError error) {
  if (error == notEnoughStorage()) return NotCompared::outOfMemory;
  if (error == kNoFile) return NotCompared::special;
  if (meansTooLong(error)) return NotCompared::tooLong;
  return meansMissing(error) ? NotCompared::vanished : NotCompared::unreadable;
}

uint16_t attributeBits(const ListedEntry& entry, const FolderOptions& options) {
  const bool count = entry.kind == FileKind::folder ? options.folderAttributes : options.attributes;
  if (!count) return 0;
  return static_cast<uint16_t>((entry.isHidden ? kHidden : 0) | (entry.isReadOnly ? kReadOnly : 0));
}

PairState compareEntries(const ListedEntry& oldEntry, const ListedEntry& newEntry,
                         const FolderOptions& options) {
  PairState state;
  markUncomparable(state, {oldEntry, newEntry}, options);
  if (oldEntry.error != 0 || newEntry.error != 0) return state;
  const uint16_t oldBits = attributeBits(oldEntry, options);
  state.differences = attributeBits(newEntry, options);
  compareAttribute(state, oldBits, kHidden, kWasHidden);
  compareAttribute(state, oldBits, kReadOnly, kWasReadOnly);

  const bool isFolder = newEntry.kind == FileKind::folder;
  if (isFolder ? options.folderDate : options.date) {
    if (oldEntry.modified < newEntry.modified) state.add(kNewer);
    if (oldEntry.modified > newEntry.modified) state.add(kOlder);
  }
  if (isFolder) return state;
  if (options.size) {
    if (oldEntry.size < newEntry.size) state.add(kLarger);
    if (oldEntry.size > newEntry.size) state.add(kSmaller);
  }
  const bool areFiles = oldEntry.kind == FileKind::file && newEntry.kind == FileKind::file;
  if (areFiles && options.quickContents && oldEntry.size != newEntry.size) state.add(kContents);
  return state;
}

bool needsReading(const ListedEntry& oldEntry, const ListedEntry& newEntry, const PairState& state,
                  const FolderOptions& options) {
  if (!options.comparesContents() || (state.differences & kContents)) return false;
  if (oldEntry.kind != FileKind::file || newEntry.kind != FileKind::file) return false;
  if (oldEntry.error != 0 || newEntry.error != 0) return false;
  // One file with two names, as backups made of hard links have it.
  return !oldEntry.identity.known() || oldEntry.identity != newEntry.identity;
}

}  // namespace merivane
