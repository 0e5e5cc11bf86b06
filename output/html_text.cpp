#include "output/html_text.h"

#include <algorithm>
#include <array>

#include "base/code_page.h"
#include "base/utf16.h"
#include "base/utf8.h"
#include "display/characters.h"

namespace merivane {
namespace {

/// The bytes that are written as they are; nearly all of a text, they are copied a run at a time.
constexpr auto plainBytes(size_t end) {
  std::array<bool, 256> plain{};
  for (size_t byte = ' ' + 1; byte < end; ++byte) plain[byte] = true;
  for (const unsigned char c : {'&', '<', '>'}) plain[c] = false;
  return plain;
}
constexpr std::array<bool, 256> kPlain[] = {plainBytes(0x100), plainBytes(0x80)};  // the second in UTF-8

std::string codePageCharacter(char byte) {
  return utf8OfCodePoint(systemCodePage()[static_cast<uint8_t>(byte)]);
}

/// Browsers show a run of spaces as one, and break lines at plain spaces alone.
void appendBlanks(std::string& html, size_t count) {
  for (size_t i = 0; i < count; ++i) html += i % 2 == 0 ? kHtmlBlank : std::string_view(" ");
}

void appendMark(std::string& html, char mark, bool utf8Page) {
  if (utf8Page) html += '\xC2';
  html += mark;
}

void appendSpecial(std::string& html, char c, const HtmlStyle& style) {
  switch (c) {
    case '&':
      html += "&amp;";
      break;
    case '<':
      html += "&lt;";
      break;
    case '>':
      html += "&gt;";
      break;
    case '\r':
      break;
    case '\n':
      if (style.showWhiteSpace) {
        appendMark(html, kLineEndMark, style.utf8Page);
      } else {
        html += kHtmlBlank;
      }
      break;
    default:
      html += '^';
      html += controlLetter(c);
  }
}

/// Appends the character beyond ASCII at a position, or the marks there. Returns its columns and steps over
/// it.
uint32_t appendBeyondAscii(std::string& html, const RowCharacters& characters, std::string_view line,
                           bool utf8Text, uint32_t& at) {
  const uint32_t begin = at;
  if (!characters.isBoundary(begin)) {
    at = characters.end(begin);
    html += line.substr(begin, at - begin);
    return 0;
  }
  const Character character = characters.at(begin);
  at += character.length;
  const bool isByte = !utf8Text || character.base == kNoCodePoint;
  if (isByte) {
    html += codePageCharacter(line[begin]);
  } else {
    html += line.substr(begin, character.length);
  }
  return character.columns;
}

}  // namespace

void appendHtmlText(std::string& html, std::string_view line, const HtmlStyle& style) {
  const auto& plain = kPlain[style.utf8Page];
  const auto isPlain = [&plain](char c) { return plain[static_cast<uint8_t>(c)]; };
  const RowCharacters characters(line, style.utf8Text);
  const auto end = static_cast<uint32_t>(line.size());
  uint32_t column = 0;
  for (uint32_t at = 0; at < end;) {
    const uint32_t start = at;
    const char c = line[at];
    if (isPlain(c)) {
      do ++at;
      while (at < end && isPlain(line[at]));
      html += line.substr(start, at - start);
    } else if (c == ' ') {
      at = static_cast<uint32_t>(std::min<size_t>(line.find_first_not_of(' ', at), end));
      const uint32_t count = at - start;
      if (style.showWhiteSpace) {
        for (uint32_t i = 0; i < count; ++i) appendMark(html, kSpaceMark, style.utf8Page);
      } else if (count == 1) {
        html += ' ';
      } else {
        appendBlanks(html, count);
      }
    } else if (c == '\t') {
      const uint32_t width = tabColumns(column, style.tabStop);
      if (style.showWhiteSpace) appendMark(html, kTabMark, style.utf8Page);
      appendBlanks(html, style.showWhiteSpace ? width - 1 : width);
      column += width;
      ++at;
      continue;
    } else if (static_cast<uint8_t>(c) >= 0x80) {
      column += appendBeyondAscii(html, characters, line, style.utf8Text, at);
      continue;
    } else {
      appendSpecial(html, c, style);
      ++at;
    }
    column += at - start;
  }
}

void appendHtmlName(std::string& html, std::string_view name, bool utf8Page) {
  while (!name.empty()) {
    const uint32_t length = utf8Length(name);
    if (length > 1) {
      html += "&#" + std::to_string(uint32_t{utf8CodePoint(name.substr(0, length))}) + ';';
    } else if (utf8Page && static_cast<uint8_t>(name[0]) >= 0x80) {
      html += codePageCharacter(name[0]);
    } else {
      html += name[0];
    }
    name.remove_prefix(length);
  }
}

}  // namespace merivane
