#include "mergeview/merge_commands.h"

#include <gtest/gtest.h>

#include "tests/support/marked_view.h"

namespace merivane {
namespace {

TEST(MergeCommands, CopyAndDeleteRowsAndBlocks) {
  struct Case {
    const char* before;
    const char* keys;
    const char* after;
  };
  const Case cases[] = {
      // Lines that one side lacks, and their blocks.
      {"a # a / |- # x / - # y / b # b", "copy-line-left", "a # a / |x # x / - # y / b # b"},
      {"a # a / |- # x / - # y / b # b", "copy-block-left", "a # a / |x # x / y # y / b # b"},
      {"a # a / - # x / |- # y / b # b", "copy-block-left", "a # a / x # x / |y # y / b # b"},
      {"a # a / - # x / - # |y / b # b", "copy-block-left", "a # a / x # x / y # |y / b # b"},
      {"a # a / - # x / - # [y| / b # b", "copy-line-left", "a # a / - # x / y # [y| / b # b"},
      {"a # a / x| # - / y # - / b # b", "copy-block-right", "a # a / x| # x / y # y / b # b"},
      {"a # a / x| # - / y # - / b # b", "copy-line-right", "a # a / x| # x / y # - / b # b"},
      // Changed lines: a caret behind the shorter line comes back.
      {"abcdefgh| # abcdef / x # x", "copy-line-left", "abcdef| # abcdef / x # x"},
      {"|abcdefgh # abcdef / x # x", "copy-line-left", "|abcdef # abcdef / x # x"},
      {"abc[de| # abcdef / x # x", "copy-block-left", "abcde|f # abcdef / x # x"},
      {"abcd # abce / bcdefgh| # bcde", "copy-block-left", "abce # abce / bcde| # bcde"},
      {"abc[de| # abcdef / x # x", "copy-block-right", "abc[de| # abcde / x # x"},
      // What there is nothing to copy for.
      {"|x # - / a # a", "copy-line-left", "|x # - / a # a"},
      {"- # |x / a # a", "copy-block-right", "- # |x / a # a"},
      {"|a # a", "copy-line-left copy-line-right copy-block-left copy-block-right", "|a # a"},
      // Last lines without a line end.
      {"- # long line / |- # bb~ / c # -", "copy-line-left", "|bb # - / c # - / - # long line / - # bb~"},
      {"a # a / x~ # - / - # |long line", "copy-line-left", "a # a / x # - / long line # |long line"},
      {"abc|d # abce~", "copy-line-left", "ab|ce~ # abce~"},
      {"abc|d~ # abce", "copy-line-left", "abc|e # abce"},
      // Deleting.
      {"a # a / |- # x / b # b", "delete-line delete-block", "a # a / |- # x / b # b"},
      {"a # a / - # x / - # y| / b # b", "delete-line", "a # a / - # x / b # |b"},
      {"a # a / - # x / - # y| / b # b", "delete-block", "a # a / b # |b"},
      {"a # a / b| # b / - # x", "delete-block", "- # a / - # b / |- # x"},
      {"a| # a", "delete-line", "|- # a"},
  };
  for (const Case& c : cases) {
    MarkedView view(c.before);
    EXPECT_EQ(view.press(c.keys).marked(), c.after) << c.before << " : " << c.keys;
    if (std::string_view(c.before) == c.after) {
      EXPECT_FALSE(view.history().canUndo()) << c.before;
      continue;
    }
    EXPECT_EQ(view.press("undo").marked(), c.before) << c.before << " : " << c.keys;
    EXPECT_EQ(view.press("redo").marked(), c.after) << c.before << " : " << c.keys;
  }
}

}  // namespace
}  // namespace merivane
