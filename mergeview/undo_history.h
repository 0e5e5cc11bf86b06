#pragma once

#include <array>
#include <cstdint>

#include "base/byte_array.h"
#include "engine/diff_model.h"

namespace merivane {

/// Where caret and anchor stand on a side, as text positions. `row` tells which of the fillers at the
/// position the caret is in; any other row is ignored.
struct CaretPlace {
  uint32_t position = 0;
  uint32_t anchor = 0;
  uint32_t row = 0xFFFFFFFF;
  bool operator==(const CaretPlace&) const = default;
};

/// One action of the user that can be taken back: bytes of one side that gave way to others, and rows that
/// gave way to those of a comparison.
struct UndoRecord {
  int activeSide = 0;  // had the caret
  int side = 0;        // has changed
  uint32_t start = 0;
  ByteArray removed;
  ByteArray inserted;
  CaretPlace before;  // on the active side
  CaretPlace after;
  RowRange rows;       // that the action, or undoing it, put into the model last
  DiffModel replaced;  // the rows that stood there before; none where they are to be found by comparing
  uint32_t previousStateId = 0;
  uint32_t stateId = 0;  // the side's from then on
};

/// What the user did last, shared by both sides of a comparison, and whether each side is as it was saved. A
/// side's state has a number that no other state ever gets; its modified mark therefore goes when undoing
/// leads back to what was saved, without a look at the text. Nothing here can fail.
class UndoHistory {
 public:
  static constexpr uint32_t kCapacity = 250;

  UndoHistory() = default;
  UndoHistory(const UndoHistory&) = delete;
  UndoHistory& operator=(const UndoHistory&) = delete;

  /// Takes on what has just been done. What was undone is gone for good, and so is the oldest record when
  /// there are too many.
  void push(UndoRecord&& record);

  bool canUndo() const { return undone_ < count_; }
  bool canRedo() const { return undone_ > 0; }

  /// The record that is undone next, and the one that is done again next; only where there is one.
  UndoRecord& toUndo() { return at(undone_); }
  UndoRecord& toRedo() { return at(undone_ - 1); }

  /// The record has been undone, or done again.
  void stepBack();
  void stepForward();

  bool isModified(int side) const { return savedStateId_[side] != currentStateId_[side]; }
  bool isModified() const { return isModified(0) || isModified(1); }

  /// A side is now as it is in its file.
  void markSaved(int side) { savedStateId_[side] = currentStateId_[side]; }

  /// The two sides have changed places, their modified marks with them, and have other rows.
  void swapSides();

  /// The rows are others than the records know: undoing compares.
  void forgetRows();

  /// Forgets all records; which sides are modified stays.
  void clear();

 private:
  UndoRecord& at(uint32_t index) { return records_[(newest_ + index) % kCapacity]; }

  std::array<UndoRecord, kCapacity> records_;  // a ring, newest first
  uint32_t newest_ = 0;
  uint32_t count_ = 0;
  uint32_t undone_ = 0;  // of the newest, how many can be redone
  uint32_t currentStateId_[2] = {0, 0};
  uint32_t savedStateId_[2] = {0, 0};
  uint32_t stateCounter_ = 0;
};

}  // namespace merivane
