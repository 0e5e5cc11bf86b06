#include "shell/win/top_level_window.h"

#include <utility>

#include "base/win/dpi.h"
#include "base/win/messages.h"
#include "base/win/wide.h"
#include "shell/win/application.h"
#include "shell/win/controls.h"
#include "shell/win/question_box.h"
#include "shell/win/shell_utilities.h"
#include "shell/win/system_facts.h"

namespace merivane {
namespace {

constexpr UINT_PTR updateTimer = 1;

}  // namespace

TopLevelWindow::TopLevelWindow(Application& application, WindowKind kind)
    : application_(application),
      kind_(kind),
      traits_(traitsOf(kind)),
      names_(traits_.names, application.settings),
      statusBar_(traits_) {}

bool TopLevelWindow::open(const NewWindowRect& at) {
  WindowPlace place;
  place.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
  place.extendedStyle = WS_EX_ACCEPTFILES;
  place.left = at.x;
  place.top = at.y;
  place.width = at.width;
  place.height = at.height;
  place.menu = LoadMenuW(programInstance(), MAKEINTRESOURCEW(traits_.menu));
  setAccelerators(LoadAcceleratorsW(programInstance(), MAKEINTRESOURCEW(traits_.accelerators)));
  return create({traits_.windowClass, 0, IDC_ARROW, COLOR_BTNFACE}, place);
}

LRESULT TopLevelWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == compareDoneMessage) return waitDialog_.finish(), changed(), 0;
  switch (message) {
    case WM_CREATE: return onCreate() ? 0 : -1;
    case WM_SIZE: onSize(wParam); return 0;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {scaled(400, dpi()), scaled(240, dpi())};
      return 0;
    case WM_DPICHANGED: onDpiChanged(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam)); return 0;
    case WM_MOVE: capturePlacement(); return 0;
    case WM_ACTIVATE: onActivate(LOWORD(wParam) != WA_INACTIVE, HIWORD(wParam) != 0); return 0;
    case WM_SETFOCUS: onSetFocus(); return 0;
    case WM_SETTINGCHANGE: onSystemSettings(static_cast<UINT>(wParam)); return 0;
    case WM_SYSCOLORCHANGE: onSystemColours(); return 0;
    case WM_TIMER: update(); return 0;
    case WM_INITMENUPOPUP: onInitMenuPopup(reinterpret_cast<HMENU>(wParam)); return 0;
    case WM_MENUSELECT: onMenuSelect(LOWORD(wParam), HIWORD(wParam)); return 0;
    case WM_CLIPBOARDUPDATE: changed(); return 0;
    case WM_COMMAND: onCommand(LOWORD(wParam), HIWORD(wParam)); return 0;
    case WM_NOTIFY: return onNotify(*reinterpret_cast<NMHDR*>(lParam));
    case WM_DROPFILES: onDropFiles(reinterpret_cast<HDROP>(wParam)); return 0;
    case WM_HELP: run(Command::usersManual); return TRUE;
    case WM_CLOSE: onClose(); return 0;
    case WM_QUERYENDSESSION: return onQueryEndSession(lParam) ? TRUE : FALSE;
    case WM_ENDSESSION: onEndSession(wParam != 0); return 0;
    default: return defaultProcedure(message, wParam, lParam);
  }
}

bool TopLevelWindow::onCreate() {
  toolTips_.create(handle());
  names_.create(handle(), toolTips_);
  if (!createContents()) return false;
  statusBar_.create(handle());
  takeLook(dpiOf(handle()));
  applySettings();
  AddClipboardFormatListener(handle());
  return true;
}

void TopLevelWindow::onDestroyed() { application_.windows.RemoveWindow(*this); }

// Layout and placement.

void TopLevelWindow::onSize(WPARAM kind) {
  if (kind == SIZE_MINIMIZED) return;
  layOut();
  // Dragging a border leaves no time for painting between one size and the next.
  RedrawWindow(handle(), nullptr, nullptr, RDW_ERASENOW | RDW_UPDATENOW | RDW_ALLCHILDREN);
  capturePlacement();
}

/// The window has come to a monitor of another resolution, on which the system suggests where it goes.
void TopLevelWindow::onDpiChanged(int dpi, const RECT& area) {
  takeLook(dpi);
  SetWindowPos(handle(), nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
  applySettings();
  layOut();
}

void TopLevelWindow::onSystemSettings(UINT which) {
  if (which == SPI_SETNONCLIENTMETRICS) takeLook(dpi());
  applySettings();
  layOut();
}

// Only windows at the top are told; the controls in them keep colours and pictures of their own.
void TopLevelWindow::onSystemColours() {
  const auto tell = [](HWND control, LPARAM) CALLBACK -> BOOL {
    SendMessageW(control, WM_SYSCOLORCHANGE, 0, 0);
    return TRUE;
  };
  EnumChildWindows(handle(), tell, 0);
  applySettings();
  RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

/// Everything takes the fonts, icons and sizes of a resolution.
void TopLevelWindow::takeLook(int dpi) {
  auto look = std::make_unique<ControlLook>(dpi);
  toolBar_.create(handle(), kind_, look->icons);
  toolTips_.setFont(look->fonts.status.get());
  names_.setLook(*look);
  statusBar_.setLook(*look);
  SendMessageW(handle(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(look->largeIcon.get()));
  SendMessageW(handle(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(look->smallIcon.get()));
  look_ = std::move(look);
  changed();
}

// Where a minimized window stands is no place to open one; the rules of capturing know.
void TopLevelWindow::capturePlacement() {
  merivane::capturePlacement(windowStance(handle()), application_.settings.*traits_.placement);
}

FrameMetrics TopLevelWindow::metrics() const {
  RECT client = {};
  GetClientRect(handle(), &client);
  FrameMetrics metrics;
  metrics.width = client.right;
  metrics.height = client.bottom;
  metrics.toolBarHeight = shownBars_.toolBar ? heightOf(toolBar_.handle()) : 0;
  metrics.statusBarHeight = shownBars_.statusBar ? heightOf(statusBar_.handle()) : 0;
  metrics.nameBoxHeight = names_.height();
  metrics.margin = scaled(4, dpi());
  return metrics;
}

void TopLevelWindow::layOut() {
  showControl(toolBar_.handle(), shownBars_.toolBar);
  showControl(statusBar_.handle(), shownBars_.statusBar);
  toolBar_.fit();
  statusBar_.fit();
  layOutContents(merivane::layOutContents(metrics()));
  layOutNames();
}

void TopLevelWindow::layOutNames() {
  const NameSplit split = nameSplit();
  names_.place(merivane::layOutNames(metrics(), split.leftEnd, split.rightStart));
}

void TopLevelWindow::applySettings() {
  const Settings& settings = application_.settings;
  const bool contentsMoved = applySettingsToContents();
  const ShownBars bars = {settings.viewToolBar, settings.viewStatusBar};
  const bool barsMoved = std::exchange(shownBars_, bars) != bars;
  if (contentsMoved || barsMoved) layOut();
  changed();
}

// Names, focus and keys.

void TopLevelWindow::setSides(const GivenSide& left, const GivenSide& right) {
  describe(left, right);
  setName(0, left.path);
  setName(1, right.path);
}

void TopLevelWindow::compare(const GivenSide& left, const GivenSide& right) {
  setSides(left, right);
  lastFocus_ = mainControl();
  SetForegroundWindow(handle());
  SetFocus(handle());
  UpdateWindow(handle());
  SendMessageW(handle(), WM_COMMAND, static_cast<WPARAM>(Command::refresh), 0);
}

void TopLevelWindow::setName(int side, const std::string& name) {
  names_.setText(side, name);
  changed();
}

HWND TopLevelWindow::windowForKeys() const {
  const HWND popup = GetLastActivePopup(handle());
  if (popup != handle()) return popup;
  // The system does not name a box that was shown while another program had the keyboard.
  const BusyBox* const box = busyBox();
  return box != nullptr && box->handle() != nullptr ? box->handle() : popup;
}

void TopLevelWindow::focusName(int side) { names_.box(side).focusAll(); }

void TopLevelWindow::onNameBox(int side, int code) {
  changed();  // commands may be about the box now, or no longer
  NameBox& box = names_.box(side);
  NameBox& other = names_.box(1 - side);
  switch (code) {
    case CBN_EDITCHANGE: box.onEdit(); break;
    case kNameBoxEnter:
      // With one name still to come, that is what the user wants to do next.
      if (!box.text().empty() && other.text().empty()) {
        SetFocus(other.handle());
      } else {
        focusContents();  // or the next key would replace the name
        run(Command::refresh);
      }
      break;
    case kNameBoxDropped:
      // In a window that shows a comparison the new name takes the old one's place; in a fresh one the
      // other name may still be to come.
      if (!isFresh()) run(Command::refresh);
      break;
  }
}

void TopLevelWindow::onActivate(bool active, bool minimized) {
  const HWND focus = GetFocus();
  if (active) {
    capturePlacement();
    escapeHeld_ = isKeyDown(VK_ESCAPE);
    if (!minimized) SetFocus(handle());
  } else if (IsChild(handle(), focus)) {
    lastFocus_ = focus;
  }
}

void TopLevelWindow::onSetFocus() { SetFocus(lastFocus_ != nullptr ? lastFocus_ : names_.box(0).handle()); }

bool TopLevelWindow::PreTranslateMessage(const MSG& message) {
  if (const BusyBox* const box = busyBox()) return box->takes(message);
  toolTips_.relay(message);
  if (NameBox* const box = names_.focusedBox()) {
    changed();  // the selection in it, of which nothing is heard
    if (onKeyInName(message, *box)) return true;
  }
  if (message.message == WM_KEYUP && message.wParam == VK_ESCAPE) escapeHeld_ = false;
  if (message.message != WM_KEYDOWN) return false;
  switch (message.wParam) {
    case VK_ESCAPE: return onEscape();
    case VK_RETURN: return onEnter(message.hwnd);
    case VK_TAB: return onTab(message);
    default: return false;
  }
}

/// Takes a key away from the accelerators that is the name box's own.
bool TopLevelWindow::onKeyInName(const MSG& message, NameBox& box) {
  if (message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN) return false;
  const auto command = commandOf(message);
  if (!command || !leavesKeysToNameBox(*command)) return false;
  if (editsText(*command)) {
    box.edit(*command);
  } else {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return true;
}

bool TopLevelWindow::onEscape() {
  const NameBox* const box = names_.focusedBox();
  const bool closesList = box != nullptr && box->isListOpen();
  if (!application_.settings.escQuitsApp || escapeHeld_ || closesList) return false;
  SendMessageW(handle(), WM_COMMAND, static_cast<WPARAM>(Command::exit), 0);
  return true;
}

/// Presses a button that has the keyboard, as in a dialog.
bool TopLevelWindow::onEnter(HWND control) {
  if ((SendMessageW(control, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) == 0)
    return false;
  SendMessageW(control, BM_CLICK, 0, 0);
  return true;
}

/// Whether the key is not the focused control's own.
bool TopLevelWindow::onTab(const MSG& message) {
  const bool asText = takesTab(message.hwnd);
  if (asText && !isCtrlDown()) return false;
  if (!asText && (SendMessageW(message.hwnd, WM_GETDLGCODE, 0, 0) & DLGC_WANTTAB) != 0) return true;
  HWND control = message.hwnd;
  while (control != handle() && GetParent(control) != handle()) control = GetParent(control);
  SetFocus(GetNextDlgTabItem(handle(), control, isKeyDown(VK_SHIFT)));
  const HWND focus = GetFocus();
  if (SendMessageW(focus, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) SendMessageW(focus, EM_SETSEL, 0, -1);
  return true;
}

void TopLevelWindow::onDropFiles(HDROP drop) {
  POINT at = {};
  DragQueryPoint(drop, &at);
  const std::vector<std::string> names = takeDrop(drop);
  std::vector<FileKind> kinds;
  for (const std::string& name : names) kinds.push_back(systemFiles().kind(name));
  RECT client = {};
  GetClientRect(handle(), &client);
  bool taken = false;
  if (names.size() == 1) {
    names_.box(dropSide(at.x, client.right)).drop(names[0]);
    taken = true;
  } else if (const auto which = comparedByDrop(kinds)) {
    TopLevelWindow* const target = *which == kind_ ? this : nullptr;
    taken = application_.windows.compare(*which, target, names[0], names[1], false) != nullptr;
  }
  if (!taken) MessageBeep(MB_OK);
}

// What a session asks for, and closing.

Answer TopLevelWindow::ask(const Question& question) {
  showContents();
  return askInBox(handle(), question);
}

void TopLevelWindow::report(const std::string& message, ReportKind kind) {
  showContents();
  reportInBox(handle(), message, kind);
}

void TopLevelWindow::reportOutOfMemory() { merivane::reportOutOfMemory(); }

void TopLevelWindow::showStatus(const std::string& text) { statusBar_.announce(text); }

void TopLevelWindow::startJob(TextId waiting, Work work, WhenWorkEnds whenEnded, ProgressText progress) {
  waitDialog_.start(handle(), waiting, std::move(work), std::move(whenEnded), std::move(progress));
}

void TopLevelWindow::onClose() {
  if (mayClose()) close();
}

void TopLevelWindow::close() {
  waitDialog_.abandon();
  DestroyWindow(handle());
}

// The system waits for no question: it shows the reason, and the user decides there whether to come back.
bool TopLevelWindow::onQueryEndSession(LPARAM reason) {
  if ((reason & ENDSESSION_CRITICAL) != 0 || !hasUnsavedChanges()) return true;
  keepsSession_ = true;
  ShutdownBlockReasonCreate(handle(), wide(loadText(TextId::sessionWaits)).c_str());
  return false;
}

// The program is ended without further notice when the user logs off.
void TopLevelWindow::onEndSession(bool ending) {
  if (ending) application_.keepSettings();
  if (!std::exchange(keepsSession_, false)) return;
  ShutdownBlockReasonDestroy(handle());
  if (!ending) offerToSave();
}

// Bringing up to date.

// A timer's message comes when no other is left, and to whichever loop runs: that of a box, of a menu or of
// dragging the window as well.
void TopLevelWindow::changed() {
  if (handle() == nullptr || std::exchange(changed_, true)) return;  // gone, or under way
  SetTimer(handle(), updateTimer, USER_TIMER_MINIMUM, nullptr);
}

void TopLevelWindow::update() {
  changed_ = false;
  KillTimer(handle(), updateTimer);
  const std::string wanted = title();
  if (wanted != shownTitle_) {
    setWindowText(handle(), wanted);
    shownTitle_ = wanted;
  }
  fillWindowMenu();
  const WindowFacts now = facts();
  toolBar_.update([&](Command command) { return stateOf(command, now); });
  if (optionsChanged() != saysOptionsChanged_) {
    saysOptionsChanged_ = !saysOptionsChanged_;
    statusBar_.announce(idleHelp());
  }
  const StatusTexts texts = statusTexts();
  for (size_t i = 0; i < texts.size(); ++i) statusBar_.setText(static_cast<int>(i) + 1, texts[i]);
}

}  // namespace merivane
