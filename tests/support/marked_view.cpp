#include "tests/support/marked_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "mergeview/navigation.h"

namespace merivane {
namespace {

std::vector<std::string> split(std::string_view text, std::string_view separator) {
  std::vector<std::string> parts;
  for (size_t end; (end = text.find(separator)) != std::string_view::npos;
       text.remove_prefix(end + separator.size())) {
    parts.emplace_back(text.substr(0, end));
  }
  parts.emplace_back(text);
  return parts;
}

struct Mark {
  int side = -1;
  uint32_t row = 0;
  uint32_t position = 0;
};

}  // namespace

bool FakeHost::wasInvalidated(uint32_t row, Panes panes) const {
  return std::any_of(invalidated.begin(), invalidated.end(), [&](const Invalidated& i) {
    return i.rows.begin <= row && row < i.rows.end && (i.panes == panes || i.panes == Panes::both);
  });
}

bool FakeHost::setClipboardText(std::string_view text) {
  clipboard = text;
  return true;
}

FileComparison comparisonOf(std::string_view left, std::string_view right) {
  FileComparison comparison;
  const std::string_view texts[2] = {left, right};
  for (const int side : {0, 1}) EXPECT_TRUE(comparison.documents[side].text.assign(texts[side]));
  EXPECT_EQ(compareTexts(left, right, {}, nullptr, comparison.model), Result::success);
  return comparison;
}

MarkedView::MarkedView(std::string_view marked) : state_(std::make_unique<ViewState>(host_)) {
  std::string texts[2];
  Mark caret, anchor;
  const std::vector<std::string> rows = split(marked, " / ");
  for (uint32_t row = 0; row < rows.size(); ++row) {
    const std::vector<std::string> cells = split(rows[row], " # ");
    for (const int side : {0, 1}) {
      std::string cell;
      for (const char c : cells[static_cast<size_t>(side)]) {
        const auto position = static_cast<uint32_t>(texts[side].size() + cell.size());
        if (c == '|') {
          caret = {side, row, position};
        } else if (c == '[') {
          anchor = {side, row, position};
        } else {
          cell += c;
        }
      }
      if (cell == "-") continue;
      const bool unended = cell.ends_with('~');
      if (unended) cell.pop_back();
      texts[side] += cell + (unended ? "" : "\n");
    }
  }
  ViewOptions options;
  options.syncScroll = false;
  state_->setOptions(options);
  state_->resize(2 * (8 + 320 + 10), 160);
  state_->take(comparisonOf(texts[0], texts[1]), AfterComparison::top);
  if (caret.side >= 0) {
    state_->activate(caret.side);
    if (anchor.side >= 0) state_->moveCaret(anchor.row, anchor.position, false);
    state_->moveCaret(caret.row, caret.position, anchor.side >= 0);
  }
  host_ = {};
  EXPECT_EQ(this->marked(), marked);
}

std::string MarkedView::marked() const {
  const ViewState& view = *state_;
  std::string result;
  const int active = view.activeSide();
  const uint32_t anchorRow = view.rowOf(active, view.anchor());
  for (uint32_t row = 0; row < view.rowCount(); ++row) {
    for (const int side : {0, 1}) {
      const uint32_t start = view.rowStart(side, row);
      std::string cell(
          const_cast<ViewState&>(view).documents().text[side].view(start, view.rowEnd(side, row)));
      if (view.isFiller(side, row)) {
        EXPECT_EQ(cell, "") << "row " << row;
        cell = "-";
      } else if (cell.ends_with('\n')) {
        cell.back() = ' ';
      } else {
        cell += '~';
      }
      const auto mark = [&](char c, uint32_t position) { cell.insert(position - start, 1, c); };
      const bool showsAnchor = side == active && view.hasSelection() && row == anchorRow;
      const bool showsCaret = side == active && row == view.caretRow();
      if (showsCaret && showsAnchor && view.anchor() < view.caretPos(side)) {
        mark('|', view.caretPos(side));
        mark('[', view.anchor());
      } else {
        if (showsAnchor) mark('[', view.anchor());
        if (showsCaret) mark('|', view.caretPos(side));
      }
      while (cell.ends_with(' ')) cell.pop_back();
      result += (side == 0 ? row == 0 ? "" : " / " : " # ") + cell;
    }
  }
  return result;
}

MarkedView& MarkedView::press(std::string_view keys) {
  static const std::map<std::string, Key> moves = {
      {"left", Key::left}, {"right", Key::right}, {"up", Key::up},         {"down", Key::down},
      {"home", Key::home}, {"end", Key::end},     {"pageup", Key::pageUp}, {"pagedown", Key::pageDown},
  };
  using Command = void (*)(ViewState&, UndoHistory&);
  constexpr auto line = BlockKind::line, block = BlockKind::difference;
  static const std::map<std::string, Command> commands = {
      {"enter", [](ViewState& v, UndoHistory& h) { Editor(v, h).characterInput('\r', 1, false); }},
      {"backspace", [](ViewState& v, UndoHistory& h) { Editor(v, h).characterInput('\b', 1, false); }},
      {"delete", [](ViewState& v, UndoHistory& h) { Editor(v, h).deleteForward(); }},
      {"insert", [](ViewState& v, UndoHistory&) { v.toggleOverwrite(); }},
      {"cut", [](ViewState& v, UndoHistory& h) { Editor(v, h).cut(); }},
      {"copy", [](ViewState& v, UndoHistory& h) { Editor(v, h).copy(); }},
      {"paste", [](ViewState& v, UndoHistory& h) { Editor(v, h).paste(); }},
      {"delete-row", [](ViewState& v, UndoHistory& h) { Editor(v, h).deleteRow(); }},
      {"delete-to-end", [](ViewState& v, UndoHistory& h) { Editor(v, h).deleteToLineEnd(); }},
      {"undo", [](ViewState&, UndoHistory& h) { h.undo(); }},
      {"redo", [](ViewState&, UndoHistory& h) { h.redo(); }},
      {"copy-line-left", [](ViewState& v, UndoHistory& h) { copyBlock(v, h, line, 0); }},
      {"copy-line-right", [](ViewState& v, UndoHistory& h) { copyBlock(v, h, line, 1); }},
      {"copy-block-left", [](ViewState& v, UndoHistory& h) { copyBlock(v, h, block, 0); }},
      {"copy-block-right", [](ViewState& v, UndoHistory& h) { copyBlock(v, h, block, 1); }},
      {"delete-line", [](ViewState& v, UndoHistory& h) { deleteBlock(v, h, line); }},
      {"delete-block", [](ViewState& v, UndoHistory& h) { deleteBlock(v, h, block); }},
      {"clip-line", [](ViewState& v, UndoHistory&) { blockToClipboard(v, line); }},
      {"clip-block", [](ViewState& v, UndoHistory&) { blockToClipboard(v, block); }},
  };
  std::istringstream words{std::string(keys)};
  for (std::string word; words >> word;) {
    if (const auto command = commands.find(word); command != commands.end()) {
      command->second(*state_, history_);
      continue;
    }
    bool ctrl = false, shift = false;
    for (; word.size() > 2 && word[1] == '-'; word.erase(0, 2)) (word[0] == 'C' ? ctrl : shift) = true;
    if (word.size() == 1) {
      Editor(*state_, history_).characterInput(word[0], 1, ctrl);
    } else {
      pressKey(*state_, moves.at(word), ctrl, shift);
    }
  }
  return *this;
}

}  // namespace merivane
