#pragma once

#include <array>
#include <cstdint>
#include <memory>

namespace merivane {

/// One action of the user that can be taken back.
class UndoRecord {
 public:
  UndoRecord(int activeSideThen, int changedSide) : activeSide(activeSideThen), side(changedSide) {}
  UndoRecord(const UndoRecord&) = delete;
  UndoRecord& operator=(const UndoRecord&) = delete;
  virtual ~UndoRecord() = default;

  /// Takes the action back, or does it again. False when memory ran out: the user has been told, and
  /// nothing has changed.
  virtual bool undo() = 0;
  virtual bool redo() = 0;

  /// The two sides have changed places.
  virtual void swapSides() {
    activeSide = 1 - activeSide;
    side = 1 - side;
  }

  /// A side has been saved as it is now.
  virtual void onSaved(int) {}

  int activeSide;  // had the caret
  int side;        // has changed
  uint32_t previousStateId = 0;
  uint32_t stateId = 0;  // the side's from then on
};

/// Hears of what the history does to the window that owns it.
class UndoOwner {
 public:
  virtual ~UndoOwner() = default;

  /// There is another action to undo or redo; `modifiedChanged` says that a side has become modified or is
  /// no longer.
  virtual void onHistoryChanged(bool modifiedChanged) = 0;

  /// An action has been undone or redone: everything may look different.
  virtual void onUndone() = 0;
};

/// What the user did last, shared by both sides of a comparison, and whether each side is as it was saved. A
/// side's state has a number that no other state ever gets; its modified mark therefore goes when undoing
/// leads back to what was saved, without a look at the text. Nothing but undo and redo themselves can fail.
class UndoHistory {
 public:
  static constexpr uint32_t kCapacity = 250;

  explicit UndoHistory(UndoOwner& owner) : owner_(owner) {}
  UndoHistory(const UndoHistory&) = delete;
  UndoHistory& operator=(const UndoHistory&) = delete;

  /// Takes on what has just been done. What was undone is gone for good, and so is the oldest record when
  /// there are too many.
  void push(std::unique_ptr<UndoRecord> record);

  bool canUndo() const { return undone_ < count_; }
  bool canRedo() const { return undone_ > 0; }

  /// False when there is nothing to do, or no memory to do it.
  bool undo();
  bool redo();

  bool isModified(int side) const { return savedStateId_[side] != currentStateId_[side]; }
  bool isModified() const { return isModified(0) || isModified(1); }

  /// A side is now as it is in its file.
  void markSaved(int side);

  /// The two sides have changed places, their modified marks with them.
  void swapSides();

  /// Forgets all records; which sides are modified stays.
  void clear();

 private:
  std::unique_ptr<UndoRecord>& at(uint32_t index) { return records_[(newest_ + index) % kCapacity]; }
  void setState(int side, uint32_t stateId);

  UndoOwner& owner_;
  std::array<std::unique_ptr<UndoRecord>, kCapacity> records_;  // a ring, newest first
  uint32_t newest_ = 0;
  uint32_t count_ = 0;
  uint32_t undone_ = 0;  // of the newest, how many can be redone
  uint32_t currentStateId_[2] = {0, 0};
  uint32_t savedStateId_[2] = {0, 0};
  uint32_t stateCounter_ = 0;
};

}  // namespace merivane
