#include "base/utf16.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace merivane {
namespace {

std::string there(std::u16string_view units) { return utf8FromUtf16(units); }
std::u16string back(std::string_view bytes) { return utf16FromUtf8<char16_t>(bytes); }

TEST(Utf16, NamesOfEveryKindComeBackAsTheyWere) {
  const struct {
    std::u16string units;
    std::string bytes;
  } cases[] = {
      {u"plain.txt", "plain.txt"},
      {u"\u0141odz \u00E9.txt", "\xC5\x81odz \xC3\xA9.txt"},
      {u"\u0416\u4E2D\U0001F600", "\xD0\x96\xE4\xB8\xAD\xF0\x9F\x98\x80"},
      {std::u16string(u"a\0b", 3), std::string("a\0b", 3)},
      {{u'x', 0xD83D}, "x\xED\xA0\xBD"},                          // half a pair at the end,
      {{0xDE00, 0xD83D, u'x'}, "\xED\xB8\x80\xED\xA0\xBDx"},      // the halves the wrong way round,
      {{0xD83D, 0xD83D, 0xDE00}, "\xED\xA0\xBD\xF0\x9F\x98\x80"}  // half a pair before a whole one
  };
  for (const auto& c : cases) {
    EXPECT_EQ(there(c.units), c.bytes);
    EXPECT_EQ(back(c.bytes), c.units) << c.bytes;
  }
  for (char32_t unit = 0; unit < 0x10000; ++unit) {
    const std::u16string one(1, static_cast<char16_t>(unit));
    ASSERT_EQ(back(there(one)), one) << uint32_t{unit};
  }
}

TEST(Utf16, EveryByteThatBelongsToNoCharacterIsReplaced) {
  const std::pair<const char*, std::u16string> cases[] = {
      {"\x80", u"\uFFFD"},
      {"a\xE9", u"a\uFFFD"},  // another code page
      {"\xC3", u"\uFFFD"},    // cut off
      {"\xE2\x82"
       "a",
       u"\uFFFD\uFFFDa"},
      {"\xC0\xAF", u"\uFFFD\uFFFD"},  // longer than need be
      {"\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"},
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last character
      {"\xFF", u"\uFFFD"},
  };
  for (const auto& [bytes, units] : cases) EXPECT_EQ(back(bytes), units);
}

TEST(Utf16, ATextInPiecesKeepsItsCharactersAndOtherBytesAreACodePages) {
  char16_t codePage[256] = {};
  for (char16_t i = 0; i < 256; ++i) codePage[i] = static_cast<char16_t>(0x400 + i);
  EXPECT_EQ(utf16FromUtf8<char16_t>("a\xE9z\xC3\xA9", codePage), u"a\u04E9z\u00E9");
  const std::pair<const char*, size_t> cases[] = {{"", 0},
                                                  {"a", 0},
                                                  {"\xC3", 1},
                                                  {"a\xC3\xA9", 0},
                                                  {"\xE4\xB8", 2},
                                                  {"a\xE4\xB8\xAD", 0},
                                                  {"\xF0\x9F\x98", 3},
                                                  {"\xF0\x9F\x98\x80", 0},
                                                  {"\x80\x80\x80\x80", 0},
                                                  {"\xFF", 0}};
  for (const auto& [bytes, waiting] : cases) EXPECT_EQ(unfinishedCharacter(bytes), waiting) << bytes;
}

}  // namespace
}  // namespace merivane
