// What edits do to texts, rows and history, whatever comes after one another and where memory runs out; whole
// sides, and the buffer that holds a text.

#include <gtest/gtest.h>

#include <algorithm>

#include "mergeview/edit.h"
#include "mergeview/edited_file.h"
#include "mergeview/side_commands.h"
#include "tests/support/edit_run.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/memory_files.h"
#include "tests/support/random.h"

namespace merivane {
namespace {

TEST(EditRuns, RowsAndHistoryStayRightWhateverTheUserDoes) {
  for (uint32_t seed = 0; seed < 400; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    std::string texts[2] = {random.text("abc \t\n\n", seed % 4 == 0 ? 1500 : 60)};
    for (const char c : texts[0]) {
      const uint32_t change = random.below(40);
      if (change > 0) texts[1] += c;
      if (change < 3) texts[1] += random.text("ab\n", 9);
    }
    CompareOptions options;
    if (random.below(2) == 0) options = {random.below(2) == 0, random.below(16), random.below(2) == 0};
    EditRun run(texts[0], texts[1], options);
    for (int step = 0; step < 120; ++step) {
      const std::string before = run.state();
      run.step([&random](uint32_t bound) { return random.below(bound); });
      ASSERT_EQ(run.fault(), "") << "step " << step << ", from " << before;
    }
    ASSERT_EQ(run.undoAndRedoAll(), "");
    ASSERT_EQ(run.host().outOfMemory, 0);

    // Merging every difference to a side makes them equal.
    const int to = static_cast<int>(seed % 2);
    const std::string wanted = run.text(1 - to);
    for (uint32_t left = 2000; run.view().model().differingRows() > 0; --left) {
      ASSERT_GT(left, 0u) << run.state();
      if (run.view().activeSide() != to) run.press("switch-pane");
      run.press("C-home");
      if (run.view().model().status(0) == RowStatus::same) run.press("next-difference");
      const bool extra = fillerSide(run.view().model().status(run.view().caretRow())) == 1 - to;
      run.press(extra ? "delete-block" : to == 0 ? "copy-block-left" : "copy-line-right");
    }
    ASSERT_EQ(run.text(1 - to), wanted);
    if (options.comparesBytes()) {
      ASSERT_EQ(run.text(to), wanted);
    }
  }
}

TEST(EditRuns, RunningOutOfMemoryLeavesAllAsItWas) {
  const std::string left = "a\nbcdefgh\nx\n" + std::string(3000, 'y') + "\nlast", large(5000, 'p');
  // Each with text undone before it, some with a selection.
  for (const char* keys : {"c", "insert c", "enter", "paste", "delete-row", "S-end cut", "S-C-end delete",
                           "S-C-end paste", "S-down S-down copy", "S-end delete-row", "copy-block-left",
                           "delete-line", "clip-block", "undo", "redo", "switch-sides"}) {
    SCOPED_TRACE(keys);
    const size_t action = std::string_view(keys).rfind(' ') + 1;
    const auto prepared = [&] {
      auto run = std::make_unique<EditRun>(left, "a\nbcdefgi\nz\nlast\n");
      EXPECT_TRUE(run->host().clipboard.assign(large));
      run->press("down q r undo");
      run->press(std::string_view(keys).substr(0, action));
      return run;
    };
    std::unique_ptr<EditRun> run = prepared();
    const std::string before = run->state();
    run->press(keys + action);
    const std::string after = run->state();
    failEachAllocation([&] { run = prepared(); },
                       [&] {
                         run->press(keys + action);
                         return 0;
                       },
                       [&](int) {
                         // All or nothing; where the user was told, nothing.
                         EXPECT_TRUE(run->state() == (run->host().outOfMemory == 0 ? after : before));
                         EXPECT_EQ(run->fault(), "");
                       });
  }
}

TEST(UndoHistory, TellsWhatIsModified) {
  EditRun run("a\n", "b\n");
  const auto after = [&run](std::string_view keys) {
    run.press(keys);
    return std::string(run.history().isModified(0) ? "L" : "-") + (run.history().isModified(1) ? "R" : "-");
  };
  EXPECT_EQ(after("x switch-pane y"), "LR");
  run.history().markSaved(0);
  EXPECT_EQ(after("switch-pane z"), "LR");
  EXPECT_EQ(after("undo"), "-R");
  EXPECT_EQ(after("undo undo"), "L-") << "what was saved is ahead";
  EXPECT_EQ(after("redo"), "--");
  EXPECT_EQ(after("switch-sides redo"), "L-");
  EXPECT_EQ(after("switch-pane z"), "LR");
  run.history().clear();
  EXPECT_EQ(after("undo redo"), "LR") << "forgetting saves nothing";
}

TEST(UndoHistory, KeepsTheLast250AndNothingUndoneBehindANewRecord) {
  EditRun run("\n", "\n");
  for (int i = 0; i < 251; ++i) run.press("x");
  int steps = 0;
  while (undo(run.view(), run.history())) ++steps;
  EXPECT_EQ(steps, 250);
  EXPECT_TRUE(run.history().isModified(0)) << "the first of 251 cannot be undone any more";
  run.press("redo redo undo y redo");
  EXPECT_EQ(run.text(0), "xxy\n");
  run.press("undo undo undo");
  EXPECT_EQ(run.text(0), "x\n");
}

class DocumentFileTest : public testing::Test {
 protected:
  void load(const std::string& contents) {
    file.contents = contents;
    FileComparison comparison;
    ASSERT_TRUE(compareFiles(files, {"left", "left"}, {}, nullptr, comparison).succeeded());
    run.view().take(std::move(comparison), {"left", "left"}, AfterComparison::top);
  }
  SystemError save(FileSystem& to) { return saveFile(to, "left", edited); }

  MemoryFiles files;
  MemoryFiles::File& file = files.files["left"];
  EditRun run{"", ""};
  EditedFile& edited = run.view().file(0);
};

TEST_F(DocumentFileTest, WhatWasNotEditedComesBackByteForByte) {
  std::string allBytes(2000, ' ');
  for (int byte = 0; byte < 256; ++byte) allBytes += byte == '\r' ? ' ' : static_cast<char>(byte);
  const std::string texts[] = {"a\nb\n", "a\r\nb\r\n",      "a\rb\r",           "a\nb",
                               "",       "a\nb\nc\rd\r\ne", "a\r\nb\rc\r\nd\r", allBytes + "\n"};
  for (const std::string& text : texts) {
    load(text);
    EXPECT_EQ(save(files), 0u);
    EXPECT_EQ(file.contents, text);
    run.press("x");
    EXPECT_EQ(save(files), 0u);
    EXPECT_EQ(file.contents, "x" + text);
  }
  // Line ends of other kinds are lost where the file's own kind cannot tell them apart.
  load("a\r\nb\r\nc\nd");
  EXPECT_EQ(save(files), 0u);
  EXPECT_EQ(file.contents, "a\r\nb\r\nc\r\nd");
}

TEST_F(DocumentFileTest, AFailedSaveLeavesTheFileWholeAndASideKnowsItsFileAgain) {
  load("a\r\nb\r\n");
  run.press("x");
  file.modified = 7;
  edited.readOnly = true;
  edited.path = "earlier";
  const auto changed = [&] { return changedOnDisk(files, "left", edited.stamp); };
  bool failed = true;
  for (uint32_t failing = 0; failed; ++failing) {
    EXPECT_TRUE(changed() && edited.readOnly);
    EXPECT_EQ(file.contents, "a\r\nb\r\n");
    EXPECT_EQ(edited.path, "earlier");
    files.failStep(failing, 77);
    const SystemError error = save(files);
    failed = files.endFailing();
    EXPECT_EQ(error, failed ? 77u : 0u);
  }
  EXPECT_EQ(file.contents, "xa\r\nb\r\n");
  EXPECT_FALSE(changed() || edited.readOnly);
  EXPECT_EQ(edited.path, "left");
  failEachAllocation([&] { file.contents = "as it was"; }, [&] { return save(files); },
                     [&](SystemError error) {
                       EXPECT_EQ(error, notEnoughStorage());
                       EXPECT_EQ(file.contents, "as it was");
                     });
  file.contents += "longer";
  EXPECT_TRUE(changed());
  files.files.erase("left");
  EXPECT_FALSE(changed()) << "nobody's work is in the way";
}

class SideCommandsTest : public testing::Test {
 protected:
  SideCommandsTest() {
    files[1].lineEndKind = LineEndKind::lf;
    run.press("down right right x");
  }

  EditRun run{"a\nb\nc\n", "a\nd\n"};
  EditedFile (&files)[2] = run.view().pair().files;
};

TEST_F(SideCommandsTest, ACopyTakesASidesPlaceOrIsAnEdit) {
  run.press("switch-pane");
  SideCopy copy;
  ASSERT_TRUE(copyOtherSide(run.view(), 0, copy));
  takeCopy(run.view(), run.history(), 0, std::move(copy));
  EXPECT_EQ(files[0].lineEndKind, LineEndKind::lf);
  EXPECT_EQ(run.state() + run.fault(), EditRun("a\nd\n", "a\nd\n").state());

  run.load("a\nb\nc\n", "a\nd\n");
  copyAsEdit(run.view(), run.history(), 0);
  EXPECT_EQ(run.text(0), "a\nd\n");
  EXPECT_TRUE(run.history().isModified(0));
  EXPECT_EQ(files[0].lineEndKind, LineEndKind::crLf);
  EXPECT_EQ(run.undoAndRedoAll(), "");
}

TEST_F(SideCommandsTest, SwitchedSidesAreThoseOfAComparisonThatWayRound) {
  files[1].readOnly = files[1].stamp.exists = true;
  run.press("switch-sides");
  EditRun other("a\nd\n", "a\nb\nc\n");
  other.press("switch-pane down right right x");
  EXPECT_EQ(run.state(), other.state());
  EXPECT_TRUE(files[0].readOnly && !files[1].readOnly);
  EXPECT_EQ(files[0].path + ' ' + files[1].path, "right left");
  EXPECT_TRUE(files[0].lineEndKind == LineEndKind::lf && files[0].stamp.exists);
  EXPECT_EQ(run.undoAndRedoAll(), "");
}

TEST(TextBuffer, BehavesAsAStringOnRandomOperations) {
  Random random(1);
  TextBuffer buffer;
  std::string model;
  for (int step = 0; step < 10000; ++step) {
    const auto size = static_cast<uint32_t>(model.size()), at = random.below(size + 1);
    const uint32_t removed = std::min(size - at, random.below(random.below(20) == 0 ? 10000 : 30));
    const std::string text = random.text("abcdefgh\n", random.below(20) == 0 ? 5000 : 30);
    buffer.erase(at, removed);
    const uint32_t gap = std::max(TextBuffer::kGapQuantum, buffer.size() / TextBuffer::kGapShare);
    ASSERT_LE(buffer.allocated(), buffer.size() + 2 * gap);
    ASSERT_TRUE(buffer.insert(at, text.data(), static_cast<uint32_t>(text.size())));
    model.replace(at, removed, text);
    ASSERT_FALSE(buffer.insert(at, nullptr, 0xFFFFFFFF));  // more than positions can count

    const uint32_t a = random.below(buffer.size() + 1), b = a + random.below(buffer.size() - a + 1);
    const std::string expected = model.substr(a, b - a);
    ByteArray copy;
    ASSERT_TRUE(buffer.extract(a, b, copy));
    ASSERT_EQ(copy.view(), expected);
    ASSERT_EQ(buffer.extractLine(a),
              model.substr(a, std::min<size_t>(model.find('\n', a), size_t{buffer.size()} - 1) + 1 - a));
    ASSERT_TRUE(a == b || (buffer.charAt(a) == model[a] && buffer.charBefore(b) == model[b - 1]));
    if (random.below(2) == 0) {
      ASSERT_EQ(buffer.view(a, b), expected);
    }
    const auto [head, tail] = buffer.stretch(0, buffer.size());
    ASSERT_EQ(std::string(head) + std::string(tail), model);
  }
}

}  // namespace
}  // namespace merivane
