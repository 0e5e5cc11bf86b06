#include "mergeview/find.h"

#include "base/single_bytes.h"
#include "base/utf16.h"
#include "display/code_points.h"

namespace merivane {
namespace {

enum class Direction { next, previous };

/// Searches rows one by one and shows the match.
class Search {
 public:
  Search(ViewState& view, const FindQuery& query, Direction direction)
      : view_(view),
        side_(view.activeSide()),
        direction_(direction),
        finder_(query, isUnicode(view.file(side_).encoding)) {}

  bool inRow(uint32_t row) { return inStretch(row, view_.rowStart(side_, row), view_.rowEnd(side_, row)); }

  bool inStretch(uint32_t row, uint32_t a, uint32_t b) {
    if (a >= b) return false;
    const RowCharacters stretch = view_.characters(side_, a, b);
    const auto found = direction_ == Direction::next ? finder_.first(stretch) : finder_.last(stretch);
    if (!found) return false;
    view_.showRows({row, row + 1});
    view_.moveCaret(row, a + found->begin, false);
    view_.moveCaret(row, a + found->end, true);
    view_.showCaret();
    return true;
  }

 private:
  ViewState& view_;
  const int side_;
  const Direction direction_;
  const Finder finder_;
};

/// The row of an edge of the selection; the caret's own where it stands there.
uint32_t rowOfEdge(const ViewState& view, uint32_t edge) {
  const int side = view.activeSide();
  return edge == view.caretPos(side) ? view.caretRow() : view.rowOf(side, edge);
}

}  // namespace

Finder::Finder(const FindQuery& query, bool utf8)
    : utf8_(utf8), matchCase_(query.matchCase), wholeWord_(query.wholeWord) {
  const std::string_view text = query.findText;
  for (uint32_t at = 0; at < text.size();) {
    const CodePoint code = codePointAt(text, at);
    at += code.length;
    if (utf8) {
      sought_ += folded(code.value);
    } else if (const auto byte = codePageByte(code.value)) {
      sought_ += folded(static_cast<uint8_t>(*byte));
    } else {
      sought_.clear();
      return;
    }
  }
}

std::optional<CharacterRun> Finder::first(const RowCharacters& stretch) const {
  for (uint32_t index = 0; index < stretch.size(); ++index) {
    if (const auto match = matchAt(stretch, index)) return match;
  }
  return std::nullopt;
}

std::optional<CharacterRun> Finder::last(const RowCharacters& stretch) const {
  for (uint32_t index = stretch.size(); index-- > 0;) {
    if (const auto match = matchAt(stretch, index)) return match;
  }
  return std::nullopt;
}

std::optional<CharacterRun> Finder::matchAt(const RowCharacters& stretch, uint32_t index) const {
  uint32_t end = index;
  for (const char32_t sought : sought_) {
    if (end == stretch.size()) return std::nullopt;
    const CodePoint found =
        utf8_ ? codePointAt(stretch.bytes(), end) : CodePoint{static_cast<uint8_t>(stretch.bytes()[end]), 1};
    if (folded(found.value) != sought) return std::nullopt;
    end += found.length;
  }
  const CharacterRun match = {index, end};
  if (index == end || !stretch.isBoundary(index) || !stretch.isBoundary(end)) return std::nullopt;
  return wholeWord_ && !standsAlone(stretch, match) ? std::nullopt : std::optional(match);
}

char32_t Finder::folded(char32_t codePoint) const {
  if (matchCase_ || (!utf8_ && codePoint >= 0x80)) return codePoint;
  return foldedCase(codePoint);
}

std::optional<std::string> selectionToFind(const ViewState& view) {
  const int side = view.activeSide();
  ByteArray selected;
  if (!view.hasSelection() || view.selectionEnd() - view.selectionBegin() > 3 * kMaxFindText ||
      !view.text(side).extract(view.selectionBegin(), view.selectionEnd(), selected) ||
      !(isUnicode(view.file(side).encoding) || fromCodePage(selected)) ||
      selected.view().find('\n') != std::string::npos) {
    return std::nullopt;
  }
  if (utf16FromUtf8<char16_t>(selected.view()).size() > kMaxFindText) return std::nullopt;
  return std::string(selected.view());
}

bool findNext(ViewState& view, const FindQuery& query) {
  const uint32_t from = rowOfEdge(view, view.selectionEnd());
  const uint32_t rows = view.rowCount();
  Search search(view, query, Direction::next);
  if (search.inStretch(from, view.selectionEnd(), view.rowEnd(view.activeSide(), from))) return true;
  for (uint32_t row = from + 1; row < rows; ++row) {
    if (search.inRow(row)) return true;
  }
  for (uint32_t row = 0; row <= from; ++row) {
    if (search.inRow(row)) return true;
  }
  return false;
}

bool findPrevious(ViewState& view, const FindQuery& query) {
  const uint32_t from = rowOfEdge(view, view.selectionBegin());
  Search search(view, query, Direction::previous);
  if (search.inStretch(from, view.rowStart(view.activeSide(), from), view.selectionBegin())) return true;
  for (uint32_t row = from; row-- > 0;) {
    if (search.inRow(row)) return true;
  }
  for (uint32_t row = view.rowCount(); row-- > from;) {
    if (search.inRow(row)) return true;
  }
  return false;
}

}  // namespace merivane
