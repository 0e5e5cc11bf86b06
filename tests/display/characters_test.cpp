#include "display/characters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/utf16.h"
#include "display/code_points.h"
#include "tests/support/character_walk.h"
#include "tests/support/random.h"

namespace merivane {
namespace {

std::string utf8Of(char32_t codePoint) {
  std::u16string units;
  if (codePoint >= 0x10000) units += static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
  units += static_cast<char16_t>(codePoint < 0x10000 ? codePoint : 0xDC00 + (codePoint & 0x3FF));
  return utf8FromUtf16(std::u16string_view(units));
}

TEST(Characters, EveryCodePointIsOneAndKeepsItsNeighboursApart) {
  for (char32_t point = 0; point <= 0x10FFFF; ++point) {
    const std::string bytes = utf8Of(point);
    const bool surrogate = point >= 0xD800 && point < 0xE000;
    const CodePoint found = codePointAt(std::string_view(bytes), 0);
    ASSERT_EQ(found.value, surrogate ? kNoCodePoint : point);
    ASSERT_EQ(found.length, surrogate ? 1 : bytes.size());
    const std::string row = "a" + bytes + "b";
    ASSERT_EQ(characterFault(row, 2, true), "") << std::hex << static_cast<uint32_t>(point);
    const bool joins = propertiesOf(point).columns() == 0;
    ASSERT_EQ(RowCharacters(std::string_view(row), true).isBoundary(1), !joins);
    ASSERT_EQ(foldedCase(foldedCase(point)), foldedCase(point));
  }
}

TEST(Characters, AnyBytesAreWalkedThroughBothWays) {
  Random random(61);
  // Pieces of sequences, marks, wide and control characters, so that all meet all.
  constexpr std::string_view pieces[] = {
      "a",        "\xC3",     "\xA9",         "\xCC\x81", "\xE2\x80\x8D", "\xE4\xBD\xA0",
      "\xF0\x9F", "\x98\x80", "\xED\xA0\x80", "\t",       "\n",           "\xC2\x85"};
  for (int round = 0; round < 20000; ++round) {
    std::string row;
    for (uint32_t count = random.below(12); count > 0; --count) {
      const char any = static_cast<char>(random.below(256));
      row += random.below(3) == 0 ? std::string_view(&any, 1) : pieces[random.below(std::size(pieces))];
    }
    const uint32_t split = random.below(static_cast<uint32_t>(row.size()) + 1);
    for (const bool utf8 : {false, true})
      ASSERT_EQ(characterFault(row, split, utf8), "") << testing::PrintToString(row);
  }
}

TEST(Characters, WhatIsOneAndHowWide) {
  const std::tuple<std::string_view, const char*, const char*> cases[] = {
      {"caf\xC3\xA9", "1112", "1111"},                               // composed
      {"e\xCC\x81\xCC\xA7x", "51", "11"},                            // and with two marks
      {"\xCC\x81x", "21", "11"},                                     // a mark with nothing before it
      {"\t\xCC\x81", "12", "11"},                                    // nor in a control character
      {"\xFF\xCC\x81", "12", "11"},                                  // nor in an ill-formed byte
      {"\xE4\xBD\xA0\xEF\xBC\xA1", "33", "22"},                      // an ideograph and a full-width letter
      {"\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x9A\x80", "74", "22"},  // joined emoji
      {"\xE1\x84\x92\xE1\x85\xA1\xE1\x86\xAB", "9", "2"},            // a syllable from its letters
      {"\xC2\xAD\xD8\x80", "22", "11"},                              // format characters that show
      {"\xE4\xBD", "11", "11"},                                      // cut
  };
  for (const auto& [row, lengths, columns] : cases) {
    const RowCharacters characters(row, true);
    std::string found[2];
    for (uint32_t at = 0; at < characters.size(); at = characters.next(at)) {
      found[0] += std::to_string(characters.at(at).length);
      found[1] += std::to_string(characters.at(at).columns);
    }
    EXPECT_THAT(found, testing::ElementsAre(lengths, columns)) << testing::PrintToString(row);
  }
}

TEST(Characters, FoldsTheCaseOfAllAlphabets) {
  constexpr char32_t pairs[][2] = {{'A', 'a'},         {0xC9, 0xE9},     {0x416, 0x436}, {0x3A3, 0x3C3},
                                   {0x3C2, 0x3C3},     {0x141, 0x142},   {0x1E9E, 0xDF}, {0x212A, 'k'},
                                   {0x10400, 0x10428}, {0xA7C7, 0xA7C8}, {0x130, 0x130}, {0x4F60, 0x4F60}};
  for (const auto& [upper, lower] : pairs) EXPECT_EQ(foldedCase(upper), lower);
}

}  // namespace
}  // namespace merivane
