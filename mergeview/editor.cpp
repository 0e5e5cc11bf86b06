#include "mergeview/editor.h"

#include <algorithm>
#include <utility>

#include "base/message_format.h"
#include "base/single_bytes.h"
#include "base/utf16.h"
#include "display/code_points.h"
#include "mergeview/edit.h"
#include "mergeview/navigation.h"

namespace merivane {
namespace {

constexpr char32_t kBackspace = '\b';
constexpr char32_t kEscape = '\x1B';

/// "U+0416", as code points are written.
std::string numberOf(char32_t c) {
  std::string digits;
  for (; c > 0 || digits.size() < 4; c >>= 4) digits.insert(digits.begin(), "0123456789ABCDEF"[c & 15]);
  return "U+" + digits;
}

}  // namespace

void Editor::characterInput(char32_t c, int count, bool ctrl) {
  if (ctrl) return;
  for (; count > 0; --count) {
    switch (c) {
      case kBackspace:
        backspace();
        break;
      case '\n':
      case kEscape:
        view_.host().beep();
        break;
      case '\r':
        newLine();
        break;
      default:
        typeChar(c);
    }
  }
}

void Editor::typeChar(char32_t c) {
  if (isReadOnly()) return;
  std::string bytes = utf8OfCodePoint(c);
  if (c >= 0x80 && !view_.holdsUtf8(side())) {
    const auto byte = codePageByte(c);
    if (!byte) return view_.host().refuse(formatMessage(TextId::characterNotHeld, {bytes, numberOf(c)}));
    bytes = *byte;
  }
  const TextBuffer& text = view_.text(side());
  const bool overwrites = view_.overwrite() && !view_.hasSelection() && !text.atEnd(caret()) &&
                          text.charAt(caret()) != '\n' && propertiesOf(c).columns() > 0;
  if (!overwrites) return insertText(bytes);
  Edit edit{side(), caret(), nextCharacter() - caret(), {}, 0, rowsFrom(caret())};
  edit.caretAfter = caret() + static_cast<uint32_t>(bytes.size());
  if (!edit.inserted.assign(bytes)) return view_.host().reportOutOfMemory();
  performEdit(view_, history_, std::move(edit));
}

void Editor::insertText(std::string_view bytes) {
  if (isReadOnly() || (bytes.empty() && !view_.hasSelection())) return;
  const uint32_t begin = view_.selectionBegin();
  const auto n = static_cast<uint32_t>(bytes.size());
  Edit edit{side(), begin, view_.selectionEnd() - begin, {}, begin + n, rowsFrom(begin)};
  if (!edit.inserted.assign(bytes)) return view_.host().reportOutOfMemory();
  performEdit(view_, history_, std::move(edit));
}

void Editor::backspace() {
  if (isReadOnly()) return;
  if (view_.hasSelection()) return deleteSelection();
  const uint32_t row = view_.caretRow();
  if (row > 0 && view_.caretColumn() == 0 && view_.isFiller(side(), row - 1)) {
    pressKey(view_, Key::left, false, false);
  } else if (caret() > 0) {
    erase(previousCharacter(), caret());
  } else {
    view_.showCaret();
  }
}

void Editor::deleteForward() {
  if (isReadOnly()) return;
  if (view_.hasSelection()) return deleteSelection();
  if (view_.isFiller(side(), view_.caretRow())) {
    pressKey(view_, Key::right, false, false);
  } else if (!view_.text(side()).atEnd(caret())) {
    erase(caret(), nextCharacter());
  } else {
    view_.showCaret();
  }
}

void Editor::deleteSelection() {
  if (!isReadOnly()) erase(view_.selectionBegin(), view_.selectionEnd());
}

void Editor::deleteRow() {
  const uint32_t row = view_.caretRow();
  eraseNotSelection(view_.rowStart(side(), row), view_.rowEnd(side(), row));
}

void Editor::deleteToLineEnd() {
  // After a last "\n" the caret is beyond the line's end.
  eraseNotSelection(caret(), std::max(caret(), view_.lineEnd(side(), view_.caretRow())));
}

void Editor::cut() {
  if (isReadOnly() || !view_.hasSelection()) return;
  if (copyToClipboard(view_, side(), view_.selectionBegin(), view_.selectionEnd())) deleteSelection();
}

void Editor::copy() {
  if (view_.hasSelection()) {
    copyToClipboard(view_, side(), view_.selectionBegin(), view_.selectionEnd());
  }
}

void Editor::paste() {
  ByteArray text;
  if (isReadOnly() || !view_.host().clipboardText(text)) return;
  convertFromFile(text, LineEndKind::crLf);
  insertUnicode(std::move(text));
}

void Editor::insertUnicode(ByteArray&& text) {
  if (isReadOnly()) return;
  if (!isAscii(text.view()) && !view_.holdsUtf8(side()) && !confirmedCodePage(view_, text)) return;
  insertText(text.view());
}

/// The ends of the characters next to the caret, where it is not at that end of the text. They may be in
/// other rows.
uint32_t Editor::nextCharacter() const {
  const uint32_t row = view_.rowOf(side(), caret()), start = view_.rowStart(side(), row);
  return start + view_.characters(side(), start, view_.rowEnd(side(), row)).next(caret() - start);
}
uint32_t Editor::previousCharacter() const {
  const uint32_t row = view_.rowOf(side(), caret() - 1), start = view_.rowStart(side(), row);
  return start + view_.characters(side(), start, view_.rowEnd(side(), row)).previous(caret() - start);
}

/// The caret's row if it can take an edit at the position: a caret in a filler edits there.
RowRange Editor::rowsFrom(uint32_t position) const {
  const uint32_t row = position == caret() ? view_.caretRow() : view_.rowOf(side(), position);
  return {row, row + 1};
}

void Editor::erase(uint32_t begin, uint32_t end) {
  if (begin == end) return;
  performEdit(view_, history_, {side(), begin, end - begin, {}, begin, rowsFrom(begin)});
}

/// Erases some text whatever is selected; the selection goes, also where there is nothing to erase.
void Editor::eraseNotSelection(uint32_t begin, uint32_t end) {
  if (isReadOnly()) return;
  if (begin == end) view_.moveCaret(view_.caretRow(), caret(), false);
  erase(begin, end);
}

bool confirmedCodePage(ViewState& view, ByteArray& text) {
  const uint32_t missing = toCodePage(text);
  return missing == 0 || view.host().confirm(formatMessage(TextId::charactersNotHeld, {int64_t{missing}}));
}

bool copyToClipboard(ViewState& view, int side, uint32_t begin, uint32_t end) {
  ByteArray converted;
  // What reads the clipboard takes a NUL for the end.
  const bool utf8 = isUnicode(view.file(side).encoding);
  if (!convertToFile(view.file(side).text.view(begin, end), LineEndKind::crLf, true, converted) ||
      !(utf8 || isAscii(converted.view()) || fromCodePage(converted))) {
    view.host().reportOutOfMemory();
    return false;
  }
  return view.host().setClipboardText(converted.view());
}

}  // namespace merivane
