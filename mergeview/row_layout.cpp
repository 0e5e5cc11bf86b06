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

/// Lays out a row's text run by run.
class TextLayouter {
 public:
  TextLayouter(const RowSource& source, const RowWindow& window, const RowCharacters& line,
               std::span<const uint8_t> marks, RowLayout& layout)
      : ruler_(source.ruler), window_(window), line_(line), marks_(marks), layout_(layout) {}

  void setMarkedColours(Colour foreground, Colour background) {
    markedForeground_ = foreground;
    markedBackground_ = background;
  }

  /// What is selected of the line.
  void setSelection(uint32_t begin, uint32_t end) {
    selectionBegin_ = begin;
    selectionEnd_ = end;
  }

  void layOut() {
    const std::vector<ShownRun> runs = ruler_.shownRuns(line_);
    if (runs.empty()) add({{0, line_.size(), false}, {}, 0, 0});
    for (const ShownRun& run : runs) {
      if (run.left < window_.scrollX + window_.width && run.left + run.width > window_.scrollX) add(run);
      end_ = run.left + run.width;
    }
    layout_.textEnd = static_cast<int32_t>(std::clamp<int64_t>(end_ - window_.scrollX, 0, window_.width));
    if (!window_.marksCut) return;
    // A line's end that is out of view is no loss.
    const uint32_t size = line_.size();
    const uint32_t text = size > 0 && line_.bytes()[size - 1] == '\n' ? size - 1 : size;
    const RowCharacters shown(line_.bytes().slice(0, text), line_.isUtf8());
    layout_.cut = ruler_.widthOf(shown) - window_.scrollX > window_.width;
  }

 private:
  /// Adds the characters of a run that are in view.
  void add(const ShownRun& run) {
    const bool toLeft = run.run.rightToLeft;
    LinePlace place = run.begin;
    if (!toLeft && window_.scrollX > run.left)
      place = ruler_.writtenBeforeX(line_, run.writtenX(window_.scrollX));
    bool fresh = true, wasMarked = false;
    while (place.position < run.run.end) {
      const Character character = line_.at(place.position);
      LinePlace next = place;
      ruler_.step(next, character);
      const int64_t from = run.shownX(place.x) - window_.scrollX, to = run.shownX(next.x) - window_.scrollX;
      const int64_t left = std::min(from, to), right = std::max(from, to);
      if (!toLeft && left >= window_.width) break;
      const bool marked = isMarked(place.position, character.length);
      if (left >= window_.width || right <= 0) {
        fresh = true;
      } else {
        if (fresh || marked != wasMarked) beginText(static_cast<int32_t>(from), marked, toLeft);
        fresh = false;
        wasMarked = marked;
        ruler_.appendGlyphs(layout_.glyphs, line_, place, character);
        TextRun& text = layout_.runs.back();
        text.end = static_cast<uint32_t>(layout_.glyphs.units.size());
        (toLeft ? text.left : text.right) = static_cast<int32_t>(to);
        if (place.position >= selectionBegin_ && place.position < selectionEnd_) addSelected(left, right);
      }
      place = next;
    }
    end_ = run.shownX(place.x);
  }

  void beginText(int32_t edge, bool marked, bool toLeft) {
    const auto at = static_cast<uint32_t>(layout_.glyphs.units.size());
    layout_.runs.push_back({at, at, edge, edge, marked ? markedForeground_ : layout_.foreground,
                            marked ? markedBackground_ : layout_.background, toLeft});
  }

  /// Takes a character in, beside the one before it where they touch.
  void addSelected(int64_t left, int64_t right) {
    const auto inWindow = [this](int64_t x) {
      return static_cast<int32_t>(std::clamp<int64_t>(x, 0, window_.width));
    };
    const SelectedPart part = {inWindow(left), inWindow(right)};
    if (part.left == part.right) return;
    auto& parts = layout_.selected;
    if (!parts.empty() && parts.back().right == part.left) {
      parts.back().right = part.right;
    } else if (!parts.empty() && parts.back().left == part.right) {
      parts.back().left = part.left;
    } else {
      parts.push_back(part);
    }
  }

  bool isMarked(uint32_t at, uint32_t length) const {
    const auto of = marks_.subspan(std::min<size_t>(at, marks_.size()));
    const auto differs = [](uint8_t mark) { return (mark & kDiffersMark) != 0; };
    return std::ranges::any_of(of.first(std::min<size_t>(length, of.size())), differs);
  }

  const LineRuler& ruler_;
  const RowWindow& window_;
  const RowCharacters& line_;
  const std::span<const uint8_t> marks_;
  RowLayout& layout_;
  Colour markedForeground_ = 0;
  Colour markedBackground_ = 0;
  uint32_t selectionBegin_ = 0;
  uint32_t selectionEnd_ = 0;
  int64_t end_ = 0;  // where the text ends so far, from the line's left
};

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
  layout.selected.clear();
  layout.textEnd = 0;
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
  const RowCharacters line(source.text.stretch(start, end), source.utf8);
  TextLayouter layouter(source, window, line, marks, layout);
  layouter.setMarkedColours(markedForeground, markedBackground);
  layouter.setSelection(std::clamp(window.selectionBegin, start, end) - start,
                        std::clamp(window.selectionEnd, start, end) - start);
  layouter.layOut();
}

}  // namespace merivane
