#include "base/unfinished_files.h"

#include <atomic>
#include <cstddef>
#include <cstring>

namespace merivane {
namespace {

/// A place for a path that a signal handler can read at any moment: it is there whole while `state` is `set`.
struct Slot {
  enum State : int { free, busy, set };
  std::atomic<int> state = free;
  char path[4096];
};

// An output has one or two such files, and few outputs are made at once. A file that finds no place is only
// left behind by a signal.
Slot slots[8];
constexpr int slotCount = sizeof slots / sizeof slots[0];
static_assert(std::atomic<int>::is_always_lock_free);

int note(const std::string& path) {
  if (path.size() >= sizeof slots[0].path) return -1;
  for (int i = 0; i < slotCount; ++i) {
    int expected = Slot::free;
    if (!slots[i].state.compare_exchange_strong(expected, Slot::busy)) continue;
    std::memcpy(slots[i].path, path.c_str(), path.size() + 1);
    slots[i].state.store(Slot::set);
    return i;
  }
  return -1;
}

}  // namespace

void UnfinishedFile::begin(const std::string& path) {
  end();
  slot_ = note(path);
}

void UnfinishedFile::end() {
  if (slot_ >= 0) slots[slot_].state.store(Slot::free);
  slot_ = -1;
}

void removeUnfinishedFiles() {
  waitForHeldSignals();
  for (const Slot& slot : slots) {
    if (slot.state.load() == Slot::set) removeFileForSignal(slot.path);
  }
}

FinishBeforeSignals::FinishBeforeSignals() { holdSignals(); }
FinishBeforeSignals::~FinishBeforeSignals() { releaseSignals(); }

}  // namespace merivane
