// The text view's keys, mouse and scroll bars.

#include <windows.h>

#include <imm.h>

#include <cstdlib>
#include <new>
#include <string>
#include <utility>

#include "base/win/gdi.h"
#include "base/win/scrolling.h"
#include "base/win/wide.h"
#include "mergeview/navigation.h"
#include "mergeview/win/text_view.h"

namespace merivane {
namespace {

constexpr UINT_PTR dragTimer = 1;
constexpr UINT dragMilliseconds = 50;

/// Lines or characters a notch, asked each time as the user can change it at any time.
UINT unitsANotch(UINT parameter, UINT fallback) {
  UINT units = 0;
  return SystemParametersInfoW(parameter, 0, &units, 0) ? units : fallback;
}

}  // namespace

bool TextView::onKeyDown(WPARAM key) {
  const bool ctrl = isCtrlDown();
  const bool shift = isKeyDown(VK_SHIFT);
  const auto move = [&](Key direction) {
    pressKey(state_, direction, ctrl, shift);
    return true;
  };
  switch (key) {
    case VK_LEFT: return move(Key::left);
    case VK_RIGHT: return move(Key::right);
    case VK_UP: return move(Key::up);
    case VK_DOWN: return move(Key::down);
    case VK_HOME: return move(Key::home);
    case VK_END: return move(Key::end);
    case VK_PRIOR: return move(Key::pageUp);
    case VK_NEXT: return move(Key::pageDown);
    case VK_INSERT:
      if (ctrl) {
        edit().copy();
      } else if (shift) {
        edit().paste();
      } else {
        state_.toggleOverwrite();
      }
      return true;
    case VK_DELETE:
      if (ctrl) return false;
      if (shift) {
        edit().cut();
      } else {
        edit().deleteForward();
      }
      return true;
    default: return ctrl && onCtrlLetter(key, shift);
  }
}

bool TextView::onCtrlLetter(WPARAM letter, bool shift) {
  switch (letter) {
    case 'A': return selectAll(state_), true;
    case 'C': return edit().copy(), true;
    case 'E': return shift ? edit().deleteToLineEnd() : edit().deleteRow(), true;
    case 'V': return edit().paste(), true;
    case 'X': return edit().cut(), true;
    default: return false;
  }
}

Editor& TextView::edit() {
  endDrag();
  return editor_;
}

// A character of two units comes in two messages.
void TextView::onChar(wchar_t unit, int count) {
  const wchar_t high = std::exchange(highSurrogate_, IS_HIGH_SURROGATE(unit) ? unit : L'\0');
  if (IS_HIGH_SURROGATE(unit)) return;
  char32_t character = unit;
  if (IS_LOW_SURROGATE(unit)) {
    if (high == L'\0') return;
    character = 0x10000 + ((high - 0xD800u) << 10 | (unit - 0xDC00u));
  }
  edit().characterInput(character, count, isCtrlDown());
}

// An input method shows what is being composed at the caret, and what to choose from beside it.
void TextView::placeInputMethod() {
  const HIMC context = ImmGetContext(handle());
  if (context == nullptr) return;
  const PaneEdges& pane = state_.pane(state_.activeSide());
  const POINT caret = {pane.textLeft + state_.caretX(), state_.caretY()};
  const RECT line = {pane.textLeft, caret.y, pane.paneRight, caret.y + state_.font().lineHeight};
  COMPOSITIONFORM composition = {CFS_RECT, caret, line};
  ImmSetCompositionWindow(context, &composition);
  CANDIDATEFORM candidates = {0, CFS_EXCLUDE, caret, line};
  ImmSetCandidateWindow(context, &candidates);
  LOGFONTW font = {};
  if (GetObjectW(fonts_.text.get(), sizeof font, &font) != 0) ImmSetCompositionFontW(context, &font);
  ImmReleaseContext(handle(), context);
}

// What is composed goes in as a whole, for undo to take it back as a whole; by default it would come by
// characters.
LRESULT TextView::onComposition(WPARAM wParam, LPARAM what) {
  if ((what & GCS_RESULTSTR) != 0) {
    std::wstring composed;
    if (const HIMC context = ImmGetContext(handle())) {
      const LONG bytes = ImmGetCompositionStringW(context, GCS_RESULTSTR, nullptr, 0);
      composed.resize(bytes > 0 ? static_cast<size_t>(bytes) / sizeof(wchar_t) : 0);
      ImmGetCompositionStringW(context, GCS_RESULTSTR, composed.data(), static_cast<DWORD>(bytes));
      ImmReleaseContext(handle(), context);
    }
    ByteArray text;
    if (!text.assign(utf8(composed))) throw std::bad_alloc();
    if (!composed.empty()) edit().insertUnicode(std::move(text));
    what &= ~LPARAM{GCS_RESULTSTR};
  }
  return defaultProcedure(WM_IME_COMPOSITION, wParam, what);
}

void TextView::onVScroll(int request) {
  state_.scrollTo(
      scrollTarget(handle(), SB_VERT, request, state_.topRow(), state_.visibleRows(), state_.maxTopRow()));
}

void TextView::onHScroll(int side, HWND bar, int request) {
  state_.scrollColumnsTo(side, scrollTarget(bar, SB_CTL, request, state_.hScroll(side),
                                            state_.visibleColumns(side), state_.maxHScroll(side)));
}

void TextView::onMouseWheel(int delta, bool sideways) {
  if (sideways) {
    onMouseHWheel(-delta);
    return;
  }
  const UINT lines = unitsANotch(SPI_GETWHEELSCROLLLINES, 2);
  const int units =
      lines == WHEEL_PAGESCROLL ? static_cast<int>(state_.visibleRows()) : static_cast<int>(lines);
  state_.scrollTo(int64_t{state_.topRow()} - wheelSteps(delta, units, wheelRest_));
}

void TextView::onMouseHWheel(int delta) {
  POINT at = {};
  GetCursorPos(&at);
  ScreenToClient(handle(), &at);
  const int side = sideAt(state_, at.x);
  const auto units = static_cast<int>(unitsANotch(SPI_GETWHEELSCROLLCHARS, 3));
  state_.scrollColumnsTo(side, int64_t{state_.hScroll(side)} + wheelSteps(delta, units, sidewaysRest_));
}

int TextView::countClicks(POINT at) {
  const LONG now = GetMessageTime();
  const bool samePlace = std::abs(at.x - lastPress_.x) <= GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
                         std::abs(at.y - lastPress_.y) <= GetSystemMetrics(SM_CYDOUBLECLK) / 2;
  const bool soon = static_cast<UINT>(now - lastPressTime_) <= GetDoubleClickTime();
  clicks_ = samePlace && soon && clicks_ < 3 ? clicks_ + 1 : 1;
  lastPress_ = at;
  lastPressTime_ = now;
  return clicks_;
}

void TextView::onButtonDown(POINT at) {
  SetFocus(handle());
  const int clicks = countClicks(at);
  if (!isGap(at.x)) {
    mouse_.press(at.x, at.y, clicks, isKeyDown(VK_SHIFT));
    beginDrag(Drag::selection);
    SetTimer(handle(), dragTimer, dragMilliseconds, nullptr);
  } else if (clicks == 2) {
    state_.centreSplit();
  } else {
    grip_ = at.x - state_.splitX();
    beginDrag(Drag::split);
  }
}

void TextView::onRightButtonDown(POINT at) {
  SetFocus(handle());
  // A selection stays when it is clicked into.
  const int side = sideAt(state_, at.x);
  const uint32_t position = placeAt(state_, side, at.x, at.y).position;
  const bool within = side == state_.activeSide() && state_.hasSelection() &&
                      position >= state_.selectionBegin() && position < state_.selectionEnd();
  if (!within) mouse_.press(at.x, at.y, 1, false);
}

void TextView::onMouseMove(POINT at) {
  if (drag_ == Drag::selection) mouse_.drag(at.x, at.y);
  if (drag_ == Drag::split) state_.setSplitFromX(at.x - grip_);
}

void TextView::onDragTimer() {
  POINT at = {};
  GetCursorPos(&at);
  ScreenToClient(handle(), &at);
  const PaneEdges& pane = state_.pane(state_.activeSide());
  const RECT inside = {pane.paneLeft, 0, pane.paneRight, state_.height()};
  if (isKeyDown(VK_LBUTTON) && !PtInRect(&inside, at)) mouse_.drag(at.x, at.y);
}

void TextView::beginDrag(Drag drag) {
  drag_ = drag;
  SetCapture(handle());
}

void TextView::endDrag() {
  if (drag_ == Drag::none) return;
  drag_ = Drag::none;
  KillTimer(handle(), dragTimer);
  ReleaseCapture();
}

void TextView::onContextMenu(POINT screen) {
  int side = state_.activeSide();
  if (screen.x == -1 && screen.y == -1) {
    // From the keyboard: at the caret.
    screen = {state_.pane(side).textLeft + state_.caretX() + 2,
              state_.caretY() + state_.font().lineHeight / 2};
    ClientToScreen(handle(), &screen);
  } else {
    POINT at = screen;
    ScreenToClient(handle(), &at);
    side = sideAt(state_, at.x);
  }
  owner_.onPaneMenu(side, screen);
}

}  // namespace merivane
