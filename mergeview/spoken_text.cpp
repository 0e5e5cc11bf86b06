#include "mergeview/spoken_text.h"

#include <algorithm>

#include "base/message_format.h"
#include "base/utf16.h"

namespace merivane {
namespace {

constexpr uint32_t kPageRows = 256;     // the caret's page is told, with the one before and the one after
constexpr uint32_t kPageLength = 1024;  // and the same of a line
constexpr uint32_t kLineEnd = 2;        // CR LF

uint32_t pageBefore(uint32_t at, uint32_t page) {
  const uint32_t begin = at - at % page;
  return begin - std::min(begin, page);
}

/// The code point at a position of a line as it is spoken: nothing but what readers speak one for one, and no
/// line end.
CodePoint spokenAt(const RowCharacters& line, uint32_t at) {
  CodePoint code = line.isUtf8() ? codePointAt(line.bytes(), at) : CodePoint{line.at(at).base, 1};
  if (code.value < 32 && code.value != '\t') code.value = '^';
  if (code.value == kNoCodePoint) code.value = 0xFFFD;
  return code;
}

/// The units of the bytes [at, end) of a line.
uint32_t unitsOf(const RowCharacters& line, uint32_t at, uint32_t end) {
  if (!line.isUtf8()) return end - at;
  uint32_t units = 0;
  for (; at < end; ++units) {
    const CodePoint code = codePointAt(line.bytes(), at);
    if (code.length == 4) ++units;
    at += code.length;
  }
  return units;
}

}  // namespace

SpokenText::SpokenText(const ViewState& view)
    : view_(view), side_(view.activeSide()), firstRow_(pageBefore(view.caretRow(), kPageRows)) {
  const auto rows = std::min(view.rowCount() - firstRow_, 3 * kPageRows);
  lines_.reserve(rows);
  uint32_t offset = 0;
  for (uint32_t i = 0; i < rows; ++i) {
    lines_.push_back(lineOf(firstRow_ + i, offset));
    offset += lines_.back().length + kLineEnd;
  }
}

SpokenText::Line SpokenText::lineOf(uint32_t row, uint32_t offset) const {
  const uint32_t start = view_.rowStart(side_, row);
  if (view_.isFiller(side_, row)) {
    const auto size = static_cast<uint32_t>(std::string_view(merivane::text(TextId::noLineHere)).size());
    return {offset, size, start, 0, true};
  }
  const uint32_t end = view_.lineEnd(side_, row);
  const RowCharacters whole = view_.characters(side_, start, end);
  const uint32_t at = row == view_.caretRow() ? std::min(view_.caretPos(side_) - start, whole.size()) : 0;
  const uint32_t begin = whole.begin(pageBefore(at, kPageLength));
  const uint32_t bytes = whole.end(begin + std::min(whole.size() - begin, 3 * kPageLength)) - begin;
  Line line = {offset, bytes, start + begin, bytes, false};
  line.length = unitsOf(characters(line), 0, bytes);
  return line;
}

RowCharacters SpokenText::characters(const Line& line) const {
  return view_.characters(side_, line.position, line.position + line.bytes);
}

std::u16string SpokenText::text() const {
  std::u16string all;
  all.reserve(size());
  for (const Line& line : lines_) {
    if (line.offset > 0) all += u"\r\n";
    append(all, line);
  }
  return all;
}

std::u16string SpokenText::lineText(uint32_t line) const {
  std::u16string text;
  append(text, lines_[line]);
  return text;
}

void SpokenText::append(std::u16string& to, const Line& line) const {
  if (line.filler) {
    to += utf16FromUtf8<char16_t>(merivane::text(TextId::noLineHere));
    return;
  }
  const RowCharacters bytes = characters(line);
  for (uint32_t at = 0; at < line.bytes;) {
    const CodePoint code = spokenAt(bytes, at);
    appendUtf16(to, code.value);
    at += code.length;
  }
}

uint32_t SpokenText::lineAt(uint32_t offset) const {
  const auto after = std::upper_bound(lines_.begin(), lines_.end(), offset,
                                      [](uint32_t at, const Line& line) { return at < line.offset; });
  return static_cast<uint32_t>(after - lines_.begin()) - 1;
}

uint32_t SpokenText::offsetOf(const TextPlace& place) const {
  if (place.row < firstRow_) return 0;
  if (place.row - firstRow_ >= lineCount()) return size();
  const Line& line = lines_[place.row - firstRow_];
  if (line.filler || place.position < line.position) return line.offset;
  return line.offset + unitsOf(characters(line), 0, std::min(place.position - line.position, line.bytes));
}

TextPlace SpokenText::placeOf(uint32_t offset) const {
  const uint32_t index = lineAt(offset);
  const Line& line = lines_[index];
  if (line.filler) return {firstRow_ + index, line.position};
  const RowCharacters bytes = characters(line);
  uint32_t at = 0;
  for (uint32_t left = std::min(offset - line.offset, line.length); at < line.bytes;) {
    const uint32_t next = bytes.next(at);
    const uint32_t units = unitsOf(bytes, at, next);
    if (units > left) break;
    left -= units;
    at = next;
  }
  return {firstRow_ + index, line.position + at};
}

ViewPoint SpokenText::pointOf(uint32_t offset) const {
  static constexpr int64_t limit = 0x7FFF;  // as far as the messages reach
  const auto pixels = [](int64_t at) { return static_cast<int32_t>(std::clamp(at, -limit, limit)); };
  const TextPlace place = placeOf(offset);
  const FontMetrics& font = view_.font();
  const int64_t x = view_.placeAt(side_, place.row, place.position).x;
  return {pixels(view_.pane(side_).textLeft + x - int64_t{view_.hScroll(side_)} * font.charWidth),
          pixels((int64_t{place.row} - view_.topRow()) * font.lineHeight)};
}

uint32_t SpokenText::offsetAt(ViewPoint point) const {
  return offsetOf(characterAt(view_, side_, point.x, point.y));
}

uint32_t SpokenText::firstVisibleLine() const {
  return std::clamp(view_.topRow(), firstRow_, firstRow_ + lineCount() - 1) - firstRow_;
}

uint32_t SpokenText::caret() const { return offsetOf({view_.caretRow(), view_.caretPos(side_)}); }

uint32_t SpokenText::anchor() const {
  if (!view_.hasSelection()) return caret();
  return offsetOf({view_.rowOf(side_, view_.anchor()), view_.anchor()});
}

uint32_t SpokenText::selectionBegin() const { return std::min(anchor(), caret()); }

uint32_t SpokenText::selectionEnd() const { return std::max(anchor(), caret()); }

void selectSpoken(ViewState& view, uint32_t anchor, uint32_t caret) {
  const SpokenText spoken(view);
  const TextPlace places[] = {spoken.placeOf(anchor), spoken.placeOf(caret)};
  view.moveCaret(places[0].row, places[0].position, false);
  if (caret != anchor) view.moveCaret(places[1].row, places[1].position, true);
}

std::string differenceText(const DiffModel& model, uint32_t row) {
  const RowStatus status = model.status(row);
  if (status == RowStatus::same) return {};
  int64_t number = 0;
  for (uint32_t i = 0; i <= row; ++i) {
    const RowStatus here = model.status(i);
    if (here != RowStatus::same && (i == 0 || model.status(i - 1) != here)) ++number;
  }
  const uint32_t lines = model.blockAround(row).size();
  const auto pick = [&](TextId one, TextId several) { return lines == 1 ? one : several; };
  const int filler = fillerSide(status);
  const TextId what = filler == 1   ? pick(TextId::oneLineOnlyLeft, TextId::linesOnlyLeft)
                      : filler == 0 ? pick(TextId::oneLineOnlyRight, TextId::linesOnlyRight)
                                    : pick(TextId::oneLineChanged, TextId::linesChanged);
  return formatMessage(TextId::differenceNumber,
                       {number, int64_t{model.differenceBlocks()}, formatMessage(what, {int64_t{lines}})});
}

}  // namespace merivane
