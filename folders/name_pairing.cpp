#include "folders/name_pairing.h"

#include <bit>
#include <optional>
#include <string_view>

#include "base/names.h"

namespace merivane {
namespace {

/// What pairs up has to be equal in both.
struct Key {
  std::string_view name;
  bool isFolder;
};

bool equalKeys(const Key& a, const Key& b, bool caseSensitive) {
  return a.isFolder == b.isFolder && equalNames(a.name, b.name, caseSensitive);
}

/// FNV-1a.
uint64_t hashOf(const Key& key, bool caseSensitive) {
  uint64_t hash = 14695981039346656037u + key.isFolder;
  for (const char c : key.name) {
    hash = (hash ^ static_cast<uint8_t>(caseSensitive ? c : lowerCase(c))) * 1099511628211u;
  }
  return hash ^ hash >> 32;
}

/// The new side's entries while they are given to old ones. Places are places in the list of those kept.
class NewEntries {
 public:
  explicit NewEntries(const FolderSides& sides)
      : listing_(sides.listings[1]), kept_(sides.kept[1]), taken_(kept_.size()) {}

  uint32_t size() const { return static_cast<uint32_t>(kept_.size()); }
  Key key(uint32_t place) const {
    const uint32_t index = kept_[place];
    return {listing_.name(index), listing_.entry(index).kind == FileKind::folder};
  }
  bool isTaken(uint32_t place) const { return taken_[place] != 0; }
  void take(uint32_t place) { taken_[place] = 1; }

 private:
  const FolderListing& listing_;
  const std::vector<uint32_t>& kept_;
  std::vector<uint8_t> taken_;
};

/// A hash table of the new entries in which those of one name, whatever "one" means, are a chain in order.
class NameTable {
 public:
  NameTable(const NewEntries& entries, bool caseSensitive, const AbortFlag* abort)
      : entries_(entries), caseSensitive_(caseSensitive) {
    if (!resize(next_, entries.size(), abort)) return;
    if (!resize(slots_, std::bit_ceil(size_t{entries.size()} * 2 + 1), abort)) return;
    // From the last on, so that each chain begins with its first.
    forEach<uint32_t>(0, entries.size(), abort, [&](uint32_t done) {
      const uint32_t place = entries.size() - 1 - done;
      uint32_t& first = slot(entries.key(place));
      next_[place] = first;
      first = place + 1;
    });
  }

  /// The first that is not taken; kNoEntry for none.
  uint32_t find(const Key& key) {
    uint32_t& first = slot(key);
    // One stays for its name even when all are taken.
    while (first != 0 && entries_.isTaken(first - 1) && next_[first - 1] != 0) first = next_[first - 1];
    return first == 0 || entries_.isTaken(first - 1) ? kNoEntry : first - 1;
  }

 private:
  uint32_t& slot(const Key& key) {
    const size_t mask = slots_.size() - 1;
    size_t at = static_cast<size_t>(hashOf(key, caseSensitive_)) & mask;
    while (slots_[at] != 0 && !equalKeys(entries_.key(slots_[at] - 1), key, caseSensitive_))
      at = (at + 1) & mask;
    return slots_[at];
  }

  const NewEntries& entries_;
  const bool caseSensitive_;
  std::vector<uint32_t> slots_;  // the first of a chain, its place plus 1; 0 for nothing
  std::vector<uint32_t> next_;   // in the chain, in the same way
};

}  // namespace

std::vector<EntryPair> pairEntries(const FolderSides& sides, bool ignoreNameCase, const AbortFlag* abort) {
  NewEntries newEntries(sides);
  std::optional<NameTable> exact, folded;  // made when first asked
  uint32_t expected = 0;                   // folders that are alike are often listed alike
  const auto partnerOf = [&](const Key& key) {
    if (expected < newEntries.size() && !newEntries.isTaken(expected) &&
        equalKeys(newEntries.key(expected), key, true)) {
      return expected;
    }
    if (!exact) exact.emplace(newEntries, true, abort);
    if (isRaised(abort)) return kNoEntry;
    const uint32_t found = exact->find(key);
    if (found != kNoEntry || !ignoreNameCase) return found;
    if (!folded) folded.emplace(newEntries, false, abort);
    return isRaised(abort) ? kNoEntry : folded->find(key);
  };

  std::vector<EntryPair> pairs;
  const FolderListing& oldListing = sides.listings[0];
  const std::vector<uint32_t>& oldKept = sides.kept[0];
  pairs.reserve(oldKept.size());
  forEach<size_t>(0, oldKept.size(), abort, [&](size_t i) {
    const uint32_t index = oldKept[i];
    const uint32_t place =
        partnerOf({oldListing.name(index), oldListing.entry(index).kind == FileKind::folder});
    if (place == kNoEntry) {
      pairs.push_back({{index, kNoEntry}});
    } else {
      newEntries.take(place);
      expected = place + 1;
      pairs.push_back({{index, sides.kept[1][place]}});
    }
  });
  forEach<uint32_t>(0, newEntries.size(), abort, [&](uint32_t place) {
    if (!newEntries.isTaken(place)) pairs.push_back({{kNoEntry, sides.kept[1][place]}});
  });
  return pairs;
}

}  // namespace merivane
