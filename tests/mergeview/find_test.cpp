// Finding a text.

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "mergeview/find.h"
#include "tests/mergeview/walk.h"

namespace merivane {
namespace {

TEST(Find, GoesOnAfterTheSelectionAndOnceAround) {
  expectWalk(
      "ab ab/ab # ab ab/x/ab",
      "find-next (^ab| ab/~ab) find-next (ab ^ab|/~ab) find-next (ab ab/~^ab|) find-next (^ab| ab/~ab) "
      "find-previous (ab ab/~^ab|) find-previous (ab ^ab|/~ab) C-home down find-previous (ab ^ab|/~ab)");
  // The row where it began is searched again, from its start; the other side is not.
  expectWalk("x ab/ # x ab/", "end find-next (x ^ab|/) left left find-previous (x ^ab|/)");
  expectWalk("cd/ # cd/ab/", "find-next find-previous (|cd/~)");
  // A selection over several rows is left out whole.
  expectWalk("ab/ab/ab/cab/ # ab/ab/ab/cab/",
             "down down end S-up S-up S-left S-left find-next (ab/ab/ab/c^ab|/)");
  expectWalk("ab/ab/ab/ # ab/ab/ab/", "down right S-down S-right find-previous (^ab|/ab/ab/)");
}

TEST(Find, StartsWithASelectionWithinALine) {
  EditRun run("ab cd\nef\n", "");
  EXPECT_EQ(selectionToFind(run.view()), std::nullopt);
  run.press("right S-C-right S-right");
  EXPECT_EQ(selectionToFind(run.view()), "b c");
  run.press("S-down");
  EXPECT_EQ(selectionToFind(run.view()), std::nullopt);
  run.load(std::string(kMaxFindText + 1, 'x'), "");
  run.press("S-end");
  EXPECT_EQ(selectionToFind(run.view()), std::nullopt) << "too long";
  run.press("S-left");
  EXPECT_EQ(selectionToFind(run.view()).value_or(""), std::string(kMaxFindText, 'x'));
}

TEST(Find, MatchesInAStretch) {
  using Places = std::vector<std::optional<uint32_t>>;
  const auto found = [](std::string_view stretch, const FindQuery& query) {
    return Places{findFirst(stretch, query), findLast(stretch, query)};
  };
  const Places none(2);
  EXPECT_EQ(found("abcAbC\n", {"aBc"}), Places({0, 3}));
  EXPECT_EQ(found("\xC4\xE4", {"\xE4"}), Places({1, 1})) << "only A to Z have another case";
  EXPECT_EQ(found("ab", {"abc"}), none);
  EXPECT_EQ(found("abc", {""}), none);
  EXPECT_EQ(found("ABCabc", {"abc", true}), Places({3, 3}));
  EXPECT_EQ(found("aaaa", {"aa", true}), Places({0, 2}));
  for (const char* part : {"ab_c", "ab1", "xab"}) EXPECT_EQ(found(part, {"ab", true, true}), none) << part;
  EXPECT_EQ(found("ab-cab ab", {"ab", true, true}), Places({0, 7}));
  EXPECT_EQ(found("ab\xE4 ab abc\n", {"ab", true, true}), Places({0, 4}));
}

}  // namespace
}  // namespace merivane
