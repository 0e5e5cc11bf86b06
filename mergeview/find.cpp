#include "mergeview/find.h"

#include <algorithm>
#include <utility>

#include "engine/compare_options.h"
#include "mergeview/words.h"

namespace merivane {
namespace {

/// Tests the places of one stretch for a match.
class Matcher {
 public:
  Matcher(std::string_view stretch, const FindQuery& query) : stretch_(stretch), query_(query) {}

  bool canMatch() const { return !query_.findText.empty() && query_.findText.size() <= stretch_.size(); }
  uint32_t lastIndex() const { return static_cast<uint32_t>(stretch_.size() - query_.findText.size()); }

  bool matchesAt(uint32_t index) const {
    const std::string_view found = stretch_.substr(index, query_.findText.size());
    const auto same = [this](char a, char b) {
      return a == b || (!query_.matchCase && foldCase(a) == foldCase(b));
    };
    if (!same(found.front(), query_.findText.front())) return false;
    return std::equal(found.begin(), found.end(), query_.findText.begin(), same) &&
           (!query_.wholeWord || standsAlone(index));
  }

 private:
  bool standsAlone(uint32_t index) const {
    if (index > 0 && isWordCharacter(stretch_[index - 1])) return false;
    return index == lastIndex() || !isWordCharacter(stretch_[index + query_.findText.size()]);
  }

  const std::string_view stretch_;
  const FindQuery& query_;
};

enum class Direction { next, previous };

/// Searches rows one by one and shows the match.
class Search {
 public:
  Search(ViewState& view, const FindQuery& query, Direction direction)
      : view_(view), query_(query), side_(view.activeSide()), direction_(direction) {}

  bool inRow(uint32_t row) { return inStretch(row, view_.rowStart(side_, row), view_.rowEnd(side_, row)); }

  bool inStretch(uint32_t row, uint32_t a, uint32_t b) {
    if (a >= b) return false;
    const std::string_view stretch = view_.file(side_).text.view(a, b);
    const auto found = direction_ == Direction::next ? findFirst(stretch, query_) : findLast(stretch, query_);
    if (!found) return false;
    view_.showRows({row, row + 1});
    view_.moveCaret(row, a + *found, false);
    view_.moveCaret(row, a + *found + static_cast<uint32_t>(query_.findText.size()), true);
    view_.showCaret();
    return true;
  }

 private:
  ViewState& view_;
  const FindQuery& query_;
  const int side_;
  const Direction direction_;
};

/// The row of an edge of the selection; the caret's own where it stands there.
uint32_t rowOfEdge(const ViewState& view, uint32_t edge) {
  const int side = view.activeSide();
  return edge == view.caretPos(side) ? view.caretRow() : view.rowOf(side, edge);
}

}  // namespace

std::optional<uint32_t> findFirst(std::string_view stretch, const FindQuery& query) {
  const Matcher matcher(stretch, query);
  if (!matcher.canMatch()) return std::nullopt;
  for (uint32_t index = 0; index <= matcher.lastIndex(); ++index) {
    if (matcher.matchesAt(index)) return index;
  }
  return std::nullopt;
}

std::optional<uint32_t> findLast(std::string_view stretch, const FindQuery& query) {
  const Matcher matcher(stretch, query);
  if (!matcher.canMatch()) return std::nullopt;
  for (uint32_t index = matcher.lastIndex() + 1; index-- > 0;) {
    if (matcher.matchesAt(index)) return index;
  }
  return std::nullopt;
}

std::optional<std::string> selectionToFind(const ViewState& view) {
  const uint32_t size = view.selectionEnd() - view.selectionBegin();
  if (size == 0 || size > kMaxFindText) return std::nullopt;
  const auto [head, tail] = view.text(view.activeSide()).stretch(view.selectionBegin(), view.selectionEnd());
  std::string selected(head);
  selected += tail;
  return selected.find('\n') == std::string::npos ? std::optional(std::move(selected)) : std::nullopt;
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
