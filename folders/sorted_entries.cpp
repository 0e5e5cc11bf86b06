#include "folders/sorted_entries.h"

#include <algorithm>
#include <cstddef>

namespace merivane {
namespace {

/// What is done between two looks at the flag.
constexpr size_t kAtOnce = 1 << 12;

// A merge sort from below. The runs it starts from are of that size.
bool sort(std::vector<const FolderEntry*>& entries, const AbortFlag* abort) {
  const auto before = [](const FolderEntry* a, const FolderEntry* b) { return comesBefore(*a, *b); };
  const auto at = [&entries](size_t index) { return entries.begin() + static_cast<ptrdiff_t>(index); };
  for (size_t from = 0; from < entries.size(); from += kAtOnce) {
    if (isRaised(abort)) return false;
    std::sort(at(from), at(std::min(from + kAtOnce, entries.size())), before);
  }
  if (entries.size() <= kAtOnce) return true;
  std::vector<const FolderEntry*> merged(entries.size());
  for (size_t run = kAtOnce; run < entries.size(); run *= 2) {
    for (size_t from = 0; from < entries.size(); from += 2 * run) {
      size_t left = from, right = std::min(from + run, entries.size());
      const size_t leftEnd = right, rightEnd = std::min(from + 2 * run, entries.size());
      const bool done = forEach(from, rightEnd, abort, [&](size_t to) {
        const bool takesRight =
            left == leftEnd || (right < rightEnd && before(entries[right], entries[left]));
        merged[to] = entries[takesRight ? right++ : left++];
      });
      if (!done) return false;
    }
    entries.swap(merged);
  }
  return true;
}

}  // namespace

bool sortEntries(std::vector<FolderEntry>& entries, const AbortFlag* abort) {
  std::vector<const FolderEntry*> order;
  order.reserve(entries.size());
  for (const FolderEntry& entry : entries) order.push_back(&entry);
  if (!sort(order, abort)) return false;
  // In rounds, each from a place to the one that it has made free: room for all once more is not needed.
  FolderEntry* const first = entries.data();
  size_t moves = 0;
  for (size_t begin = 0; begin < order.size(); ++begin) {
    const FolderEntry held = first[begin];
    size_t to = begin;
    do {
      if (++moves % kAtOnce == 0 && isRaised(abort)) return false;
      const auto from = static_cast<size_t>(order[to] - first);
      order[to] = first + to;
      first[to] = from == begin ? held : first[from];
      to = from;
    } while (to != begin);
  }
  return true;
}

}  // namespace merivane
