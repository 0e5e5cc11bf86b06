#include "mergeview/side_commands.h"

#include <utility>

#include "mergeview/edit.h"

namespace merivane {
namespace {

std::string_view wholeText(ViewState& view, int side) {
  TextBuffer& text = view.file(side).text;
  return text.view(0, text.size());
}

/// Compares a text with another, or with itself, by the view's options.
bool compare(ViewState& view, int left, int right, DiffModel& model) {
  return compareTexts(wholeText(view, left), wholeText(view, right), view.compareOptions(), nullptr, model) ==
         Result::success;
}

}  // namespace

bool copyOtherSide(ViewState& view, int side, SideCopy& copy) {
  const int source = 1 - side;
  copy.file.lineEndKind = view.file(source).lineEndKind;
  copy.file.encoding = view.file(source).encoding;
  return copy.file.text.copyFrom(view.text(source)) && compare(view, source, source, copy.model);
}

void takeCopy(ViewState& view, UndoHistory& history, int side, SideCopy&& copy) {
  view.file(side) = std::move(copy.file);
  view.pair().model = std::move(copy.model);
  history.clear();
  history.markSaved(side);
  view.restart(side);
}

void copyAsEdit(ViewState& view, UndoHistory& history, int side) {
  const TextBuffer& source = view.text(1 - side);
  const int active = view.activeSide();
  const uint32_t caretAfter = side == active ? 0 : view.caretPos(active);
  Edit edit{side, 0, view.text(side).size(), {}, caretAfter, {0, view.rowCount()}};
  if (!source.extract(0, source.size(), edit.inserted)) return view.host().reportOutOfMemory();
  if (performEdit(view, history, std::move(edit))) view.changes().everything = true;
}

bool switchSides(ViewState& view, UndoHistory& history) {
  DiffModel model;
  if (!compare(view, 1, 0, model)) return false;
  view.swapSides(std::move(model));
  history.swapSides();
  return true;
}

}  // namespace merivane
