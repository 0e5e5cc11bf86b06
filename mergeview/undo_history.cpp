#include "mergeview/undo_history.h"

#include <utility>

namespace merivane {

void UndoHistory::push(UndoRecord&& record) {
  record.stateId = ++stateCounter_;
  record.previousStateId = std::exchange(currentStateId_[record.side], record.stateId);
  for (; undone_ > 0; --undone_, --count_) {
    at(0) = {};
    newest_ = (newest_ + 1) % kCapacity;
  }
  // In a full ring the place before the newest is the oldest's.
  if (count_ < kCapacity) ++count_;
  newest_ = (newest_ + kCapacity - 1) % kCapacity;
  at(0) = std::move(record);
}

void UndoHistory::stepBack() {
  const UndoRecord& record = at(undone_++);
  currentStateId_[record.side] = record.previousStateId;
}

void UndoHistory::stepForward() {
  const UndoRecord& record = at(--undone_);
  currentStateId_[record.side] = record.stateId;
}

void UndoHistory::swapSides() {
  std::swap(currentStateId_[0], currentStateId_[1]);
  std::swap(savedStateId_[0], savedStateId_[1]);
  for (uint32_t i = 0; i < count_; ++i) {
    at(i).activeSide = 1 - at(i).activeSide;
    at(i).side = 1 - at(i).side;
  }
  forgetRows();
}

void UndoHistory::forgetRows() {
  for (uint32_t i = 0; i < count_; ++i) at(i).replaced.clear();
}

void UndoHistory::clear() {
  for (uint32_t i = 0; i < count_; ++i) at(i) = {};
  count_ = undone_ = 0;
}

}  // namespace merivane
