// What a screen reader is told of the panes.

#include "mergeview/spoken_text.h"

#include <gtest/gtest.h>

#include "base/utf16.h"
#include "tests/support/edit_run.h"

namespace merivane {
namespace {

std::string utf8Text(const std::u16string& units) { return utf8FromUtf16(std::u16string_view(units)); }

TEST(SpokenText, RowsAreLinesAndFillersSaySo) {
  const std::string first("one\ntwo\tt\0\x01\r\n", 13);
  EditRun run(first + "end", first + "more\nend");
  // Line by line they are the same text, and every offset leads to its line.
  const SpokenText spoken(run.view());
  const std::string all = utf8Text(spoken.text());
  EXPECT_EQ(all, "one\r\ntwo\tt^^^\r\nno line on this side\r\nend");
  EXPECT_EQ(spoken.size(), all.size());
  ASSERT_EQ(spoken.lineCount(), 4u);
  uint32_t line = 0;
  for (uint32_t offset = 0; offset <= all.size(); ++offset) {
    if (line < 3 && offset == spoken.lineStart(line + 1)) ++line;
    EXPECT_EQ(spoken.lineAt(offset), line) << offset;
    EXPECT_EQ(spoken.placeOf(offset).row, line) << offset;
  }
  EXPECT_EQ(line, 3u);
  for (line = 0; line < 4; ++line) {
    const uint32_t start = spoken.lineStart(line);
    EXPECT_EQ(all.substr(start, spoken.lineEnd(line) - start), utf8Text(spoken.lineText(line)));
  }
}

TEST(SpokenText, TheCaretIsWhereItShows) {
  EditRun run("one\ntwo\nend\n", "one\ntwo\nend\nlast\n");
  const auto heard = [&] {
    const SpokenText spoken(run.view());
    const std::u16string text = spoken.text();
    return utf8Text(text.substr(0, spoken.selectionBegin()) + u"[" +
                    text.substr(spoken.selectionBegin(), spoken.selectionEnd() - spoken.selectionBegin()) +
                    u"]" + text.substr(spoken.selectionEnd()));
  };
  run.press("down right S-down");
  EXPECT_EQ(heard(), "one\r\nt[wo\r\ne]nd\r\nno line on this side");
  run.press("C-end");
  EXPECT_EQ(heard(), "one\r\ntwo\r\nend\r\n[]no line on this side");

  const std::string units = std::string("\xF0\x9F\x98\x80") + "e\xCC\x81x\xFFy\n";
  EditRun wide(units, units);
  wide.view().file(0).encoding = TextEncoding::utf8;
  wide.press("right S-right S-right");
  const SpokenText characters(wide.view());
  EXPECT_EQ(characters.selectionBegin(), 2u) << "a character of two units";
  EXPECT_EQ(characters.selectionEnd(), 5u) << "one with a mark";
  EXPECT_EQ(characters.placeOf(3).position, 4u) << "the start of the character";

  // The reader moves it, too, and finds it again wherever there is text.
  const std::u16string all = SpokenText(run.view()).text();
  for (uint32_t a = 0; a <= all.size(); ++a) {
    for (const uint32_t b : {a, 7u}) {
      selectSpoken(run.view(), a, b);
      EXPECT_EQ(run.fault(), "");
      if (all[a] == '\n' || a > 15) continue;  // between CR and LF, or in the filler
      EXPECT_EQ(SpokenText(run.view()).selectionBegin(), std::min(a, b));
      EXPECT_EQ(SpokenText(run.view()).selectionEnd(), std::max(a, b));
    }
  }
}

TEST(SpokenText, NoMoreIsToldThanAReaderNeeds) {
  std::string text;
  for (int row = 0; row < 5000; ++row) text += std::to_string(row) + "\n";
  EditRun run(text, text);
  for (uint32_t row = 0; row + 1 < run.view().rowCount(); ++row) {
    const SpokenText before(run.view());
    const uint32_t offset = before.caret();
    EXPECT_LE(before.lineCount(), 768u);
    EXPECT_EQ(utf8Text(before.lineText(before.lineAt(offset))), std::to_string(row));
    run.view().moveCaret(row + 1, run.view().rowStart(0, row + 1), false);
    const SpokenText after(run.view());
    EXPECT_NE(after.caret(), offset) << "a reader sees no step from row " << row;
  }

  // A long line is told around the caret.
  std::string line;
  for (int i = 0; i < 50000; ++i) line += std::to_string(i) + " ";
  EditRun wide(line + "\nx", line + "\nx");
  for (const uint32_t at : {0u, 1023u, 1024u, 100000u}) {
    wide.view().moveCaret(0, at, false);
    const SpokenText spoken(wide.view());
    EXPECT_LE(spoken.size(), 3 * 1024u + 3);
    EXPECT_EQ(utf8Text(spoken.text().substr(spoken.caret(), 1024)), line.substr(at, 1024));
  }
}

}  // namespace
}  // namespace merivane
