#include "mergeview/side_commands.h"

#include <utility>

#include "mergeview/edit_record.h"

namespace merivane {
namespace {

std::string_view wholeText(ViewState& view, int side) {
  TextBuffer& text = view.documents().text[side];
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
  Edit edit{EditKind::merge, side, 0, view.text(side).size(), {}, caretAfter, {0, view.rowCount()}};
  if (!source.extract(0, source.size(), edit.inserted)) return view.host().reportOutOfMemory();
  performEdit(view, history, std::move(edit));
}

}  // namespace

bool canReplaceSide(const ViewState& view, int side) { return !view.documents().readOnly[side]; }

void replaceSide(ViewState& view, UndoHistory& history, int side, ReplaceOwner& owner) {
  if (!canReplaceSide(view, side) || !owner.mayReplace()) return;
  const int source = 1 - side;
  Documents& documents = view.documents();
  TextBuffer copy;
  DiffModel model;
  if (!copy.copyFrom(documents.text[source]) || !compare(view, source, source, model)) {
    return view.host().reportOutOfMemory();
  }
  if (!owner.saveText(side, copy, documents.lineEndKind[source])) return copyAsEdit(view, history, side);

  documents.text[side] = std::move(copy);
  documents.model = std::move(model);
  documents.lineEndKind[side] = documents.lineEndKind[source];
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
