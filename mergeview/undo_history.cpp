#include "mergeview/undo_history.h"

#include <utility>

namespace merivane {

void UndoHistory::push(std::unique_ptr<UndoRecord> record) {
  record->stateId = ++stateCounter_;
  record->previousStateId = currentStateId_[record->side];
  for (; undone_ > 0; --undone_, --count_) {
    at(0).reset();
    newest_ = (newest_ + 1) % kCapacity;
  }
  // In a full ring the place before the newest is the oldest's.
  if (count_ < kCapacity) ++count_;
  newest_ = (newest_ + kCapacity - 1) % kCapacity;
  const int side = record->side;
  at(0) = std::move(record);
  setState(side, at(0)->stateId);
}

bool UndoHistory::undo() {
  if (!canUndo() || !at(undone_)->undo()) return false;
  const UndoRecord& record = *at(undone_++);
  setState(record.side, record.previousStateId);
  owner_.onUndone();
  return true;
}

bool UndoHistory::redo() {
  if (!canRedo() || !at(undone_ - 1)->redo()) return false;
  const UndoRecord& record = *at(--undone_);
  setState(record.side, record.stateId);
  owner_.onUndone();
  return true;
}

void UndoHistory::markSaved(int side) {
  savedStateId_[side] = currentStateId_[side];
  for (uint32_t i = 0; i < count_; ++i) at(i)->onSaved(side);
}

void UndoHistory::swapSides() {
  std::swap(currentStateId_[0], currentStateId_[1]);
  std::swap(savedStateId_[0], savedStateId_[1]);
  for (uint32_t i = 0; i < count_; ++i) at(i)->swapSides();
}

void UndoHistory::clear() {
  for (uint32_t i = 0; i < count_; ++i) at(i).reset();
  count_ = undone_ = 0;
}

void UndoHistory::setState(int side, uint32_t stateId) {
  const bool wasModified = isModified(side);
  currentStateId_[side] = stateId;
  owner_.onHistoryChanged(isModified(side) != wasModified);
}

}  // namespace merivane
