#include "mergeview/undo_history.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/marked_view.h"

namespace merivane {
namespace {

/// Writes down what is done to it.
class LoggingRecord final : public UndoRecord {
 public:
  LoggingRecord(std::string& log, int number, int changedSide)
      : UndoRecord(changedSide, changedSide), log_(log), number_(number) {}
  ~LoggingRecord() override { note('~'); }

  bool undo() override { return note('-'); }
  bool redo() override { return note('+'); }
  void onSaved(int savedSide) override { note(savedSide == 0 ? 'l' : 'r'); }

 private:
  bool note(char what) {
    log_ += what + std::to_string(number_) + ' ';
    return succeeds;
  }

  std::string& log_;
  const int number_;

 public:
  bool succeeds = true;
};

class UndoHistoryTest : public testing::Test {
 protected:
  LoggingRecord& push(int number, int side) {
    auto record = std::make_unique<LoggingRecord>(log, number, side);
    LoggingRecord& result = *record;
    history.push(std::move(record));
    return result;
  }
  std::string modified() const {
    return std::string(history.isModified(0) ? "L" : "-") + (history.isModified(1) ? "R" : "-");
  }

  std::string log;
  FakeUndoOwner owner;
  UndoHistory history{owner};
};

TEST_F(UndoHistoryTest, TellsWhatIsModified) {
  push(1, 0);
  push(2, 1);
  EXPECT_EQ(modified(), "LR");
  EXPECT_EQ(owner.modifiedChanges, 2);
  history.markSaved(0);
  EXPECT_EQ(log, "l2 l1 ");
  push(3, 0);
  EXPECT_EQ(modified(), "LR");
  history.undo();
  EXPECT_EQ(modified(), "-R");
  history.undo();
  history.undo();
  EXPECT_EQ(modified(), "L-") << "what was saved is ahead";
  history.redo();
  EXPECT_EQ(modified(), "--");
  EXPECT_EQ(owner.undone, 4);
  history.swapSides();
  history.redo();
  EXPECT_EQ(modified(), "L-");
  push(4, 1);
  EXPECT_EQ(modified(), "LR");
  history.clear();
  EXPECT_EQ(modified(), "LR") << "forgetting saves nothing";
  EXPECT_FALSE(history.canUndo() || history.canRedo());
}

TEST_F(UndoHistoryTest, KeepsTheLast250AndNothingUndoneBehindANewRecord) {
  for (int i = 1; i <= 251; ++i) push(i, 0);
  EXPECT_EQ(log, "~1 ");
  int undone = 0;
  while (history.undo()) ++undone;
  EXPECT_EQ(undone, 250);
  EXPECT_EQ(modified(), "L-") << "the first of 251 cannot be undone any more";
  while (history.redo()) --undone;
  EXPECT_EQ(undone, 0);
  history.undo();
  history.undo();
  log.clear();
  push(252, 1);
  EXPECT_EQ(log, "~251 ~250 ");
  EXPECT_FALSE(history.canRedo());
  log.clear();
  history.undo();
  history.undo();
  EXPECT_EQ(log, "-252 -249 ");
}

TEST_F(UndoHistoryTest, StaysWhereItIsWhenARecordFails) {
  LoggingRecord& record = push(1, 0);
  record.succeeds = false;
  EXPECT_FALSE(history.undo());
  EXPECT_TRUE(history.canUndo() && !history.canRedo() && history.isModified(0));
  record.succeeds = true;
  history.undo();
  record.succeeds = false;
  EXPECT_FALSE(history.redo());
  EXPECT_TRUE(history.canRedo() && !history.isModified());
}

}  // namespace
}  // namespace merivane
