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

/// The copy as an action that can be undone.
void copyAsEdit(ViewState& view, UndoHistory& history, int side) {
  const TextBuffer& source = view.text(1 - side);
  const int active = view.activeSide();
  const uint32_t caretAfter = side == active ? 0 : view.caretPos(active);
  Edit edit{side, 0, view.text(side).size(), {}, caretAfter, {0, view.rowCount()}};
  if (!source.extract(0, source.size(), edit.inserted)) return view.host().reportOutOfMemory();
  if (performEdit(view, history, std::move(edit))) view.changes().everything = true;
}

}  // namespace

bool canReplaceSide(const ViewState& view, int side) { return !view.file(side).readOnly; }

void replaceSide(ViewState& view, UndoHistory& history, int side, ReplaceOwner& owner) {
  if (!canReplaceSide(view, side) || !owner.mayReplace()) return;
  const int source = 1 - side;
  EditedFile& target = view.file(side);
  const EditedFile& other = view.file(source);
  TextBuffer copy;
  DiffModel model;
  if (!copy.copyFrom(other.text) || !compare(view, source, source, model)) {
    return view.host().reportOutOfMemory();
  }
  if (!owner.saveText(side, copy, other.lineEndKind)) return copyAsEdit(view, history, side);

  target.text = std::move(copy);
  target.lineEndKind = other.lineEndKind;
  view.pair().model = std::move(model);
  history.clear();
  history.markSaved(side);
  view.restart(side);
  owner.onSideSaved(side);
}

bool switchSides(ViewState& view, UndoHistory& history) {
  DiffModel model;
  if (!compare(view, 1, 0, model)) {
    view.host().reportOutOfMemory();
    return false;
  }
  view.swapSides(std::move(model));
  history.swapSides();
  return true;
}

}  // namespace merivane
