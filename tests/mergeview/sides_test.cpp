// Whole sides: the buffer that holds a text, its file, replacing and exchanging.

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

TEST(TextBuffer, BehavesAsAStringOnRandomOperations) {
  Random random(1);
  TextBuffer buffer;
  std::string model;
  for (int step = 0; step < 10000; ++step) {
    const auto size = static_cast<uint32_t>(model.size()), at = random.below(size + 1);
    const uint32_t removed = std::min(size - at, random.below(random.below(20) == 0 ? 10000 : 30));
    const std::string text = random.text("abcdefgh\n", random.below(20) == 0 ? 5000 : 30);
    buffer.replace(at, removed, {});
    ASSERT_TRUE(buffer.reserve(static_cast<uint32_t>(text.size())));
    buffer.replace(at, 0, text);
    model.replace(at, removed, text);
    ASSERT_FALSE(buffer.reserve(0xFFFFFFFF)) << "more than positions can count";

    const uint32_t a = random.below(buffer.size() + 1), b = a + random.below(buffer.size() - a + 1);
    const std::string expected = model.substr(a, b - a);
    ByteArray copy;
    ASSERT_TRUE(buffer.extract(a, b, copy));
    ASSERT_EQ(copy.view(), expected);
    if (a < b) {
      ASSERT_EQ(buffer.charAt(a), model[a]);
      ASSERT_EQ(buffer.charBefore(b), model[b - 1]);
    }
    if (random.below(2) == 0) {
      ASSERT_EQ(buffer.view(a, b), expected);
    }
    const auto [head, tail] = buffer.stretch(0, buffer.size());
    ASSERT_EQ(std::string(head) + std::string(tail), model);
  }
}

class EditedFileTest : public testing::Test {
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

TEST_F(EditedFileTest, WhatWasNotEditedComesBackByteForByte) {
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

TEST_F(EditedFileTest, ComesBackInItsEncodingAndTakesWhatIsInserted) {
  using enum TextEncoding;
  const struct {
    TextEncoding encoding;
    std::string_view contents, inserted, saved;
    TextEncoding then;
  } cases[] = {
      {ascii, "x\r\nb", "\xC3\xA9", "\xC3\xA9x\r\nb", utf8},
      {singleByte, "plenty of cafes: caf\xE9", "\xC3\xA9", "\xC3\xA9plenty of cafes: caf\xE9", singleByte},
      {utf8Marked, "\xEF\xBB\xBF\xEF\xBB\xBF\xFFtwice", "x", "\xEF\xBB\xBFx\xEF\xBB\xBF\xFFtwice",
       utf8Marked},
      {utf16Le,
       {"\xFF\xFE\x3D\xD8\0\xDE\r\0\n\0", 10},
       "\xD0\x96\xE9",
       {"\xFF\xFE\x16\x04\xE9\0\x3D\xD8\0\xDE\r\0\n\0", 14},
       utf16Le},
      {utf16Be,
       {"\xFE\xFF\0a\xFE\xFF", 6},
       "\xED\xA0\x80",
       {"\xFE\xFF\0\xED\0\xA0\x20\xAC\0a\xFE\xFF", 12},
       utf16Be},
  };
  for (const auto& c : cases) {
    load(std::string(c.contents));
    EXPECT_EQ(edited.encoding, c.encoding);
    EXPECT_EQ(save(files), 0u);
    EXPECT_EQ(file.contents, c.contents);
    Edit edit;
    edit.from = {0, run.view().rowCount()};
    ASSERT_TRUE(edit.inserted.assign(c.inserted) && performEdit(run.view(), run.history(), std::move(edit)));
    EXPECT_EQ(save(files), 0u);
    EXPECT_EQ(file.contents, c.saved);
    EXPECT_EQ(edited.encoding, c.then);
  }
}

TEST_F(EditedFileTest, AFailedSaveLeavesTheFileWholeAndASideKnowsItsFileAgain) {
  load("a\r\nb\r\n");
  run.press("x");
  file.modified = 7;
  edited.readOnly = true;
  edited.path = "earlier";
  const auto changed = [&] { return changedOnDisk(files, "left", edited.stamp); };
  bool failed = true;
  for (uint32_t failing = 0; failed; ++failing) {
    EXPECT_TRUE(changed());
    EXPECT_TRUE(edited.readOnly);
    EXPECT_EQ(file.contents, "a\r\nb\r\n");
    EXPECT_EQ(edited.path, "earlier");
    files.failStep(failing, 77);
    const SystemError error = save(files);
    failed = files.endFailing();
    EXPECT_EQ(error, failed ? 77u : 0u);
  }
  EXPECT_EQ(file.contents, "xa\r\nb\r\n");
  EXPECT_FALSE(changed());
  EXPECT_FALSE(edited.readOnly);
  EXPECT_EQ(edited.path, "left");
  failEachAllocation([&] { file.contents = "as it was"; }, [&] { return save(files); },
                     [&](SystemError error) {
                       EXPECT_EQ(error, notEnoughStorage());
                       EXPECT_EQ(file.contents, "as it was");
                     });
  files.files.erase("left");
  EXPECT_FALSE(changed()) << "nobody's work is in the way";
}

TEST(SideCommands, SwitchedSidesAreThoseOfAComparisonThatWayRound) {
  EditRun run("a\nb\nc\n", "a\nd\n"), other("a\nd\n", "a\nb\nc\n");
  EditedFile& right = run.view().file(1);
  right.lineEndKind = LineEndKind::lf;
  right.readOnly = right.stamp.exists = true;
  run.press("down right right x switch-sides");
  other.press("switch-pane down right right x");
  EXPECT_EQ(run.state(), other.state());
  const EditedFile& left = run.view().file(0);
  EXPECT_EQ(left.path, "right");
  EXPECT_EQ(left.lineEndKind, LineEndKind::lf);
  EXPECT_TRUE(left.readOnly);
  EXPECT_TRUE(left.stamp.exists);
  EXPECT_EQ(run.undoAndRedoAll(), "");
}

}  // namespace
}  // namespace merivane
