// What the text view tells screen readers, which take a window with a caret that knows these messages for an
// edit field.

#include <algorithm>
#include <cstring>
#include <string>

#include "mergeview/spoken_text.h"
#include "mergeview/win/text_view.h"

namespace merivane {
namespace {

constexpr uint32_t kNone = 0xFFFFFFFF;  // instead of an offset or a line

LRESULT result(uint32_t number) { return static_cast<LRESULT>(number); }

/// Copies as much of a text as there is room for; returns how much.
LRESULT give(const std::u16string& text, wchar_t* to, size_t room) {
  return static_cast<LRESULT>(std::copy_n(text.begin(), std::min(room, text.size()), to) - to);
}

LRESULT giveText(const std::u16string& text, wchar_t* to, size_t room) {
  if (room == 0) return 0;
  const LRESULT size = give(text, to, room - 1);
  to[size] = L'\0';
  return size;
}

/// The room is told where the text goes.
LRESULT giveLine(const SpokenText& spoken, uint32_t line, wchar_t* to) {
  WORD room = 0;
  std::memcpy(&room, to, sizeof room);
  return line < spoken.lineCount() ? give(spoken.lineText(line), to, room) : 0;
}

LRESULT giveSelection(const SpokenText& spoken, DWORD* begin, DWORD* end) {
  const DWORD selection[] = {spoken.selectionBegin(), spoken.selectionEnd()};
  if (begin != nullptr) *begin = selection[0];
  if (end != nullptr) *end = selection[1];
  return selection[1] > 0xFFFF ? -1 : MAKELRESULT(selection[0], selection[1]);
}

/// The length of the line at an offset; without one, how much of the selection's lines is not selected.
LRESULT lineLength(const SpokenText& spoken, uint32_t offset) {
  const uint32_t begin = offset == kNone ? spoken.selectionBegin() : offset;
  const uint32_t end = offset == kNone ? spoken.selectionEnd() : offset;
  const uint32_t selected = end - begin;
  return result(spoken.lineEnd(spoken.lineAt(end)) - spoken.lineStart(spoken.lineAt(begin)) - selected);
}

bool isForReaders(UINT message) {
  static constexpr UINT messages[] = {
      WM_GETTEXTLENGTH, WM_GETTEXT,     EM_GETLINECOUNT, EM_GETFIRSTVISIBLELINE, EM_GETSEL,
      EM_SETSEL,        EM_SCROLLCARET, EM_LINEFROMCHAR, EM_LINEINDEX,           EM_LINELENGTH,
      EM_GETLINE,       EM_POSFROMCHAR, EM_CHARFROMPOS};
  return std::find(std::begin(messages), std::end(messages), message) != std::end(messages);
}

}  // namespace

std::optional<LRESULT> TextView::answerReader(UINT message, WPARAM wParam, LPARAM lParam) {
  if (!isForReaders(message)) return std::nullopt;
  const SpokenText spoken(state_);
  const auto number = static_cast<uint32_t>(wParam);  // an offset or a line, from a program of either width
  switch (message) {
    case WM_GETTEXTLENGTH: return result(spoken.size());
    case WM_GETTEXT: return giveText(spoken.text(), reinterpret_cast<wchar_t*>(lParam), wParam);
    case EM_GETLINECOUNT: return result(spoken.lineCount());
    case EM_GETFIRSTVISIBLELINE: return result(spoken.firstVisibleLine());
    case EM_GETSEL:
      return giveSelection(spoken, reinterpret_cast<DWORD*>(wParam), reinterpret_cast<DWORD*>(lParam));
    case EM_SETSEL:
      if (number == kNone) {
        selectSpoken(state_, spoken.caret(), spoken.caret());
      } else {
        selectSpoken(state_, number, static_cast<uint32_t>(lParam));
      }
      return 0;
    case EM_SCROLLCARET: state_.showCaret(); return TRUE;
    case EM_LINEFROMCHAR: return result(spoken.lineAt(number == kNone ? spoken.selectionBegin() : number));
    case EM_LINEINDEX: {
      const uint32_t line = number == kNone ? spoken.lineAt(spoken.caret()) : number;
      return line < spoken.lineCount() ? result(spoken.lineStart(line)) : -1;
    }
    case EM_LINELENGTH: return lineLength(spoken, number);
    case EM_GETLINE: return giveLine(spoken, number, reinterpret_cast<wchar_t*>(lParam));
    case EM_POSFROMCHAR: {
      if (number > spoken.size()) return -1;
      const ViewPoint at = spoken.pointOf(number);
      return MAKELRESULT(at.x, at.y);
    }
    case EM_CHARFROMPOS: {
      const ViewPoint at = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
      if (at.x < 0 || at.x >= state_.width() || at.y < 0 || at.y >= state_.height()) return -1;
      const uint32_t offset = spoken.offsetAt(at);
      return MAKELRESULT(offset, spoken.lineAt(offset));
    }
    default: return std::nullopt;
  }
}

}  // namespace merivane
