#include "tests/support/edit_run.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "base/utf8.h"
#include "mergeview/edit.h"
#include "mergeview/editor.h"
#include "mergeview/find.h"
#include "mergeview/merge_commands.h"
#include "mergeview/navigation.h"
#include "mergeview/side_commands.h"
#include "tests/support/comparison_oracle.h"

namespace merivane {
namespace {

struct EditCommand {
  std::string_view name;
  void (*run)(ViewState& view, UndoHistory& history);
};

using V = ViewState;
using H = UndoHistory;
constexpr auto kLine = BlockKind::line, kBlock = BlockKind::difference;

constexpr EditCommand kCommands[] = {
    {"enter", [](V& v, H& h) { Editor(v, h).characterInput('\r', 1, false); }},
    {"backspace", [](V& v, H& h) { Editor(v, h).characterInput('\b', 1, false); }},
    {"delete", [](V& v, H& h) { Editor(v, h).deleteForward(); }},
    {"insert", [](V& v, H&) { v.toggleOverwrite(); }},
    {"cut", [](V& v, H& h) { Editor(v, h).cut(); }},
    {"copy", [](V& v, H& h) { Editor(v, h).copy(); }},
    {"paste", [](V& v, H& h) { Editor(v, h).paste(); }},
    {"delete-row", [](V& v, H& h) { Editor(v, h).deleteRow(); }},
    {"delete-to-end", [](V& v, H& h) { Editor(v, h).deleteToLineEnd(); }},
    {"undo", [](V& v, H& h) { undo(v, h); }},
    {"redo", [](V& v, H& h) { redo(v, h); }},
    {"copy-line-left", [](V& v, H& h) { copyBlock(v, h, kLine, 0); }},
    {"copy-line-right", [](V& v, H& h) { copyBlock(v, h, kLine, 1); }},
    {"copy-block-left", [](V& v, H& h) { copyBlock(v, h, kBlock, 0); }},
    {"copy-block-right", [](V& v, H& h) { copyBlock(v, h, kBlock, 1); }},
    {"delete-line", [](V& v, H& h) { deleteBlock(v, h, kLine); }},
    {"delete-block", [](V& v, H& h) { deleteBlock(v, h, kBlock); }},
    {"clip-line", [](V& v, H&) { blockToClipboard(v, kLine); }},
    {"clip-block", [](V& v, H&) { blockToClipboard(v, kBlock); }},
    {"select-all", [](V& v, H&) { selectAll(v); }},
    {"switch-sides", [](V& v, H& h) { switchSides(v, h) ? void() : v.host().reportOutOfMemory(); }},
    {"switch-pane", [](V& v, H&) { switchPane(v); }},
    {"next-difference", [](V& v, H&) { goToNextDifference(v); }},
    {"previous-difference", [](V& v, H&) { goToPreviousDifference(v); }},
    {"next-mark", [](V& v, H&) { goToNextMark(v); }},
    {"previous-mark", [](V& v, H&) { goToPreviousMark(v); }},
    {"find-next", [](V& v, H&) { findNext(v, {"AB"}); }},
    {"find-previous", [](V& v, H&) { findPrevious(v, {"AB"}); }},
};

constexpr std::string_view kKeys[] = {"left", "right", "up", "down", "home", "end", "pageup", "pagedown"};

}  // namespace

std::string changesText(const ViewChanges& changes) {
  std::string text;
  for (uint32_t row = 0; row < 16; ++row) {
    const auto within = [row](RowRange rows) { return row >= rows.begin && row < rows.end ? 1 : 0; };
    text += ".lrb"[within(changes.rows[0]) + 2 * within(changes.rows[1])];
  }
  text.erase(text.find_last_not_of('.') + 1);
  const std::pair<bool, const char*> flags[] = {
      {changes.caret, "caret"},     {changes.scrolled, "scrolled"}, {changes.scrollRanges, "ranges"},
      {changes.edges, "edges"},     {changes.looks, "looks"},       {changes.everything, "all"},
      {changes.history, "history"}, {changes.modified, "modified"},
  };
  for (const auto& [set, name] : flags) {
    if (set) text += (text.empty() ? "" : " ") + std::string(name);
  }
  return text;
}

EditRun::EditRun(std::string_view left, std::string_view right, const CompareOptions& options) {
  view_.setCompareOptions(options);
  view_.resize(2 * (8 + 320 + 10), 160);
  load(left, right);
  view_.takeChanges();
}

std::string EditRun::text(int side) const {
  const auto [head, tail] = view_.text(side).stretch(0, view_.text(side).size());
  return std::string(head) + std::string(tail);
}

void EditRun::load(std::string_view left, std::string_view right, AfterComparison after) {
  FileComparison comparison;
  if (!comparison.documents[0].text.assign(left) || !comparison.documents[1].text.assign(right) ||
      compareTexts(left, right, view_.compareOptions(), nullptr, comparison.model) != Result::success) {
    throw std::bad_alloc();
  }
  wellFormed_ = true;
  for (TextDocument& document : comparison.documents) {
    document.encoding = detectEncoding(document.text.view());
    wellFormed_ = wellFormed_ && document.encoding != TextEncoding::singleByte;
  }
  view_.take(std::move(comparison), {"left", "right"}, after);
  first_ = std::string(left) + '#' + std::string(right);
  swapped_ = std::string(right) + '#' + std::string(left);
}

void EditRun::press(std::string_view keys) {
  while (!keys.empty()) {
    std::string_view word = keys.substr(0, keys.find(' '));
    keys.remove_prefix(std::min(keys.size(), word.size() + 1));
    bool ctrl = false, shift = false;
    for (; word.size() > 2 && word[1] == '-'; word.remove_prefix(2)) (word[0] == 'C' ? ctrl : shift) = true;
    const auto key = std::find(std::begin(kKeys), std::end(kKeys), word);
    const auto command = std::find_if(std::begin(kCommands), std::end(kCommands),
                                      [word](const EditCommand& each) { return each.name == word; });
    if (word.empty()) continue;
    if (const size_t at = word.find('@'); at != std::string_view::npos) {
      int x = 0, y = 0;
      std::sscanf(std::string(word.substr(at)).c_str(), "@%d,%d", &x, &y);
      if (word.starts_with("drag")) {
        mouse_.drag(x, y);
      } else {
        mouse_.press(x, y, word[at - 1] - '0', shift);
      }
    } else if (const CodePoint typed = codePointAt(word, 0); typed.length == word.size()) {
      Editor(view_, history_).characterInput(typed.value, 1, ctrl);
    } else if (key != std::end(kKeys)) {
      pressKey(view_, static_cast<Key>(key - kKeys), ctrl, shift);
    } else if (command != std::end(kCommands)) {
      command->run(view_, history_);
    } else {
      throw std::invalid_argument(std::string(word));
    }
  }
}

void EditRun::step(const std::function<uint32_t(uint32_t bound)>& below) {
  constexpr std::string_view often[] = {"a",     "a",     "b",         "\t",   "\xC3\xA9", "\xCC\x81",
                                        "enter", "enter", "backspace", "undo", "redo"};
  const uint32_t row = below(view_.rowCount());
  switch (below(4)) {
    case 0:
      return view_.moveCaret(row, view_.rowStart(view_.activeSide(), row) + below(9), below(4) == 0);
    case 1:
      return pressKey(view_, static_cast<Key>(below(8)), below(4) == 0, below(2) == 0);
    case 2:
      return press(kCommands[below(std::size(kCommands))].name);
    default:
      return press(often[below(std::size(often))]);
  }
}

std::string EditRun::place() const {
  const auto pair = [](uint32_t a, uint32_t b) { return std::to_string(a) + "," + std::to_string(b); };
  const int side = view_.activeSide();
  const uint32_t anchorRow = view_.rowOf(side, view_.anchor());
  std::string place = pair(view_.caretRow(), view_.caretColumn());
  if (view_.hasSelection()) {
    place = pair(anchorRow, view_.anchor() - view_.rowStart(side, anchorRow)) + "-" + place;
  }
  if (view_.topRow() > 0) place += " top " + std::to_string(view_.topRow());
  if (view_.hScroll(side) > 0) place += " left " + std::to_string(view_.hScroll(side));
  return place;
}

std::string EditRun::marked(int side) const {
  const bool active = side == view_.activeSide();
  const bool selection = active && view_.hasSelection();
  const uint32_t anchorRow = selection ? view_.rowOf(side, view_.anchor()) : 0;
  std::string marked;
  for (uint32_t row = 0; row < view_.rowCount(); ++row) {
    const uint32_t start = view_.rowStart(side, row);
    std::string line = text(side).substr(start, view_.rowEnd(side, row) - start);
    std::replace(line.begin(), line.end(), '\n', '/');
    if (view_.isFiller(side, row)) line = "~";
    const auto mark = [&](bool here, uint32_t position, const char* sign) {
      if (here) line.insert(position - start, sign);
    };
    const bool caretFirst = view_.caretPos(side) <= view_.anchor();
    const bool anchorHere = selection && row == anchorRow;
    mark(anchorHere && caretFirst, view_.anchor(), "^");
    mark(active && row == view_.caretRow(), view_.caretPos(side), "|");
    mark(anchorHere && !caretFirst, view_.anchor(), "^");
    marked += line;
  }
  return marked;
}

std::string EditRun::fault() const {
  const DiffModel& model = view_.model();
  std::string wrong = comparisonFault(model, text(0), text(1), view_.compareOptions());
  if (!wrong.empty()) return wrong;
  for (const int side : {0, 1}) {
    if (wellFormed_ && !isUtf8(text(side))) return "a text that is no longer well-formed";
  }
  // So few rows are all compared anew, and therefore as if there had been no edit.
  DiffModel fresh;
  if (model.rowCount() <= 40) compareTexts(text(0), text(1), view_.compareOptions(), nullptr, fresh);
  for (uint32_t i = 0; i < fresh.rowCount(); ++i) {
    const auto row = [i](const DiffModel& m) {
      return std::tuple(m.status(i), m.position(0, i), m.position(1, i));
    };
    if (i >= model.rowCount() || row(model) != row(fresh)) return "rows that are not those of the texts";
  }
  const int side = view_.activeSide();
  const uint32_t row = view_.caretRow(), caret = view_.caretPos(side);
  if (row >= view_.rowCount() || view_.topRow() > view_.maxTopRow()) return "beyond the rows";
  const uint32_t start = view_.rowStart(side, row);
  const LinePlace place = view_.placeAt(side, row, caret);
  if (caret < start || caret > view_.rowEnd(side, row) || place.column != view_.caretColumn() ||
      place.position != caret)
    return "the caret's place";
  const uint32_t anchor = view_.anchor();
  if (anchor > view_.text(side).size()) return "the anchor outside the text";
  if (view_.placeAt(side, view_.rowOf(side, anchor), anchor).position != anchor)
    return "the anchor inside a character";
  return view_.caretPos(1 - side) > view_.text(1 - side).size() ? "the other caret outside its text" : "";
}

std::string EditRun::state() const {
  std::string state = sideState(0) + '#' + sideState(1) + '#' + place();
  for (const uint32_t number : {view_.caretPos(0), view_.caretPos(1)}) state += '#' + std::to_string(number);
  for (const bool flag : {view_.activeSide() == 1, history_.canUndo(), history_.canRedo()})
    state += flag ? '+' : '-';
  return state;
}

std::string EditRun::undoAndRedoAll() {
  std::string wrong;
  const auto all = [&](bool (*go)(ViewState&, UndoHistory&)) {
    while (wrong.empty() && go(view_, history_)) wrong = fault();
    return sideState(0) + '#' + sideState(1);
  };
  const std::string last = all(redo);
  const std::string start = all(undo);
  if (start != first_ && start != swapped_) wrong += " undoing does not lead back";
  if (all(redo) != last) wrong += " redoing does not lead to the end";
  return wrong;
}

}  // namespace merivane
