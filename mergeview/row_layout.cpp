#include "mergeview/row_layout.h"

#include <algorithm>
#include <span>

namespace merivane {
namespace {

/// Applies a change to each of the three channels.
template <typename Change>
Colour byChannel(Colour colour, Change change) {
  Colour result = 0;
  for (const int shift : {0, 8, 16}) result |= change(colour >> shift & 0xFF) << shift;
  return result;
}

}  // namespace

Colour invertedColour(Colour colour) {
  return byChannel(colour, [](Colour channel) { return 255 - channel; });
}

Colour darkenedColour(Colour colour) {
  return byChannel(colour, [](Colour channel) { return channel * 60 / 100; });
}

std::string rowNumber(const DiffModel& model, LineNumbers kind, int side, uint32_t row) {
  const uint32_t number = shownNumber(kind, model, side, row);
  return number == 0 ? std::string() : std::to_string(number);
}

std::string rowMark(RowStatus status, int side) {
  if (fillerSide(status) == side) return {};
  switch (status) {
    case RowStatus::leftOnly:
      return "<";
    case RowStatus::rightOnly:
      return ">";
    case RowStatus::changed:
      return "|";
    case RowStatus::same:
      break;
  }
  return {};
}

void layOutRow(const RowSource& source, uint32_t row, const RowWindow& window, RowLayout& layout) {
  const DiffModel& model = source.model;
  const RowStatus status = model.status(row);
  layout.background = rowColour(source.options.colours, status, source.side);
  layout.number = rowNumber(model, source.options.lineNumbers, source.side, row);
  const auto& contrast = source.options.highContrast;
  layout.mark = source.options.rowMarks ? rowMark(status, source.side) : std::string();
  layout.foreground = source.readOnly ? source.options.readOnlyColour : source.options.textColour;
  const bool highlighted = contrast && layout.background == contrast->highlight;
  if (highlighted) layout.foreground = contrast->highlightText;
  layout.glyphs.clear();
  layout.runs.clear();
  layout.textEnd = layout.selectionLeft = layout.selectionRight = 0;
  layout.cut = false;
  if (fillerSide(status) == source.side) return;

  const uint32_t start = model.position(source.side, row);
  const uint32_t end = model.endPosition(source.side, row, source.text.size());
  const Colour markedForeground = !contrast     ? invertedColour(layout.foreground)
                                  : highlighted ? contrast->windowText
                                                : contrast->highlightText;
  const Colour markedBackground = !contrast     ? darkenedColour(layout.background)
                                  : highlighted ? contrast->window
                                                : contrast->highlight;
  std::span<const uint8_t> marks;
  if (source.options.highlightChanges && status == RowStatus::changed)
    marks = model.marks(row).side(source.side);
  const auto isMarked = [&](uint32_t at, uint32_t length) {
    const auto of = marks.subspan(std::min<size_t>(at, marks.size()));
    const auto differs = [](uint8_t mark) { return (mark & kDiffersMark) != 0; };
    return std::ranges::any_of(of.first(std::min<size_t>(length, of.size())), differs);
  };
  const auto inWindow = [&](int64_t x) {
    return static_cast<int32_t>(std::clamp<int64_t>(x - window.scrollX, 0, window.width));
  };
  const uint32_t selectionBegin = std::clamp(window.selectionBegin, start, end) - start;
  const uint32_t selectionEnd = std::clamp(window.selectionEnd, start, end) - start;

  const RowCharacters line(source.text.stretch(start, end), source.utf8);
  LinePlace place = source.ruler.placeBeforeX(line, window.scrollX);
  int32_t selectionLeft = 0, selectionRight = 0;
  bool wasMarked = false;
  while (true) {
    if (place.position <= selectionBegin) selectionLeft = inWindow(place.x);
    if (place.position <= selectionEnd) selectionRight = inWindow(place.x);
    if (place.position == line.size() || place.x - window.scrollX >= window.width) break;
    const Character character = line.at(place.position);
    const bool marked = isMarked(place.position, character.length);
    if (layout.runs.empty() || marked != wasMarked) {
      const auto at = static_cast<uint32_t>(layout.glyphs.units.size());
      const auto left = static_cast<int32_t>(place.x - window.scrollX);
      layout.runs.push_back({at, at, left, left, marked ? markedForeground : layout.foreground,
                             marked ? markedBackground : layout.background});
      wasMarked = marked;
    }
    source.ruler.appendGlyphs(layout.glyphs, line, place, character);
    source.ruler.step(place, character);
    layout.runs.back().end = static_cast<uint32_t>(layout.glyphs.units.size());
    layout.runs.back().right = static_cast<int32_t>(place.x - window.scrollX);
  }
  layout.textEnd = inWindow(place.x);
  // A line's end that is out of view is no loss.
  const uint32_t textEnd = (end > start && source.text.charAt(end - 1) == '\n' ? end - 1 : end) - start;
  layout.cut = window.marksCut && (place.position < textEnd ||
                                   (place.position == textEnd && place.x - window.scrollX > window.width));
  if (selectionBegin < selectionEnd) {
    layout.selectionLeft = selectionLeft;
    layout.selectionRight = selectionRight;
  }
}

}  // namespace merivane
