#include "mergeview/exact_marks.h"

#include <algorithm>
#include <new>
#include <utility>

#include "mergeview/local_comparison.h"

namespace merivane {
namespace {

uint32_t windowEnd(const ViewState& view, int side, RowRange window) {
  return view.rowEnd(side, window.end - 1);
}

}  // namespace

std::unique_ptr<ExactMarks> ExactMarks::of(const ViewState& view) {
  const DiffModel& model = view.model();
  if (model.provisionalRows() == 0) return nullptr;
  uint32_t row = 0;
  while (!model.marks(row).provisional()) ++row;
  try {
    auto marks = std::make_unique<ExactMarks>();
    marks->window_ = comparisonWindow(model, {row, row + 1});
    marks->options_ = view.compareOptions();
    if (view.pair().rowsOfOptions) marks->known_ = knownChanges(model, marks->window_);
    std::erase_if(marks->known_, [](const KnownChange& each) { return each.marks.provisional(); });
    for (const int side : {0, 1}) {
      const uint32_t begin = marks->begin_[side] = view.rowStart(side, marks->window_.begin);
      if (!view.text(side).extract(begin, windowEnd(view, side, marks->window_), marks->texts_[side]))
        return nullptr;
      for (KnownChange& each : marks->known_) each.start[side] -= begin;
    }
    return marks;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

bool ExactMarks::isOf(const ViewState& view) const {
  if (window_.end > view.rowCount() || options_ != view.compareOptions()) return false;
  for (const int side : {0, 1}) {
    const uint32_t begin = begin_[side], size = texts_[side].size();
    if (view.rowStart(side, window_.begin) != begin || windowEnd(view, side, window_) != begin + size)
      return false;
    const auto [head, tail] = view.text(side).stretch(begin, begin + size);
    const std::string_view text = texts_[side].view();
    if (text.substr(0, head.size()) != head || text.substr(head.size()) != tail) return false;
  }
  return true;
}

void ExactMarks::find(const AbortFlag* abort) {
  const Result result = compareTexts(texts_[0].view(), texts_[1].view(), options_, abort, found_, known_);
  if (result == Result::outOfMemory) throw std::bad_alloc();
  if (result != Result::success) return;
  for (const int side : {0, 1}) found_.shiftPositions(side, 0, begin_[side]);
}

bool ExactMarks::apply(ViewState& view, UndoHistory& history) {
  if (found_.rowCount() == 0) return false;
  DiffModel& model = view.pair().model;
  bool sameRows = found_.rowCount() == window_.size();
  for (uint32_t i = 0; sameRows && i < window_.size(); ++i) {
    const uint32_t row = window_.begin + i;
    sameRows = model.status(row) == found_.status(i) && model.position(0, row) == found_.position(0, i) &&
               model.position(1, row) == found_.position(1, i);
  }
  if (sameRows) {
    for (uint32_t i = 0; i < window_.size(); ++i) {
      const uint32_t row = window_.begin + i;
      if (!model.marks(row).provisional()) continue;
      model.setMarks(row, found_.marks(i));
      for (const int side : {0, 1}) view.changes().addRows(side, {row, row + 1});
    }
    return true;
  }
  const RowRange fresh = {window_.begin, window_.begin + found_.rowCount()};
  try {
    model.replaceRows(window_, std::move(found_), {0, fresh.size()});
  } catch (const std::bad_alloc&) {
    return false;
  }
  history.forgetRows();
  const int side = view.activeSide();
  view.placeCaret(side, {view.caretPos(side), view.anchor(), view.caretRow()});
  view.rowsChanged(fresh);
  view.changes().everything = true;
  return true;
}

}  // namespace merivane
