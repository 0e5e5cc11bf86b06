#include "output/html_text.h"

#include <algorithm>
#include <array>

#include "base/utf8.h"
#include "display/row_look.h"

namespace merivane {
namespace {

/// The bytes that are written as they are; nearly all of a text, they are copied a run at a time.
constexpr auto kPlain = [] {
  std::array<bool, 256> plain{};
  for (size_t byte = ' ' + 1; byte < plain.size(); ++byte) plain[byte] = true;
  for (const unsigned char c : {'&', '<', '>'}) plain[c] = false;
  return plain;
}();

bool isPlain(char c) { return kPlain[static_cast<unsigned char>(c)]; }

/// Browsers show a run of spaces as one, and break lines at plain spaces alone.
void appendBlanks(std::string& html, size_t count) {
  for (size_t i = 0; i < count; ++i) html += i % 2 == 0 ? kHtmlBlank : std::string_view(" ");
}

void appendSpecial(std::string& html, char c, bool showWhiteSpace) {
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
      if (showWhiteSpace) {
        html += kLineEndMark;
      } else {
        html += kHtmlBlank;
      }
      break;
    default:
      html += '^';
      html += controlLetter(c);
  }
}

}  // namespace

void appendHtmlText(std::string& html, std::string_view line, uint32_t tabStop, bool showWhiteSpace) {
  uint32_t column = 0;
  const auto end = line.end();
  for (auto at = line.begin(); at != end;) {
    const auto start = at;
    if (isPlain(*at)) {
      at = std::find_if_not(at, end, isPlain);
      html.append(start, at);
    } else if (*at == ' ') {
      at = std::find_if(at, end, [](char c) { return c != ' '; });
      const auto count = static_cast<size_t>(at - start);
      if (showWhiteSpace) {
        html.append(count, kSpaceMark);
      } else if (count == 1) {
        html += ' ';
      } else {
        appendBlanks(html, count);
      }
    } else if (*at == '\t') {
      const uint32_t width = tabColumns(column, tabStop);
      if (showWhiteSpace) html += kTabMark;
      appendBlanks(html, showWhiteSpace ? width - 1 : width);
      column += width;
      ++at;
      continue;
    } else {
      appendSpecial(html, *at++, showWhiteSpace);
    }
    column += static_cast<uint32_t>(at - start);
  }
}

void appendHtmlName(std::string& html, std::string_view name) {
  while (!name.empty()) {
    const uint32_t length = utf8Length(name);
    if (length == 1) {
      html += name[0];
    } else {
      html += "&#" + std::to_string(uint32_t{utf8CodePoint(name.substr(0, length))}) + ';';
    }
    name.remove_prefix(length);
  }
}

}  // namespace merivane
