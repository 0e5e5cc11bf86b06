#include "mergeview/line_ruler.h"

#include <algorithm>
#include <cstring>

namespace merivane {
namespace {

constexpr bool isControl(char c) { return static_cast<uint8_t>(c) < 32 && c != '\n' && c != '\t'; }

/// How many characters are skipped at a time while a place is searched for.
constexpr uint32_t kSearchStep = 4096;

}  // namespace

LineRuler::LineRuler(const FontMetrics& font, uint32_t tabStop, bool showWhiteSpace)
    : font_(font),
      tabStop_(tabStop),
      spaceGlyph_(showWhiteSpace ? kSpaceMark : ' '),
      lineEndGlyph_(showWhiteSpace ? kLineEndMark : ' '),
      tabGlyph_(showWhiteSpace ? kTabMark : ' ') {
  std::string glyphs;
  for (int c = 0; c < 256; ++c) {
    glyphs.clear();
    appendGlyphs(glyphs, static_cast<char>(c), tabStop - 1);
    int32_t width = 0;
    for (const char glyph : glyphs) width += font.widthOf(glyph);
    widths_[static_cast<size_t>(c)] = static_cast<uint16_t>(width);
    widestCharacter_ = std::max(widestCharacter_, width);
  }
  const int32_t widestTab = widths_['\t'] + static_cast<int32_t>(tabStop - 1) * font.widthOf(' ');
  widestCharacter_ = std::max(widestCharacter_, widestTab);
}

void LineRuler::step(LinePlace& place, char c) const {
  ++place.position;
  place.x += widths_[static_cast<uint8_t>(c)];
  if (c == '\t') {
    const uint32_t columns = tabColumns(place.column);
    place.column += columns;
    place.x += int64_t{columns - 1} * font_.widthOf(' ');
  } else {
    place.column += isControl(c) ? 2 : 1;
  }
}

void LineRuler::appendGlyphs(std::string& text, char c, uint32_t column) const {
  if (c == ' ') {
    text += spaceGlyph_;
  } else if (c == '\n') {
    text += lineEndGlyph_;
  } else if (c == '\t') {
    text += tabGlyph_;
    text.append(tabColumns(column) - 1, ' ');
  } else if (isControl(c)) {
    text += '^';
    text += controlLetter(c);
  } else {
    text += c;
  }
}

LinePlace LineRuler::placeAtPosition(const TextBuffer& text, uint32_t lineStart, uint32_t position) const {
  LinePlace place{lineStart};
  const auto [head, tail] = text.stretch(lineStart, position);
  skip(place, head);
  skip(place, tail);
  return place;
}

LinePlace LineRuler::placeBeforeX(const TextBuffer& text, uint32_t lineStart, uint32_t lineEnd,
                                  int64_t x) const {
  LinePlace place{lineStart};
  while (place.position < lineEnd) {
    LinePlace next = place;
    const auto [head, tail] =
        text.stretch(place.position, std::min(lineEnd - place.position, kSearchStep) + place.position);
    skip(next, head);
    skip(next, tail);
    if (next.x > x) break;
    place = next;
  }
  while (place.position < lineEnd) {
    LinePlace next = place;
    step(next, text.charAt(place.position));
    if (next.x > x) break;
    place = next;
  }
  return place;
}

LinePlace LineRuler::placeNearestX(const TextBuffer& text, uint32_t lineStart, uint32_t lineEnd,
                                   int64_t x) const {
  const LinePlace before = placeBeforeX(text, lineStart, lineEnd, x);
  if (before.position == lineEnd) return before;
  LinePlace after = before;
  step(after, text.charAt(before.position));
  return x - before.x < after.x - x ? before : after;
}

void LineRuler::skip(LinePlace& place, std::string_view characters) const {
  if (!font_.fixedPitch) {
    for (const char c : characters) step(place, c);
    return;
  }
  // Between two tabs every character takes a column and a control character another one.
  const char* from = characters.data();
  const char* const end = from + characters.size();
  while (from < end) {
    const void* const found = std::memchr(from, '\t', static_cast<size_t>(end - from));
    const char* const tab = found != nullptr ? static_cast<const char*>(found) : end;
    place.column += static_cast<uint32_t>((tab - from) + std::count_if(from, tab, isControl));
    if (tab < end) place.column += tabColumns(place.column);
    from = tab < end ? tab + 1 : end;
  }
  place.position += static_cast<uint32_t>(characters.size());
  place.x = int64_t{place.column} * font_.charWidth;
}

}  // namespace merivane
