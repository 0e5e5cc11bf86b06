#include "mergeview/line_ruler.h"

#include <algorithm>
#include <cstring>

#include "base/code_page.h"
#include "base/utf16.h"
#include "display/code_points.h"
#include "engine/text_encoding.h"

namespace merivane {
namespace {

constexpr char32_t kReplacement = 0xFFFD;   // shows for a byte that is no character
constexpr char32_t kDottedCircle = 0x25CC;  // takes marks that have nothing else to be written into

/// What shows as "^" and a letter.
constexpr bool isCaretControl(char32_t c) { return c < 32 && c != '\n' && c != '\t'; }
constexpr bool isSingleControl(char c) { return isCaretControl(static_cast<uint8_t>(c)); }

/// Signs that change the order of what follows: followed by the system they would show a text as another one.
constexpr bool reorders(char32_t c) {
  return c == 0x61C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069);
}

/// How many bytes are skipped at a time while a place is searched for.
constexpr uint32_t kSearchStep = 4096;

/// The run that shows at `x`; null for none.
const ShownRun* runAt(const std::vector<ShownRun>& runs, int64_t x) {
  const auto found = std::ranges::find_if(
      runs, [x](const ShownRun& run) { return x >= run.left && x < run.left + run.width; });
  return found == runs.end() ? nullptr : &*found;
}

/// Moves a place from where it is written to where it shows.
void show(LinePlace& place, const RowCharacters& line, const std::vector<ShownRun>& runs) {
  const uint32_t character = place.position < line.size() ? place.position : line.size() - 1;
  for (const ShownRun& run : runs) {
    if (character < run.run.begin || character >= run.run.end) continue;
    place.x = run.shownX(place.x);
    return;
  }
}

/// The code point of a white space mark, which has the number of its byte.
constexpr char32_t signOf(char mark) { return static_cast<uint8_t>(mark); }

}  // namespace

void Glyphs::add(char32_t codePoint, int32_t advance) {
  appendUtf16(units, codePoint);
  advances.push_back(advance);
  advances.resize(units.size());  // of two units the second takes nothing more
}

LineRuler::LineRuler(const FontMetrics& font, uint32_t tabStop, bool showWhiteSpace)
    : font_(font),
      tabStop_(tabStop),
      spaceGlyph_(showWhiteSpace ? kSpaceMark : ' '),
      lineEndGlyph_(showWhiteSpace ? kLineEndMark : ' '),
      tabGlyph_(showWhiteSpace ? kTabMark : ' ') {
  for (char c = 0; static_cast<uint8_t>(c) < widths_.size(); ++c) {
    int32_t& width = widths_[static_cast<uint8_t>(c)];
    if (isSingleControl(c)) {
      width = font.widthOf('^') + font.widthOf(controlLetter(c));
    } else {
      width = font.widthOf(c == ' ' ? spaceGlyph_ : c == '\n' ? lineEndGlyph_ : c == '\t' ? tabGlyph_ : c);
    }
    widestByte_ = std::max(widestByte_, width);
  }
  const int32_t widestTab = widths_['\t'] + static_cast<int32_t>(tabStop - 1) * font.widthOf(' ');
  widestByte_ = std::max({widestByte_, widestTab, font.charWidth});
  if (font.fixedPitch) return;
  for (int byte = 0x80; byte < 0x100; ++byte) {
    const int32_t width = font.widthOf(static_cast<char>(byte));
    widthsBeyond_.emplace_back(systemCodePage()[byte], width);
    widestByte_ = std::max(widestByte_, width);
  }
  std::sort(widthsBeyond_.begin(), widthsBeyond_.end());
}

void LineRuler::step(LinePlace& place, const Character& character) const {
  place.position += character.length;
  if (character.base == '\t') {
    const uint32_t columns = tabColumns(place.column);
    place.column += columns;
    place.x += widths_['\t'] + int64_t{columns - 1} * font_.widthOf(' ');
  } else {
    place.column += isCaretControl(character.base) ? 2 : character.columns;
    place.x += widthOf(character.base, character.columns);
  }
}

void LineRuler::appendGlyphs(Glyphs& glyphs, const RowCharacters& line, const LinePlace& place,
                             const Character& character) const {
  const char32_t base = character.base;
  const int32_t width = widthOf(base, character.columns);
  if (base == ' ') {
    glyphs.add(signOf(spaceGlyph_), width);
  } else if (base == '\n') {
    glyphs.add(signOf(lineEndGlyph_), width);
  } else if (base == '\t') {
    glyphs.add(signOf(tabGlyph_), width);
    for (uint32_t columns = tabColumns(place.column); columns > 1; --columns)
      glyphs.add(' ', font_.widthOf(' '));
  } else if (isCaretControl(base)) {
    const char letter = controlLetter(static_cast<char>(base));
    glyphs.add('^', font_.widthOf('^'));
    glyphs.add(signOf(letter), font_.widthOf(letter));
  } else if (base == kNoCodePoint) {
    glyphs.add(kReplacement, width);
  } else {
    glyphs.add(character.baseless ? kDottedCircle : base, width);
  }
  if (character.length == 1) return;
  uint32_t at = place.position;
  if (!character.baseless) at += codePointAt(line.bytes(), at).length;
  for (const uint32_t end = place.position + character.length; at < end;) {
    const CodePoint mark = codePointAt(line.bytes(), at);
    if (!reorders(mark.value)) glyphs.add(mark.value, 0);
    at += mark.length;
  }
}

std::vector<ShownRun> LineRuler::shownRuns(const RowCharacters& line) const {
  std::vector<ShownRun> runs;
  for (const DirectionRun& run : directionRuns(line)) runs.push_back({run, {}, 0, 0});
  std::vector<ShownRun*> written;
  for (ShownRun& run : runs) written.push_back(&run);
  std::ranges::sort(written, {}, [](const ShownRun* each) { return each->run.begin; });
  LinePlace place;
  for (ShownRun* const run : written) {
    run->begin = place;
    skip(place, line, run->run.end);
    run->width = place.x - run->begin.x;
  }
  int64_t left = 0;
  for (ShownRun& run : runs) left += (run.left = left, run.width);
  return runs;
}

int64_t LineRuler::widthOf(const RowCharacters& line) const {
  LinePlace end;
  skip(end, line, line.size());
  return end.x;
}

LinePlace LineRuler::placeAtPosition(const RowCharacters& line, uint32_t position) const {
  LinePlace place;
  skip(place, line, line.begin(position));
  show(place, line, shownRuns(line));
  return place;
}

LinePlace LineRuler::placeBeforeX(const RowCharacters& line, int64_t x) const {
  const std::vector<ShownRun> runs = shownRuns(line);
  if (runs.empty()) return writtenBeforeX(line, x);
  // A character that goes to the left holds its left edge but not its right one.
  const ShownRun* const run = runAt(runs, x);
  LinePlace place;
  if (run != nullptr) {
    place = writtenBeforeX(line, run->writtenX(x) - (run->run.rightToLeft ? 1 : 0));
  } else if (x >= 0) {
    skip(place, line, line.size());
  }
  show(place, line, runs);
  return place;
}

LinePlace LineRuler::placeNearestX(const RowCharacters& line, int64_t x) const {
  const std::vector<ShownRun> runs = shownRuns(line);
  const ShownRun* const run = runAt(runs, x);
  if (run == nullptr) return runs.empty() ? writtenNearestX(line, x) : placeBeforeX(line, x);
  LinePlace place = writtenNearestX(line, run->writtenX(x));
  show(place, line, runs);
  return place;
}

LinePlace LineRuler::writtenBeforeX(const RowCharacters& line, int64_t x) const {
  LinePlace place;
  while (place.position < line.size()) {
    LinePlace next = place;
    skip(next, line, line.end(std::min(line.size() - place.position, kSearchStep) + place.position));
    if (next.x > x) break;
    place = next;
  }
  while (place.position < line.size()) {
    LinePlace next = place;
    step(next, line.at(place.position));
    if (next.x > x) break;
    place = next;
  }
  return place;
}

LinePlace LineRuler::writtenNearestX(const RowCharacters& line, int64_t x) const {
  const LinePlace before = writtenBeforeX(line, x);
  if (before.position == line.size()) return before;
  LinePlace after = before;
  step(after, line.at(before.position));
  return x - before.x < after.x - x ? before : after;
}

/// Moves a place to another boundary after it.
void LineRuler::skip(LinePlace& place, const RowCharacters& line, uint32_t to) const {
  if (!font_.fixedPitch) {
    while (place.position < to) step(place, line.at(place.position));
    return;
  }
  const SplitText part = line.bytes().slice(place.position, to);
  if (!line.isUtf8() || (isAscii(part.head) && isAscii(part.tail))) {
    skipSingles(place, part.head);
    skipSingles(place, part.tail);
    return;
  }
  uint32_t column = place.column;
  for (uint32_t at = place.position; at < to;) {
    const CodePoint code = codePointAt(line.bytes(), at);
    if (code.value < 0x80) {
      column += code.value == '\t' ? tabColumns(column) : isCaretControl(code.value) ? 2 : 1;
    } else if (const uint32_t columns = propertiesOf(code.value).columns(); columns > 0) {
      column += columns;
    } else {
      column += line.isBoundary(at) ? 1 : 0;
    }
    at += code.length;
  }
  place = {to, column, int64_t{column} * font_.charWidth};
}

/// Between two tabs every byte takes a column and a control character another one.
void LineRuler::skipSingles(LinePlace& place, std::string_view characters) const {
  const char* from = characters.data();
  const char* const end = from + characters.size();
  while (from < end) {
    const void* const found = std::memchr(from, '\t', static_cast<size_t>(end - from));
    const char* const tab = found != nullptr ? static_cast<const char*>(found) : end;
    place.column += static_cast<uint32_t>((tab - from) + std::count_if(from, tab, isSingleControl));
    if (tab < end) place.column += tabColumns(place.column);
    from = tab < end ? tab + 1 : end;
  }
  place.position += static_cast<uint32_t>(characters.size());
  place.x = int64_t{place.column} * font_.charWidth;
}

/// The pixels of a character as it shows, of a tab those of its first column.
int32_t LineRuler::widthOf(char32_t codePoint, uint32_t columns) const {
  if (codePoint < widths_.size()) return widths_[codePoint];
  const auto known =
      std::lower_bound(widthsBeyond_.begin(), widthsBeyond_.end(), std::pair(codePoint, INT32_MIN));
  if (known != widthsBeyond_.end() && known->first == codePoint) return known->second;
  return static_cast<int32_t>(columns) * font_.charWidth;
}

}  // namespace merivane
