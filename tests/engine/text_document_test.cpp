#include "engine/text_document.h"

#include <gtest/gtest.h>

#include "tests/support/random.h"

namespace merivane {
namespace {

constexpr auto lf = LineEndKind::lf, crLf = LineEndKind::crLf, cr = LineEndKind::cr;

std::string repeated(std::string_view text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

TEST(BinaryTest, IsMoreThanATenthOfTheSample) {
  const auto sample = [](size_t notText, char c, size_t size) {
    return std::string(notText, c) + std::string(size - notText, 'a');
  };
  for (const char c : {'\0', '\x1f', '\x80', '\xff'}) {
    EXPECT_FALSE(isBinary(sample(1, c, 10)));
    EXPECT_TRUE(isBinary(sample(1, c, 9)));
    EXPECT_TRUE(isBinary(sample(103, c, 1024)));
    EXPECT_FALSE(isBinary(sample(102, c, 1024) + std::string(9000, c))) << "only the sample counts";
  }
  // UTF-8 is text, also where the sample ends within a character, but not cut off within it.
  for (const std::string_view c :
       {"\xC3\xA9", "\xE0\xA4\xA4", "\xED\x9F\xBF", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF"}) {
    for (size_t cut = 0; cut < c.size(); ++cut) {
      const std::string file = std::string(cut, 'a') + repeated(c, 1024);
      EXPECT_FALSE(isBinary(file));
      EXPECT_TRUE(isBinary(file.substr(0, cut + c.size() - 1)));
    }
  }
  for (const char c : {' ', '\t', '\n', '\r', '\x7f'}) EXPECT_FALSE(isBinary(sample(1024, c, 1024)));
}

TEST(LineEnds, AreToldFromTheFirstOnes) {
  const std::string long64K(65535, 'a');
  const std::pair<std::string, LineEndKind> cases[] = {
      {"", crLf},
      {"a\rb", cr},
      {"a\r", crLf},  // no byte follows that would count it
      {"a\rb\r\nc", crLf},
      {"a\nb\rc", lf},
      {"a\r\r\nb\r\r\nc\rd", cr},  // five: three CRs, two CR LFs
      // The walk ends with the 21st line end.
      {repeated("a\n", 10) + repeated("b\r\n", 11) + repeated("c\n", 50), crLf},
      {repeated("a\n", 10) + repeated("b\r\n", 10) + repeated("c\n", 50), lf},
      // The sample ends between the CR and its LF.
      {"a\n" + long64K.substr(2) + "\r\n", lf},
  };
  for (const auto& [file, kind] : cases) EXPECT_EQ(detectLineEndKind(file), kind) << file.substr(0, 200);
}

/// Returns `text` with every `from` replaced.
std::string replaced(std::string text, std::string_view from, std::string_view to) {
  for (size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

TEST(LineEnds, AreLfInMemoryAndComeBackInTheFile) {
  std::string allBytes;
  for (int c = 0; c < 256; ++c) allBytes += static_cast<char>(c);
  Random random(3);
  ByteArray bytes;
  for (int round = 0; round < 3000; ++round) {
    const std::string text = random.text(round % 2 == 0 ? "\r\n\nab" : allBytes, 300);
    constexpr const char* ends[] = {"\n", "\r\n", "\r"};
    for (const LineEndKind kind : {lf, crLf, cr}) {
      const char* const end = ends[static_cast<int>(kind)];
      ASSERT_TRUE(bytes.assign(text));
      const bool mixed = convertFromFile(bytes, kind);
      ASSERT_EQ(bytes.view(), replaced(text, end, "\n"));
      ASSERT_EQ(mixed, replaced(replaced(text, end, "\n"), "\n", end) != text);
      for (const bool nulToSpace : {false, true}) {
        ASSERT_TRUE(convertToFile(text, kind, nulToSpace, bytes));
        ASSERT_EQ(bytes.view(), replaced(nulToSpace ? replaced(text, {"\0", 1}, " ") : text, "\n", end));
      }
    }
  }
}

TEST(Encoding, IsToldFromTheMarkAndAllOfTheText) {
  using enum TextEncoding;
  const std::string ascii200(200, 'a');
  const std::pair<std::string, TextEncoding> cases[] = {
      {"", ascii},
      {ascii200, ascii},
      {ascii200 + "\xC3\xA9" + ascii200, utf8},
      {repeated("\xE4\xB8\xAD", 400000) + "\xF0\x9F\x98\x80", utf8},  // characters across every block
      {repeated("\xE4\xB8\xAD", 400000) + "\xE9", singleByte},
      {"\xED\xA0\x80", singleByte},  // a surrogate
  };
  for (const auto& [text, encoding] : cases) {
    EXPECT_EQ(detectEncoding(text), encoding) << text.substr(0, 10);
    EXPECT_EQ(isAscii(text), encoding == ascii);
  }
  for (const auto encoding : {utf8Marked, utf16Le, utf16Be}) {
    EXPECT_EQ(encodingByMark(std::string(byteOrderMark(encoding)) + "a"), encoding);
    EXPECT_EQ(encodingByMark(byteOrderMark(encoding).substr(1)), ascii);
    for (const auto own : {utf8, utf16Be}) EXPECT_EQ(encodingBeyondAscii(own, encoding), own);
    EXPECT_EQ(encodingBeyondAscii(ascii, encoding), utf8);
  }
  EXPECT_EQ(encodingBeyondAscii(ascii, singleByte), singleByte);
  EXPECT_EQ(encodingBeyondAscii(singleByte, utf8), singleByte);
}

TEST(Encoding, Utf16IsDecodedWhereThatLosesNothing) {
  // Random units, nearly all of them in or around surrogate pairs.
  Random random(5);
  ByteArray text, units;
  for (int round = 0; round < 20000; ++round) {
    const std::string bytes = random.text(std::string_view("\0a\xD8\xDC\xDF\xE0\x07\x08", 8), 7);
    bool whole = bytes.size() % 2 == 0, high = false;
    for (size_t at = 0; whole && at < bytes.size(); at += 2) {
      const bool low = (bytes[at] & 0xFC) == 0xDC;
      whole = low == high;
      high = (bytes[at] & 0xFC) == 0xD8;
    }
    whole = whole && !high;
    ASSERT_EQ(decodeUtf16(bytes, TextEncoding::utf16Be, text), whole ? Decoded::whole : Decoded::malformed);
    if (!whole) continue;
    ASSERT_TRUE(encodeUtf16(text.view(), TextEncoding::utf16Be, units));
    ASSERT_EQ(units.view(), bytes);
  }
  // A pair across the blocks that are decoded at once.
  const std::string large = "a" + std::string((1 << 20) - 3, '\0') + "\xD8\x3D\xDE\x01";
  ASSERT_EQ(decodeUtf16(large, TextEncoding::utf16Be, text), Decoded::whole);
  ASSERT_TRUE(encodeUtf16(text.view(), TextEncoding::utf16Be, units));
  ASSERT_EQ(units.view(), large);
}

}  // namespace
}  // namespace merivane
