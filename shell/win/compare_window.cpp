#include "shell/win/compare_window.h"

#include <utility>
#include <vector>

#include "base/win/gdi.h"
#include "base/win/messages.h"
#include "shell/command_table.h"
#include "shell/win/application.h"
#include "shell/win/drops.h"
#include "shell/win/export_dialog.h"
#include "shell/win/file_dialogs.h"
#include "shell/win/registered_messages.h"
#include "shell/win/system_facts.h"

namespace merivane {
namespace {

constexpr int iconNumber = 100;
constexpr int menuNumber = 1121;
constexpr int windowMenuPosition = 4;
constexpr int acceleratorsNumber = 1110;

const WindowClass compareWindowClass = {"CompareWindow", 0, IDC_ARROW, COLOR_BTNFACE, iconNumber};

void showState(HMENU menu, UINT item, const CommandState& state) {
  EnableMenuItem(menu, item, MF_BYCOMMAND | (state.enabled ? MF_ENABLED : MF_GRAYED));
  if (state.radio && state.checked) {
    CheckMenuRadioItem(menu, item, item, item, MF_BYCOMMAND);
  } else {
    CheckMenuItem(menu, item, MF_BYCOMMAND | (state.checked ? MF_CHECKED : MF_UNCHECKED));
  }
}

}  // namespace

CompareWindow::CompareWindow(Application& application)
    : application_(application),
      frame_(application.settings, *this, history_),
      view_(frame_.view.state()),
      session_(*this, application.sessionWorld(), view_, history_) {}

CompareWindow::~CompareWindow() { destroy(); }

bool CompareWindow::open(const NewWindowRect& at) {
  WindowPlace place;
  place.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
  place.extendedStyle = WS_EX_ACCEPTFILES;
  place.left = at.x;
  place.top = at.y;
  place.width = at.width;
  place.height = at.height;
  place.menu = LoadMenuA(programInstance(), MAKEINTRESOURCEA(menuNumber));
  setAccelerators(LoadAcceleratorsA(programInstance(), MAKEINTRESOURCEA(acceleratorsNumber)));
  return create(compareWindowClass, loadText(TextId::productName).c_str(), place);
}

LRESULT CompareWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const HWND window = handle();
  const LRESULT result = answer(message, wParam, lParam);
  if (of(window) == this) frame_.view.applyChanges();  // the message may have been the last
  return result;
}

LRESULT CompareWindow::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == compareDoneMessage) return waitDialog_.finish(), 0;
  if (message == findReplaceMessage) return onFind(*reinterpret_cast<FINDREPLACEA*>(lParam)), 0;
  switch (message) {
    case WM_CREATE: return onCreate() ? 0 : -1;
    case WM_SIZE: onSize(wParam); return 0;
    case WM_GETMINMAXINFO: onGetMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lParam)); return 0;
    case WM_MOVE: capturePlacement(); return 0;
    case WM_ACTIVATE: onActivate(LOWORD(wParam) != WA_INACTIVE, HIWORD(wParam) != 0); return 0;
    case WM_SETFOCUS: onSetFocus(); return 0;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE: onSystemChange(); return 0;
    case WM_INITMENUPOPUP: onInitMenuPopup(reinterpret_cast<HMENU>(wParam)); return 0;
    case WM_MENUSELECT: onMenuSelect(LOWORD(wParam), HIWORD(wParam)); return 0;
    case WM_CLIPBOARDUPDATE: updateToolBar(); return 0;
    case WM_COMMAND: onCommand(LOWORD(wParam), HIWORD(wParam)); return 0;
    case WM_NOTIFY: return onNotify(*reinterpret_cast<NMHDR*>(lParam));
    case WM_HSCROLL: onHScroll(reinterpret_cast<HWND>(lParam), LOWORD(wParam)); return 0;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL: return SendMessageA(frame_.view.handle(), message, wParam, lParam);
    case WM_DROPFILES: onDropFiles(reinterpret_cast<HDROP>(wParam)); return 0;
    case WM_HELP: run(Command::usersManual); return TRUE;
    case WM_CLOSE: onClose(); return 0;
    case WM_QUERYENDSESSION: return onQueryEndSession() ? TRUE : FALSE;
    case WM_ENDSESSION: onEndSession(wParam != 0); return 0;
    default: return defaultProcedure(message, wParam, lParam);
  }
}

bool CompareWindow::onCreate() {
  if (!frame_.create(handle())) return false;
  session_.restoreNames();
  applySettings();
  AddClipboardFormatListener(handle());
  return true;
}

void CompareWindow::setName(int side, const std::string& name) {
  frame_.nameBoxes[side].setText(name);
  refresh();
}

void CompareWindow::onDestroyed() { application_.windows.RemoveWindow(*this); }

void CompareWindow::onSize(WPARAM kind) {
  if (kind == SIZE_MINIMIZED) return;
  frame_.layOut();
  // Dragging a border leaves no time for painting between one size and the next.
  RedrawWindow(handle(), nullptr, nullptr, RDW_ERASENOW | RDW_UPDATENOW | RDW_ALLCHILDREN);
  capturePlacement();
}

void CompareWindow::onGetMinMaxInfo(MINMAXINFO& info) const {
  info.ptMinTrackSize = {scaled(400), scaled(240)};
}

void CompareWindow::onActivate(bool active, bool minimized) {
  const HWND focus = GetFocus();
  if (active) {
    capturePlacement();
    if (!minimized) SetFocus(handle());
  } else if (IsChild(handle(), focus)) {
    lastFocus_ = focus;
  }
}

void CompareWindow::onSetFocus() {
  SetFocus(lastFocus_ != nullptr ? lastFocus_ : frame_.nameBoxes[0].handle());
}

void CompareWindow::onSystemChange() {
  frame_.layOut();
  applySettings();
}

// Where a minimized window stands is no place to open one; the rules of capturing know.
void CompareWindow::capturePlacement() {
  merivane::capturePlacement(windowStance(handle()), application_.settings.compareWindow);
}

// Keys.

bool CompareWindow::PreTranslateMessage(const MSG& message) {
  if (waitDialog_.isBusy()) return waitDialog_.takes(message);
  frame_.toolTips.relay(message);
  if (message.message == WM_SYSKEYDOWN && message.wParam == VK_BACK) return undoInNameBox();
  if (message.message != WM_KEYDOWN) return false;
  switch (message.wParam) {
    case 'Z': return isCtrlDown() && undoInNameBox();
    case VK_ESCAPE:
      if (!application_.settings.escQuitsApp || isNameListOpen()) return false;
      SendMessageA(handle(), WM_COMMAND, static_cast<WPARAM>(Command::exit), 0);
      return true;
    case VK_TAB: return onTab(message);
    default: return false;
  }
}

/// Whether Esc closes no more than a list.
bool CompareWindow::isNameListOpen() const {
  const NameBox* const box = frame_.focusedNameBox();
  return box != nullptr && box->isListOpen();
}

/// The keys for it would not reach a name box that is being edited.
bool CompareWindow::undoInNameBox() const {
  const NameBox* const box = frame_.focusedNameBox();
  if (box != nullptr) box->undo();
  return box != nullptr;
}

/// Whether the key is not the focused control's own.
bool CompareWindow::onTab(const MSG& message) {
  const bool ctrl = isCtrlDown();
  const bool inView = message.hwnd == frame_.view.handle();
  if (inView && !ctrl) return false;
  if (!inView && (SendMessageA(message.hwnd, WM_GETDLGCODE, 0, 0) & DLGC_WANTTAB) != 0) return true;
  HWND control = message.hwnd;
  while (control != handle() && GetParent(control) != handle()) control = GetParent(control);
  SetFocus(GetNextDlgTabItem(handle(), control, isKeyDown(VK_SHIFT)));
  const HWND focus = GetFocus();
  if (SendMessageA(focus, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) SendMessageA(focus, EM_SETSEL, 0, -1);
  return true;
}

// Menus and bars.

HMENU CompareWindow::windowMenu() const { return GetSubMenu(GetMenu(handle()), windowMenuPosition); }

void CompareWindow::onInitMenuPopup(HMENU menu) {
  if (menu == windowMenu()) application_.windows.BuildWindowMenu(*this, menu);
  const WindowFacts now = facts();
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const UINT item = GetMenuItemID(menu, i);
    const auto command = static_cast<Command>(item);
    if (findCommand(command) != nullptr) showState(menu, item, stateOf(command, now));
  }
}

void CompareWindow::onMenuSelect(UINT item, UINT flags) {
  const bool command = flags != 0xFFFF && (flags & (MF_POPUP | MF_SYSMENU)) == 0;
  const std::string help = command ? commandHelp(static_cast<Command>(item)) : "";
  const bool closed = flags == 0xFFFF;
  frame_.statusBar.setText(StatusBar::help, closed ? loadText(TextId::pressF1) : help);
}

LRESULT CompareWindow::onNotify(NMHDR& header) {
  if (header.code != TTN_GETDISPINFOA) return 0;
  auto& info = reinterpret_cast<NMTTDISPINFOA&>(header);
  const std::string tip = commandTip(static_cast<Command>(header.idFrom));
  lstrcpynA(info.szText, tip.c_str(), sizeof info.szText);
  return 0;
}

void CompareWindow::refresh() {
  SetWindowTextA(handle(), title().c_str());
  application_.windows.BuildWindowMenu(*this, windowMenu());
  updateToolBar();
  frame_.statusBar.setText(StatusBar::lineEnds, session_.lineEndText());
  frame_.statusBar.setText(StatusBar::differences, session_.differencesText());
}

void CompareWindow::updateToolBar() {
  const WindowFacts now = facts();
  frame_.toolBar.update([&](Command command) { return stateOf(command, now); });
}

// What the panes tell.

void CompareWindow::onViewChanges(const ViewChanges& changes) {
  const bool all = changes.everything;
  if (all || changes.history) frame_.summary.setBlank(!session_.showsComparison());
  if (all) frame_.summary.refresh();
  if (all || changes.edges || changes.scrolled || changes.scrollRanges) frame_.followPanes();
  if (all || changes.caret) showCaretPlace();
  if (all || changes.modified) {
    refresh();
  } else if (changes.caret || changes.history) {
    updateToolBar();
  }
}

void CompareWindow::showCaretPlace() {
  frame_.summary.moveCaretMarker();
  frame_.statusBar.setText(StatusBar::caret, session_.caretText());
}

void CompareWindow::onPaneMenu(int side, POINT screen) {
  const auto number = static_cast<int>(paneMenu(view_.model().status(view_.caretRow()), side));
  const HMENU menu = LoadMenuA(programInstance(), MAKEINTRESOURCEA(number));
  TrackPopupMenu(GetSubMenu(menu, 0), TPM_RIGHTBUTTON, screen.x, screen.y, 0, handle(), nullptr);
  DestroyMenu(menu);
}

void CompareWindow::onHScroll(HWND bar, int request) {
  frame_.view.onHScroll(frame_.sideOfBar(bar), bar, request);
}

void CompareWindow::onDropFiles(HDROP drop) {
  POINT at = {};
  DragQueryPoint(drop, &at);
  const std::vector<std::string> names = takeDrop(drop);
  std::vector<FileKind> kinds;
  for (const std::string& name : names) kinds.push_back(systemFiles().kind(name));
  RECT client = {};
  GetClientRect(handle(), &client);
  switch (textWindowDrop(kinds)) {
    case TextWindowDrop::intoNameBox: frame_.nameBoxes[dropSide(at.x, client.right)].drop(names[0]); break;
    case TextWindowDrop::compareFiles: compare(names[0], names[1]); break;
    case TextWindowDrop::compareFolders:  // beeps until there are folder windows
    case TextWindowDrop::nothing: MessageBeep(MB_OK); break;
  }
}

// Comparing and closing.

void CompareWindow::compare(const std::string& left, const std::string& right) {
  setName(0, left);
  setName(1, right);
  lastFocus_ = frame_.view.handle();
  SetForegroundWindow(handle());
  SetFocus(handle());
  UpdateWindow(handle());
  SendMessageA(handle(), WM_COMMAND, static_cast<WPARAM>(Command::refresh), 0);
}

void CompareWindow::onClose() {
  if (!session_.mayClose()) return;
  waitDialog_.abandon();
  DestroyWindow(handle());
}

// Logging off is not closing this window: what was not saved is asked about whatever the settings.
bool CompareWindow::onQueryEndSession() { return session_.offerToSave(); }

// The program is ended without further notice when the user logs off.
void CompareWindow::onEndSession(bool ending) {
  if (ending) application_.keepSettings();
}

// What the session asks for.

std::string CompareWindow::name(int side) const { return frame_.nameBoxes[side].text(); }

Answer CompareWindow::ask(const Question& question) {
  frame_.view.applyChanges();
  UINT style = question.cancel ? MB_YESNOCANCEL : MB_YESNO;
  style |= question.warning ? MB_ICONWARNING | MB_DEFBUTTON2 : MB_ICONQUESTION;
  switch (showMessage(handle(), question.text, style)) {
    case IDYES: return Answer::yes;
    case IDNO: return Answer::no;
    default: return Answer::cancel;
  }
}

void CompareWindow::report(const std::string& message, ReportKind kind) {
  frame_.view.applyChanges();
  showMessage(handle(), message, MB_OK | (kind == ReportKind::error ? MB_ICONERROR : MB_ICONINFORMATION));
}

void CompareWindow::reportOutOfMemory() { merivane::reportOutOfMemory(); }

void CompareWindow::startJob(Work work, WhenWorkEnds whenEnded) {
  waitDialog_.start(handle(), std::move(work), std::move(whenEnded));
}

std::optional<std::string> CompareWindow::chooseSaveFile(const std::string& title, const std::string& name) {
  return merivane::chooseSaveFile(handle(), title, name);
}

std::optional<ExportChoice> CompareWindow::chooseExport(const ExportChoice& choice) {
  return ExportDialog(choice).run(handle());
}

}  // namespace merivane
