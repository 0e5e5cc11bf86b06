#include "folders/sorted_entries.h"

#include <algorithm>
#include <cstddef>

namespace merivane {

// A merge sort from below. The runs it starts from are as long as can be sorted between two looks at the
// flag.
bool sortEntries(std::vector<const FolderEntry*>& entries, const AbortFlag* abort) {
  constexpr size_t firstRun = 1 << 12;
  const auto before = [](const FolderEntry* a, const FolderEntry* b) { return comesBefore(*a, *b); };
  const auto at = [&entries](size_t index) { return entries.begin() + static_cast<ptrdiff_t>(index); };
  for (size_t from = 0; from < entries.size(); from += firstRun) {
    if (isRaised(abort)) return false;
    std::sort(at(from), at(std::min(from + firstRun, entries.size())), before);
  }
  if (entries.size() <= firstRun) return true;
  std::vector<const FolderEntry*> merged(entries.size());
  for (size_t run = firstRun; run < entries.size(); run *= 2) {
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

}  // namespace merivane
