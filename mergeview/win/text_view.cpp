#include "mergeview/win/text_view.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "base/code_page.h"
#include "base/utf16.h"
#include "base/win/back_buffer.h"
#include "base/win/messages.h"
#include "mergeview/win/clipboard.h"
#include "mergeview/win/pane_painter.h"

namespace merivane {
namespace {

int pixelOf(WORD coordinate) { return static_cast<short>(coordinate); }

POINT pointOf(LPARAM lParam) { return {pixelOf(LOWORD(lParam)), pixelOf(HIWORD(lParam))}; }

constexpr UINT_PTR kMarksTimer = 2;
constexpr UINT kMarksDelay = 200;  // milliseconds after the last key
constexpr UINT kMarksFound = WM_APP;

}  // namespace

TextView::TextView(TextViewOwner& owner, UndoHistory& history)
    : owner_(owner), state_(*this), editor_(state_, history), mouse_(state_), history_(history) {}

TextView::~TextView() {
  if (marksJob_ != nullptr) marksJob_->cancel();
  destroy();
}

bool TextView::create(HWND parent) {
  WindowPlace place;
  place.style |= WS_TABSTOP | WS_VSCROLL;
  place.parent = parent;
  return Window::create({"TextView"}, place);
}

void TextView::setFont(const std::string& face, int points, int dpi) {
  if (face == face_ && points == points_ && dpi == dpi_) return;
  face_ = face;
  points_ = points;
  dpi_ = dpi;
  fonts_ = makeViewFonts(WindowDc(handle()), {dpi, dpi}, face, fontHeight(points, dpi));
  state_.setFont(fonts_.metrics);
  state_.changes().looks = true;
  if (GetFocus() == handle()) makeCaret();
}

void TextView::showCaretBox(bool show) {
  if (show == caretBox_) return;
  caretBox_ = show;
  InvalidateRect(handle(), nullptr, FALSE);
}

LRESULT TextView::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const HWND window = handle();
  const LRESULT result = dispatch(message, wParam, lParam);
  if (of(window) == this) applyChanges();  // the message may have been the last
  return result;
}

LRESULT TextView::dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT: onPaint(); return 0;
    case WM_ERASEBKGND: return TRUE;
    case WM_SIZE: onSize(LOWORD(lParam), HIWORD(lParam)); return 0;
    case WM_SETFOCUS: onSetFocus(); return 0;
    case WM_KILLFOCUS: onKillFocus(); return 0;
    case WM_GETDLGCODE: return DLGC_WANTARROWS | DLGC_WANTCHARS | DLGC_WANTTAB;
    case WM_KEYDOWN: return onKeyDown(wParam) ? 0 : defaultProcedure(message, wParam, lParam);
    case WM_CHAR: onChar(static_cast<wchar_t>(wParam), LOWORD(lParam)); return 0;
    case WM_IME_STARTCOMPOSITION: placeInputMethod(); return defaultProcedure(message, wParam, lParam);
    case WM_IME_COMPOSITION: return onComposition(wParam, lParam);
    case WM_VSCROLL: onVScroll(LOWORD(wParam)); return 0;
    case WM_MOUSEWHEEL: onMouseWheel(pixelOf(HIWORD(wParam)), (LOWORD(wParam) & MK_SHIFT) != 0); return 0;
    case WM_MOUSEHWHEEL: onMouseHWheel(pixelOf(HIWORD(wParam))); return TRUE;
    case WM_LBUTTONDOWN: onButtonDown(pointOf(lParam)); return 0;
    case WM_RBUTTONDOWN: onRightButtonDown(pointOf(lParam)); return 0;
    case WM_MOUSEMOVE:
      if ((wParam & MK_LBUTTON) != 0) onMouseMove(pointOf(lParam));
      return 0;
    case WM_LBUTTONUP: endDrag(); return 0;
    case WM_CAPTURECHANGED: endDrag(); return 0;
    case WM_TIMER: wParam == kMarksTimer ? findMarks() : onDragTimer(); return 0;
    case kMarksFound: onMarksFound(); return 0;
    case WM_CONTEXTMENU: onContextMenu(pointOf(lParam)); return 0;
    case WM_SETCURSOR:
      return onSetCursor(reinterpret_cast<HWND>(wParam), LOWORD(lParam))
                 ? TRUE
                 : defaultProcedure(message, wParam, lParam);
    default: break;
  }
  if (const auto result = answerReader(message, wParam, lParam)) return *result;
  return defaultProcedure(message, wParam, lParam);
}

// Drawing.

void TextView::onPaint() {
  const BufferedPaint paint(handle());
  PanePainter painter(paint.dc(), fonts_);
  paintRows(painter, paint.area());
  paintGap(painter, paint.area());
  if (caretBox_) paintCaretBox(paint.dc());
}

void TextView::paintRows(PanePainter& painter, const RECT& area) {
  const int height = state_.font().lineHeight;
  const auto first = state_.topRow() + static_cast<uint32_t>(area.top / height);
  const auto below = state_.topRow() + static_cast<uint32_t>((area.bottom + height - 1) / height);
  const uint32_t end = std::min(below, state_.rowCount());
  for (const int side : {0, 1}) {
    const PaneEdges& pane = state_.pane(side);
    if (area.right <= pane.paneLeft || area.left >= pane.paneRight) continue;
    painter.paintRows(state_.source(side), {first, end}, state_.window(side), pane,
                      static_cast<int>(first - state_.topRow()) * height);
    const auto rowsEnd = static_cast<LONG>(int64_t{end - std::min(end, state_.topRow())} * height);
    painter.fill({pane.paneLeft, rowsEnd, pane.paneRight, area.bottom}, state_.options().colours.same);
  }
}

void TextView::paintGap(PanePainter& painter, const RECT& area) {
  const GapWindow gap = {state_.pane(0).paneRight, state_.pane(1).paneLeft, state_.height(),
                         state_.font().lineHeight, state_.topRow()};
  if (area.right <= gap.left || area.left >= gap.right) return;
  painter.fill({gap.left, area.top, gap.right, area.bottom}, GetSysColor(COLOR_BTNFACE));
  painter.paintArrows(state_.model(), state_.options().colours, gap);
}

void TextView::paintCaretBox(HDC dc) {
  const Brush brush(CreateSolidBrush(GetSysColor(COLOR_GRAYTEXT)));
  for (const int side : {0, 1}) {
    const PaneEdges& pane = state_.pane(side);
    const RECT box = {pane.paneLeft, state_.caretY(), pane.paneRight,
                      state_.caretY() + state_.font().lineHeight};
    FrameRect(dc, &box, brush.get());
  }
}

void TextView::onSize(int width, int height) { state_.resize(width, height); }

bool TextView::onSetCursor(HWND window, int hitTest) {
  if (window != handle() || hitTest != HTCLIENT) return false;
  POINT at = {};
  GetCursorPos(&at);
  ScreenToClient(handle(), &at);
  const PaneEdges& pane = state_.pane(sideAt(state_, at.x));
  const LPCWSTR other = isGap(at.x) ? IDC_SIZEWE : IDC_ARROW;
  SetCursor(LoadCursorW(nullptr, at.x >= pane.textLeft && at.x < pane.paneRight ? IDC_IBEAM : other));
  return true;
}

// The caret.

void TextView::onSetFocus() { makeCaret(); }

void TextView::onKillFocus() { DestroyCaret(); }

void TextView::makeCaret() {
  const FontMetrics& font = state_.font();
  blockCaret_ = state_.overwrite();
  CreateCaret(handle(), nullptr, blockCaret_ ? font.charWidth : font.scaled(2), font.lineHeight);
  placeCaret();
  ShowCaret(handle());
}

void TextView::placeCaret() {
  if (GetFocus() != handle()) return;
  const PaneEdges& pane = state_.pane(state_.activeSide());
  const bool inView = state_.caretX() >= 0 && state_.caretX() < pane.textWidth();
  // Out of view it blinks where nothing shows.
  SetCaretPos(inView ? pane.textLeft + state_.caretX() : -100, state_.caretY());
  placeInputMethod();
}

// What has changed.

void TextView::applyChanges() {
  const ViewChanges changes = state_.takeChanges();
  if (changes == ViewChanges()) return;
  try {
    show(changes);
    owner_.onViewChanges(changes);
  } catch (...) {
    state_.changes().add(changes);
    throw;
  }
}

void TextView::show(const ViewChanges& changes) {
  if (changes.everything) endDrag();  // it started in rows that are others now
  const bool moved = changes.everything || changes.looks || changes.scrolled || changes.edges;
  if (moved) {
    InvalidateRect(handle(), nullptr, FALSE);
  } else {
    for (const int side : {0, 1}) invalidateRows(side, changes.rows[side]);
    if (caretBox_ && state_.caretRow() != boxRow_) {
      for (const int side : {0, 1}) {
        invalidateRows(side, {boxRow_, boxRow_ + 1});
        invalidateRows(side, {state_.caretRow(), state_.caretRow() + 1});
      }
    }
  }
  boxRow_ = state_.caretRow();
  if (changes.history || changes.everything) findMarksSoon();
  if (moved || changes.scrollRanges) {
    setScrollBar(handle(), SB_VERT, static_cast<int>(state_.rowCount() - 1), state_.visibleRows(),
                 static_cast<int>(state_.topRow()));
  }
  if (GetFocus() == handle() && blockCaret_ != state_.overwrite()) {
    makeCaret();
  } else if (moved || changes.caret) {
    placeCaret();
  }
}

/// They may reach beyond the visible ones.
void TextView::invalidateRows(int side, RowRange rows) {
  if (rows.empty()) return;
  const int64_t height = state_.font().lineHeight;
  const auto yOf = [&](uint32_t row) {
    return static_cast<LONG>(
        std::clamp<int64_t>((int64_t{row} - state_.topRow()) * height, 0, state_.height()));
  };
  const PaneEdges& pane = state_.pane(side);
  const RECT area = {pane.paneLeft, yOf(rows.begin), pane.paneRight, yOf(rows.end)};
  InvalidateRect(handle(), &area, FALSE);
}

// Marks that an edit has left provisional, found beside the user interface when no key has come for a while.

void TextView::findMarksSoon() {
  if (marksJob_ != nullptr) marksJob_->cancel();
  marksJob_ = nullptr;
  if (state_.model().provisionalRows() > 0) SetTimer(handle(), kMarksTimer, kMarksDelay, nullptr);
}

/// Without memory the marks stay provisional until the next edit.
void TextView::findMarks() {
  KillTimer(handle(), kMarksTimer);
  try {
    marks_ = ExactMarks::of(state_);
    if (marks_ == nullptr) return;
    marksJob_ = BackgroundJob::start(handle(), kMarksFound,
                                     [marks = marks_](const AbortFlag& abort) { marks->find(&abort); });
  } catch (const std::bad_alloc&) {
    marks_ = nullptr;
  }
}

void TextView::onMarksFound() {
  // The message may be of a job that was given up before.
  const auto end = marksJob_ != nullptr ? marksJob_->end() : std::nullopt;
  if (!end) return;
  marksJob_ = nullptr;
  const std::shared_ptr<ExactMarks> found = std::exchange(marks_, nullptr);
  if (*end == WorkEnd::done && found->isOf(state_) && found->apply(state_, history_)) findMarksSoon();
}

void TextView::beep() { MessageBeep(MB_OK); }

void TextView::refuse(const std::string& why) {
  beep();
  owner_.onRefused(why);
}

bool TextView::confirm(const std::string& question) {
  return showMessage(handle(), question, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

/// Bytes that are no characters go as those of the code page.
bool TextView::setClipboardText(std::string_view text) {
  const auto* const otherwise = reinterpret_cast<const wchar_t*>(systemCodePage());
  return putOnClipboard(handle(), utf16FromUtf8(text, otherwise));
}

bool TextView::clipboardText(ByteArray& text) { return takeFromClipboard(handle(), text); }

void TextView::reportOutOfMemory() { merivane::reportOutOfMemory(); }

}  // namespace merivane
