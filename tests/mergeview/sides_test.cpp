// Whole sides: writing one to its file, replacing one by the other, exchanging them.

#include <gtest/gtest.h>

#include "mergeview/document_file.h"
#include "mergeview/side_commands.h"
#include "tests/support/edit_run.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/memory_files.h"

namespace merivane {
namespace {

class DocumentFileTest : public testing::Test {
 protected:
  void load(const std::string& contents) {
    files.files["left"].contents = contents;
    FileComparison comparison;
    ASSERT_TRUE(compareFiles(files, {"left", "left"}, {}, nullptr, comparison).succeeded());
    run.view().take(std::move(comparison), AfterComparison::top);
  }
  const std::string& saved() {
    EXPECT_EQ(saveDocument(files, "left", documents, 0), 0u);
    return files.files["left"].contents;
  }

  MemoryFiles files;
  EditRun run{"", ""};
  Documents& documents = run.view().documents();
};

TEST_F(DocumentFileTest, WhatWasNotEditedComesBackByteForByte) {
  std::string allBytes(2000, ' ');
  for (int byte = 0; byte < 256; ++byte) allBytes += byte == '\r' ? ' ' : static_cast<char>(byte);
  const std::string texts[] = {"a\nb\n", "a\r\nb\r\n",      "a\rb\r",           "a\nb",
                               "",       "a\nb\nc\rd\r\ne", "a\r\nb\rc\r\nd\r", allBytes + "\n"};
  for (const std::string& text : texts) {
    load(text);
    EXPECT_EQ(saved(), text);
    run.press("x");
    EXPECT_EQ(saved(), "x" + text);
  }
  // Line ends of other kinds are lost where the file's own kind cannot tell them apart.
  load("a\r\nb\r\nc\nd");
  EXPECT_EQ(saved(), "a\r\nb\r\nc\r\nd");
}

TEST_F(DocumentFileTest, AFailedSaveLeavesTheFileWholeAndASideKnowsItsFileAgain) {
  load("a\r\nb\r\n");
  run.press("x");
  MemoryFiles::File& file = files.files["left"];
  file.modified = 7;
  documents.readOnly[0] = true;
  const auto changed = [&] { return changedOnDisk(files, "left", documents.stamp[0]); };
  bool failed = true;
  for (uint32_t failing = 0; failed; ++failing) {
    FailingFiles broken(files, failing, 77);
    EXPECT_TRUE(changed() && documents.readOnly[0]);
    EXPECT_EQ(file.contents, "a\r\nb\r\n");
    const SystemError error = saveDocument(broken, "left", documents, 0);
    failed = broken.hasFailed();
    EXPECT_EQ(error, failed ? 77u : 0u);
  }
  EXPECT_EQ(file.contents, "xa\r\nb\r\n");
  EXPECT_FALSE(changed() || documents.readOnly[0]);
  failEachAllocation([&] { file.contents = "as it was"; },
                     [&] { return saveDocument(files, "left", documents, 0); },
                     [&](SystemError error) {
                       EXPECT_EQ(error, notEnoughStorage());
                       EXPECT_EQ(file.contents, "as it was");
                     });
  file.contents += "longer";
  EXPECT_TRUE(changed());
  files.files.erase("left");
  EXPECT_FALSE(changed()) << "nobody's work is in the way";
}

class SideCommandsTest : public testing::Test, protected ReplaceOwner {
 protected:
  SideCommandsTest() {
    documents.lineEndKind[1] = LineEndKind::lf;
    run.press("down right right x");
  }
  bool mayReplace() override { return ++asked, agrees; }
  bool saveText(int side, const TextBuffer& text, LineEndKind kind) override {
    EXPECT_TRUE(side == 0 && kind == LineEndKind::lf);
    written = text.size();
    return writes;
  }
  void onSideSaved(int) override { ++saved; }

  EditRun run{"a\nb\nc\n", "a\nd\n"};
  Documents& documents = run.view().documents();
  bool agrees = true, writes = true;
  int asked = 0, saved = 0;
  uint32_t written = 0;
};

TEST_F(SideCommandsTest, ReplacesASideAndItsFile) {
  const std::string before = run.state();
  agrees = false;
  replaceSide(run.view(), run.history(), 0, *this);
  agrees = documents.readOnly[0] = true;
  replaceSide(run.view(), run.history(), 0, *this);
  EXPECT_EQ(run.state(), before);
  EXPECT_EQ(asked, 1) << "a side that may not be written is not asked for";
  documents.readOnly[0] = false;

  run.press("switch-pane");
  replaceSide(run.view(), run.history(), 0, *this);
  EXPECT_EQ(written, 4u);
  EXPECT_EQ(saved, 1);
  EXPECT_EQ(documents.lineEndKind[0], LineEndKind::lf);
  EXPECT_EQ(run.state(), EditRun("a\nd\n", "a\nd\n").state());
  EXPECT_EQ(run.fault(), "");
}

TEST_F(SideCommandsTest, ACopyThatCannotBeWrittenIsAnEdit) {
  writes = false;
  replaceSide(run.view(), run.history(), 0, *this);
  EXPECT_EQ(run.text(0), "a\nd\n");
  EXPECT_TRUE(run.history().isModified(0));
  EXPECT_EQ(documents.lineEndKind[0], LineEndKind::crLf);
  EXPECT_EQ(saved, 0);
  EXPECT_EQ(run.undoAndRedoAll(), "");
}

TEST_F(SideCommandsTest, SwitchedSidesAreThoseOfAComparisonThatWayRound) {
  documents.readOnly[1] = true;
  run.press("switch-sides");
  EditRun other("a\nd\n", "a\nb\nc\n");
  other.press("switch-pane down right right x");
  EXPECT_EQ(run.state(), other.state());
  EXPECT_TRUE(documents.readOnly[0] && !documents.readOnly[1]);
  EXPECT_EQ(documents.lineEndKind[0], LineEndKind::lf);
  EXPECT_EQ(run.undoAndRedoAll(), "");
}

TEST_F(SideCommandsTest, WithoutMemoryNothingIsWrittenOrChanged) {
  const std::string before = run.state();
  for (int failing = 0; saved == 0; ++failing) {
    EXPECT_EQ(run.host().outOfMemory, failing);
    EXPECT_EQ(written, 0u);
    EXPECT_EQ(run.state(), before);
    const AllocationFailure failure(static_cast<uint32_t>(failing), AllocationFailure::once);
    replaceSide(run.view(), run.history(), 0, *this);
  }
}

}  // namespace
}  // namespace merivane
