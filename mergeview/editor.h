#pragma once

#include <cstdint>
#include <string_view>

#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"

namespace merivane {

/// What the user does to the active side's text at the caret. Each action that changes something is one
/// record of the history and leaves the caret where it happened, in view and without a selection. A side that
/// may not be written ignores them all. When memory runs out the user is told and nothing has changed.
class Editor {
 public:
  Editor(ViewState& view, UndoHistory& history) : view_(view), history_(history) {}

  /// A character from the keyboard, `count` times over: what it stands for is typed, starts a line or
  /// deletes. Nothing with Ctrl held; line feed and escape only beep.
  void characterInput(char32_t c, int count, bool ctrl);

  /// A character that the text's encoding cannot hold is refused: nothing else takes its place.
  void typeChar(char32_t c);
  void newLine() { insertText("\n"); }

  /// Puts bytes, with "\n" as line ends, in the place of the selection.
  void insertText(std::string_view bytes);

  /// Delete the selection or else one character. From and in a filler row they only move the caret.
  void backspace();
  void deleteForward();

  void deleteSelection();
  void deleteRow();
  void deleteToLineEnd();

  void cut();
  void copy();

  void paste();

  /// Puts UTF-8 in the place of the selection, converted where the text holds single bytes. The user is asked
  /// once when there are characters that it cannot hold.
  void insertUnicode(ByteArray&& text);

 private:
  int side() const { return view_.activeSide(); }
  bool isReadOnly() const { return view_.file(side()).readOnly; }
  uint32_t caret() const { return view_.caretPos(side()); }
  uint32_t nextCharacter() const;
  uint32_t previousCharacter() const;
  RowRange rowsFrom(uint32_t position) const;
  void erase(uint32_t begin, uint32_t end);
  void eraseNotSelection(uint32_t begin, uint32_t end);

  ViewState& view_;
  UndoHistory& history_;
};

/// Turns UTF-8 into single bytes of the code page. Where it has not all characters, the user is asked whether
/// they may become "?"; returns the answer.
bool confirmedCodePage(ViewState& view, ByteArray& text);

/// Puts the text of [begin, end) on the clipboard, in UTF-8 with CR LF line ends. False when that failed, of
/// which the user has been told.
bool copyToClipboard(ViewState& view, int side, uint32_t begin, uint32_t end);

}  // namespace merivane
