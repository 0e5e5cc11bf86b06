#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "base/win/background_job.h"
#include "base/win/window.h"
#include "mergeview/editor.h"
#include "mergeview/exact_marks.h"
#include "mergeview/mouse_selection.h"
#include "mergeview/view_host.h"
#include "mergeview/view_state.h"
#include "mergeview/win/pane_painter.h"
#include "mergeview/win/view_fonts.h"

namespace merivane {

/// What the text view tells the window that it is a child of.
class TextViewOwner {
 public:
  virtual ~TextViewOwner() = default;

  /// What has changed in the panes, which themselves show it. Called once a message or command.
  virtual void onViewChanges(const ViewChanges& changes) = 0;

  /// What was typed is refused, to be told in passing.
  virtual void onRefused(const std::string& why) = 0;

  /// A context menu is wanted for the caret's row, on a side, at a point of the screen.
  virtual void onPaneMenu(int side, POINT screen) = 0;
};

/// The window that shows the two panes of a comparison and takes what is typed into them. The window does
/// the drawing and hands keys, mouse and scroll bars to the state and the editor, which decide everything.
class TextView final : public Window, private ViewHost {
 public:
  /// `history`, of what is done here, must outlive the window.
  TextView(TextViewOwner& owner, UndoHistory& history);
  ~TextView() override;

  bool create(HWND parent);

  /// Whoever changes the state, other than in a message of this window, calls applyChanges() afterwards.
  ViewState& state() { return state_; }
  const ViewState& state() const { return state_; }

  /// Shows what has changed in the state since the last time, and hands it on to the owner. What is thrown
  /// on the way leaves it to be shown the next time.
  void applyChanges();

  /// For editing what is shown, which ends selecting with the mouse.
  Editor& edit();

  /// `dpi` is the window's resolution.
  void setFont(const std::string& face, int points, int dpi);

  /// Whether the caret's row has a box around it.
  void showCaretBox(bool show);

  /// A scroll bar message of a side's horizontal bar, which the parent has.
  void onHScroll(int side, HWND bar, int request);

 private:
  /// What the mouse is dragging.
  enum class Drag { none, selection, split };

  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT dispatch(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> answerReader(UINT message, WPARAM wParam, LPARAM lParam);
  void onPaint();
  void onSize(int width, int height);
  void onSetFocus();
  void onKillFocus();
  bool onKeyDown(WPARAM key);
  bool onCtrlLetter(WPARAM letter, bool shift);
  void onChar(wchar_t unit, int count);
  void placeInputMethod();
  LRESULT onComposition(WPARAM wParam, LPARAM what);
  void onVScroll(int request);
  void onMouseWheel(int delta, bool sideways);
  void onMouseHWheel(int delta);
  void onButtonDown(POINT at);
  void onRightButtonDown(POINT at);
  void onMouseMove(POINT at);
  void beginDrag(Drag drag);
  void endDrag();
  void onDragTimer();
  void findMarksSoon();
  void findMarks();
  void onMarksFound();
  void onContextMenu(POINT screen);
  bool onSetCursor(HWND window, int hitTest);

  void beep() override;
  void refuse(const std::string& why) override;
  bool confirm(const std::string& question) override;
  bool setClipboardText(std::string_view text) override;
  bool clipboardText(ByteArray& text) override;
  void reportOutOfMemory() override;

  void paintRows(PanePainter& painter, const RECT& area);
  void paintGap(PanePainter& painter, const RECT& area);
  void paintCaretBox(HDC dc);
  void makeCaret();
  void placeCaret();
  void show(const ViewChanges& changes);
  void invalidateRows(int side, RowRange rows);
  int countClicks(POINT at);
  bool isGap(int x) const { return x >= state_.pane(0).paneRight && x < state_.pane(1).paneLeft; }

  TextViewOwner& owner_;
  ViewState state_;
  Editor editor_;
  MouseSelection mouse_;
  UndoHistory& history_;
  std::shared_ptr<ExactMarks> marks_;  // that are searched for
  std::shared_ptr<BackgroundJob> marksJob_;
  std::string face_;
  int points_ = 0;
  int dpi_ = 0;
  ViewFonts fonts_;
  bool caretBox_ = true;
  uint32_t boxRow_ = 0;      // where the caret's box has been drawn
  bool blockCaret_ = false;  // the shape that the caret has
  Drag drag_ = Drag::none;
  wchar_t highSurrogate_ = L'\0';  // the first half of a character that is being typed
  int grip_ = 0;                   // where the split is held, from its middle
  int wheelRest_ = 0;              // turned, but not yet enough to scroll
  int sidewaysRest_ = 0;

  // The last press, for telling double and triple clicks.
  POINT lastPress_ = {};
  LONG lastPressTime_ = 0;
  int clicks_ = 0;
};

}  // namespace merivane
