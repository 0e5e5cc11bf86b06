#include "mergeview/editor.h"

#include <gtest/gtest.h>

#include "tests/support/marked_view.h"

namespace merivane {
namespace {

std::string pressed(std::string_view marked, std::string_view keys) {
  return MarkedView(marked).press(keys).marked();
}

TEST(Editor, EditsAtTheCaret) {
  struct Case {
    const char* before;
    const char* keys;
    const char* after;
  };
  const Case cases[] = {
      // Typing, and what the rows become by it.
      {"a|b # ab", "x", "ax|b # ab"},
      {"|~ # ~", "x y", "xy|~ # -"},
      {"|b # ab", "a", "a|b # ab"},
      {"foo bar| # foo bar / - # new", "enter n e w", "foo bar # foo bar / new| # new"},
      {"x # x / |- # new / y # y", "n e w enter", "x # x / new # new / |y # y"},
      {"a[b| # ab", "x", "ax| # - / - # ab"},
      {"a[b # ab / c|d # cd", "enter", "a # - / |d # - / - # ab / - # cd"},
      {"a|b # ab", "C-x", "a|b # ab"},
      // Text behind an unended last line, typed at fillers that follow it.
      {"a| # a / b~ # - / - # long line", "down down c", "a # a / bc|~ # - / - # long line"},
      // Overwriting stops at the end of the line.
      {"|ab # ab", "insert x y z", "xyz| # - / - # ab"},
      {"a|b~ # ab~", "insert x y", "axy|~ # - / - # ab~"},
      {"a[b| # ab", "insert x", "ax| # - / - # ab"},
      {"|ab # ab", "insert x insert y", "xy|b # ab"},
      // Deleting characters.
      {"abc| # abc", "backspace", "ab| # abc"},
      {"|ab # ab", "backspace", "|ab # ab"},
      {"a # a / |b # b", "backspace", "- # a / - # b / a|b # -"},
      {"a[bc|d # abcd", "backspace", "a|d # abcd"},
      {"ab|c # abc", "delete", "ab| # abc"},
      {"a| # a / b # b", "delete", "- # a / - # b / a|b # -"},
      {"a # a / b~ # - / |- # long line", "delete", "a # a / b~ # - / |- # long line"},
      {"a # a / b~ # - / |- # long line", "backspace", "a # a / |- # long line"},
      {"ab|~ # ab~", "delete", "ab|~ # ab~"},
      {"|a[b~ # ab~", "delete", "|b~ # ab~"},
      // Beside a filler they only move the caret.
      {"a # a / - # new / |b # b", "backspace", "a # a / |- # new / b # b"},
      {"a # a / |- # new / b # b", "delete", "a # a / - # new / |b # b"},
      {"a # a / - # new / b| # b", "backspace", "a # a / - # new / - # b / | # -"},
      // Rows and their ends.
      {"a # a / b|c # bc / d # d", "delete-row", "a # a / - # bc / |d # d"},
      {"a # a / [b|c # bc", "delete-row", "a # a / |- # bc"},
      {"a # a / |- # bc", "delete-row", "a # a / |- # bc"},
      {"ab|c # abc / c # c", "delete-to-end", "ab| # abc / c # c"},
      {"ab| # ab / c # c", "delete-to-end", "ab| # ab / c # c"},
      {"|ab~ # ab~", "delete-to-end", "|- # ab~"},
      {"|- # ab~", "delete-row", "|- # ab~"},
      // Clipboard.
      {"a[b # ab / c|d # cd", "copy end enter paste", "ab # ab / cd # cd / b # - / c| # -"},
      {"a[bc|d # abcd", "cut end paste", "adbc| # - / - # abcd"},
      {"a|b # ab", "paste", "a|b # ab"},
      // Undo and redo, with the caret where the edit was.
      {"a[b|c # abc", "x left left undo", "a[b|c # abc"},
      {"a[b|c # abc", "x home undo redo", "ax|c # abc"},
      {"ab|c # abc", "backspace delete undo undo", "ab|c # abc"},
      {"ab|c # abc", "backspace delete undo undo redo redo", "a| # - / - # abc"},
      {"|ab # ab", "insert x y undo", "x|b # ab"},
      {"a # a / b|c # bc / d # d", "delete-row end undo", "a # a / b|c # bc / d # d"},
      {"a|b # ab", "x undo y undo redo redo", "ay|b # ab"},
  };
  for (const Case& c : cases) EXPECT_EQ(pressed(c.before, c.keys), c.after) << c.before << " : " << c.keys;
}

TEST(Editor, RepaintsNoMoreThanWhatLooksDifferent) {
  struct Case {
    const char* before;
    const char* keys;
    const char* repainted;  // rows and panes, or all
  };
  const Case cases[] = {
      {"|ab # - / x # x", "z", "0 left"},
      {"x # x / - # a|b", "z", "1 right"},
      {"|abcd # abce", "z", "0 both"},
      {"|abcdef # abcdeg / x # x", "delete", "0 both"},
      {"ab[cd # - / ef|gh # - / x # x", "delete", "all"},
      {"|ab # ab / x # x", "z", "all"},
      {"|ab # - / x # x", "enter", "all"},
      {"|ab # - / x # x", "insert z", "0 left"},
  };
  for (const Case& c : cases) {
    MarkedView view(c.before);
    view.press(c.keys);
    const FakeHost& host = view.host();
    std::string repainted;
    if (host.refreshed > 0) repainted = "all";
    for (const auto& [rows, panes] : host.invalidated) {
      constexpr const char* names[] = {" left", " right", " both"};
      if (host.refreshed == 0) repainted += std::to_string(rows.begin) + names[static_cast<int>(panes)];
    }
    EXPECT_EQ(repainted, c.repainted) << c.before << " : " << c.keys;
  }
}

TEST(Editor, LeavesAReadOnlySideAloneAndBeepsAtWhatCannotBeTyped) {
  MarkedView view("a[b|c # abc");
  view.state().documents().readOnly[0] = true;
  view.press("x enter backspace delete cut delete-row delete-to-end paste insert x");
  EXPECT_EQ(view.marked(), "a[b|c # abc");
  EXPECT_FALSE(view.history().canUndo());
  EXPECT_FALSE(view.host().clipboard.has_value());
  EXPECT_EQ(view.host().beeps, 0);
  Editor editor(view.state(), view.history());
  editor.characterInput('\n', 2, false);
  editor.characterInput('\x1B', 1, false);
  EXPECT_EQ(view.host().beeps, 3);
  view.state().documents().readOnly[0] = false;
  editor.characterInput('\x1B', 1, true);
  editor.characterInput('x', 0, false);
  editor.characterInput('\t', 3, false);
  EXPECT_EQ(view.host().beeps, 3);
  EXPECT_EQ(view.marked(), "a\t\t\t| # - / - # abc")
      << "overwriting does not replace a line's end or a selection";
}

TEST(Editor, ConvertsLineEndsForTheClipboard) {
  MarkedView view("|ab # ab / cd~ # cd~");
  view.host().clipboard = "x\r\ny\rz\r\n";
  view.press("paste");
  EXPECT_EQ(textOf(view.state(), 0), "x\ny\rz\nab\ncd");
  view.press("C-home S-down S-down copy");
  EXPECT_EQ(view.host().clipboard, "x\r\ny\rz\r\n");
  view.host().clipboard = "";
  view.press("undo paste");
  EXPECT_TRUE(view.history().canRedo()) << "pasting nothing is no edit";
  view.press("S-right paste");
  EXPECT_EQ(view.marked(), "|b # ab / cd~ # cd~");
}

}  // namespace
}  // namespace merivane
