#include "mergeview/view_state.h"

#include <gtest/gtest.h>

#include "tests/support/marked_view.h"

namespace merivane {
namespace {

TEST(ViewState, TakingOverAComparisonKeepsThePlaceOrGoesToTheFirstDifference) {
  std::string text;
  for (int row = 0; row < 50; ++row) text += "line\n";
  MarkedView marked("|a # a");
  ViewState& view = marked.state();
  view.take(comparisonOf(text, text), AfterComparison::top);
  view.activate(1);
  view.moveCaret(30, view.rowStart(1, 30) + 1, false);
  view.moveCaret(32, view.rowStart(1, 32) + 3, true);
  view.scrollTo(27);

  view.take(comparisonOf(text, text + "more\n"), AfterComparison::keepPlace);
  EXPECT_EQ(view.topRow(), 27u);
  EXPECT_EQ(view.activeSide(), 1);
  EXPECT_EQ(view.selectionBegin(), 30u * 5 + 1);
  EXPECT_EQ(view.selectionEnd(), 32u * 5 + 3);
  EXPECT_EQ(view.caretColumn(), 3u);

  view.take(comparisonOf("ab\nc", "ab\nc"), AfterComparison::keepPlace);
  EXPECT_EQ(marked.marked(), "ab # ab / c~ # c|~");
  EXPECT_EQ(view.topRow(), 0u);

  view.take(comparisonOf(text, text + "more\n"), AfterComparison::firstDifference);
  EXPECT_EQ(view.caretRow(), 50u);
  EXPECT_EQ(view.topRow(), 41u);
  EXPECT_EQ(view.caretPos(1), 250u);
  EXPECT_FALSE(view.hasSelection());

  view.take(comparisonOf(text, text), AfterComparison::firstDifference);
  EXPECT_EQ(view.caretRow(), 0u);
  EXPECT_EQ(view.topRow(), 0u);
}

TEST(ViewState, RepaintsWhatTheSelectionAndTheCaretLeft) {
  MarkedView marked("a # a / |b # b / c # c / d # d / e # e");
  ViewState& view = marked.state();
  FakeHost& host = marked.host();
  const auto repainted = [&](std::string_view keys) {
    host.invalidated.clear();
    marked.press(keys);
    std::string rows;
    for (uint32_t row = 0; row < 5; ++row) {
      if (host.wasInvalidated(row, Panes::left)) rows += static_cast<char>('a' + row);
    }
    return rows;
  };
  EXPECT_EQ(repainted("right"), "");
  EXPECT_EQ(repainted("S-left"), "b");
  EXPECT_EQ(repainted("S-down"), "bc");
  EXPECT_EQ(repainted("S-down S-down"), "cde");
  EXPECT_EQ(repainted("S-up"), "de");
  EXPECT_EQ(repainted("left"), "bcd");
  host.invalidated.clear();
  view.activate(1);
  EXPECT_TRUE(host.wasInvalidated(view.caretRow(), Panes::both));
  EXPECT_GT(host.caretMoves, 0);
}

TEST(ViewState, TheCaretKeepsItsTextWhenWidthsChange) {
  MarkedView marked("\ta|b # \tab / - # x");
  ViewState& view = marked.state();
  EXPECT_EQ(view.caretColumn(), 5u);
  ViewOptions options = view.options();
  options.tabStop = 8;
  options.lineNumbers = LineNumbers::rows;
  view.setOptions(options);
  EXPECT_EQ(view.caretColumn(), 9u);
  EXPECT_EQ(view.caretX(), 72);
  EXPECT_EQ(view.pane(0).textLeft, 8 + 12);  // one digit and its padding
  FontMetrics font;
  font.charWidth = 10;
  font.lineHeight = 20;
  view.setFont(font);
  EXPECT_EQ(view.caretX(), 90);
  EXPECT_EQ(view.visibleRows(), 8u);
  EXPECT_EQ(marked.marked(), "\ta|b # \tab / - # x");
  view.setSplitFromX(150);
  EXPECT_EQ(view.pane(0).paneRight, 140);
  EXPECT_EQ(view.visibleColumns(0), 12u);
}

TEST(ViewState, AnUnendedLastLineIsFoundBeforeTheFillersBehindIt) {
  MarkedView marked("|ab # ab / xx # - / cd~ # - / - # yyyyyy");
  ViewState& view = marked.state();
  EXPECT_EQ(view.rowOf(0, 2), 0u);
  EXPECT_EQ(view.rowOf(0, 3), 1u);
  EXPECT_EQ(view.rowOf(0, 8), 2u);
  view.placeCaret(8);
  EXPECT_EQ(marked.marked(), "ab # ab / xx # - / cd|~ # - / - # yyyyyy");
}

}  // namespace
}  // namespace merivane
