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
  // A selection over several rows is left out whole.
  expectWalk("ab/ab/ab/cab/ # ab/ab/ab/cab/",
             "down down end S-up S-up S-left S-left find-next (ab/ab/ab/c^ab|/)");
}

TEST(Find, StartsWithASelectionWithinALine) {
  EditRun run("ab cd\nef\n", "");
  run.press("right S-C-right S-right");
  EXPECT_EQ(selectionToFind(run.view()), "b c");
  run.press("S-down");
  EXPECT_EQ(selectionToFind(run.view()), std::nullopt);
  run.load(std::string(kMaxFindText + 1, 'x'), "");
  run.press("S-end");
  EXPECT_EQ(selectionToFind(run.view()), std::nullopt) << "too long";
}

TEST(Find, MatchesInAStretch) {
  using Places = std::vector<std::optional<uint32_t>>;
  bool utf8 = false;
  const auto found = [&utf8](std::string_view text, const FindQuery& query) {
    const RowCharacters stretch(text, utf8);
    Places places;
    for (const auto& match : {Finder(query, utf8).first(stretch), Finder(query, utf8).last(stretch)}) {
      places.push_back(match ? std::optional(match->begin) : std::nullopt);
    }
    return places;
  };
  const Places none(2);
  EXPECT_EQ(found("abcAbC\n", {"aBc"}), Places({0, 3}));
  EXPECT_EQ(found("\xC4\xE4", {"\xC3\xA4"}), Places({1, 1})) << "only A to Z have another case";
  EXPECT_EQ(found("abc", {""}), none);
  EXPECT_EQ(found("ABCabc", {"abc", true}), Places({3, 3}));
  for (const char* part : {"ab_c", "ab1", "xab"}) EXPECT_EQ(found(part, {"ab", true, true}), none) << part;
  EXPECT_EQ(found("ab-cab ab", {"ab", true, true}), Places({0, 7}));
  EXPECT_EQ(found("ab\xE4 ab abc\n", {"ab", true, true}), Places({0, 4}));

  utf8 = true;
  constexpr const char both[] = "x\xD0\x96\xD0\xB6x", lower[] = "\xD0\xB6";
  EXPECT_EQ(found(both, {lower}), Places({1, 3}));
  EXPECT_EQ(found(both, {lower, false, true}), none) << "letters beside it";
  EXPECT_EQ(found("k\xE2\x84\xAA", {"K"}), Places({0, 1})) << "a match of another length";
  EXPECT_EQ(found("e\xCC\x81 e", {"e"}), Places({4, 4})) << "no part of a character";
}

}  // namespace
}  // namespace merivane
