#include "base/utf16.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace merivane {
namespace {

std::string there(std::u16string_view units) { return utf8FromUtf16(units); }
std::u16string back(std::string_view bytes) { return utf16FromUtf8<char16_t>(bytes); }

TEST(Utf16, NamesOfEveryKindComeBackAsTheyWere) {
  const std::pair<std::u16string, std::string> cases[] = {
      {u"\u0141odz \u00E9.txt", "\xC5\x81odz \xC3\xA9.txt"},
      {u"\u0416\u4E2D\U0001F600", "\xD0\x96\xE4\xB8\xAD\xF0\x9F\x98\x80"},
      {std::u16string(u"a\0b", 3), std::string("a\0b", 3)},
      {{u'x', 0xD83D}, "x\xED\xA0\xBD"},                          // half a pair at the end,
      {{0xDE00, 0xD83D, u'x'}, "\xED\xB8\x80\xED\xA0\xBDx"},      // the halves the wrong way round,
      {{0xD83D, 0xD83D, 0xDE00}, "\xED\xA0\xBD\xF0\x9F\x98\x80"}  // half a pair before a whole one
  };
  for (const auto& [units, bytes] : cases) {
    EXPECT_EQ(there(units), bytes);
    EXPECT_EQ(back(bytes), units) << bytes;
  }
  for (char32_t unit = 0; unit < 0x10000; ++unit) {
    const std::u16string one(1, static_cast<char16_t>(unit));
    ASSERT_EQ(back(there(one)), one) << uint32_t{unit};
  }
}

TEST(Utf16, EveryByteOfNoCharacterIsReplacedOrOfACodePageAndACutCharacterWaits) {
  char16_t codePage[256] = {};
  for (char16_t i = 0; i < 256; ++i) codePage[i] = static_cast<char16_t>(0x400 + i);
  EXPECT_EQ(utf16FromUtf8<char16_t>("a\xE9z\xC3\xA9", codePage), u"a\u04E9z\u00E9");
  const std::tuple<const char*, std::u16string, size_t> cases[] = {
      {"", u"", 0},
      {"a\xE9", u"a\uFFFD", 1},  // another code page
      {"\xC3", u"\uFFFD", 1},    // cut off
      {"a\xC3\xA9", u"a\u00E9", 0},
      {"\xE4\xB8", u"\uFFFD\uFFFD", 2},
      {"\xE4\xB8=", u"\uFFFD\uFFFD=", 0},
      {"\xF0\x9F\x98", u"\uFFFD\uFFFD\uFFFD", 3},
      {"\xC0\xAF", u"\uFFFD\uFFFD", 0},  // longer than need be
      {"\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD", 0},
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD", 0},  // beyond the last character
      {"\x80\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD", 0},
      {"\xFF", u"\uFFFD", 0},
  };
  for (const auto& [bytes, units, waiting] : cases) {
    EXPECT_EQ(back(bytes), units);
    EXPECT_EQ(unfinishedCharacter(bytes), waiting) << bytes;
  }
}

}  // namespace
}  // namespace merivane
