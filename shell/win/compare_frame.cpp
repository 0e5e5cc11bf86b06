#include "shell/win/compare_frame.h"

#include "base/win/gdi.h"
#include "base/win/window.h"
#include "shell/command_table.h"

namespace merivane {
namespace {

constexpr Command browseCommands[2] = {Command::browseLeftFile, Command::browseRightFile};
constexpr Command upCommands[2] = {Command::upOneFolderLeft, Command::upOneFolderRight};

int heightOf(HWND window) {
  RECT area = {};
  GetWindowRect(window, &area);
  return area.bottom - area.top;
}

void move(HWND window, const Area& to) {
  SetWindowPos(window, nullptr, to.left, to.top, to.width, to.height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void show(HWND window, bool visible) { ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE); }

}  // namespace

CompareFrame::CompareFrame(Settings& settings, TextViewOwner& owner, UndoHistory& history)
    : view(owner, history), summary(view), thumb(view), settings_(settings) {}

bool CompareFrame::create(HWND window) {
  window_ = window;
  toolBar.create(window, WindowKind::text, icons_);
  toolTips.create(window);
  for (const int side : {0, 1}) {
    nameBoxes[side].create(window, kNameBoxIds[side], kDropFiles, settings_.fileHistory(side));
    SendMessageA(nameBoxes[side].handle(), WM_SETFONT, reinterpret_cast<WPARAM>(messageFont()), FALSE);
    browseButtons_[side] = makeButton(browseCommands[side], browseIcon_);
    upButtons_[side] = makeButton(upCommands[side], upIcon_);
  }
  if (!view.create(window) || !summary.create(window) || !thumb.create(window)) return false;
  for (HWND& bar : scrollBars_) bar = makeControl("SCROLLBAR", SBS_HORZ, 0);
  statusBar.create(window);
  return true;
}

HWND CompareFrame::makeControl(const char* controlClass, DWORD style, int id) {
  return CreateWindowExA(0, controlClass, "", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | style, 0, 0, 0, 0,
                         window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), programInstance(),
                         nullptr);
}

HWND CompareFrame::makeButton(Command command, const Icon& icon) {
  const HWND button = makeControl("BUTTON", WS_TABSTOP | BS_ICON | BS_PUSHBUTTON, static_cast<int>(command));
  SendMessageA(button, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon.get()));
  toolTips.add(button, commandHelp(command));
  return button;
}

FrameMetrics CompareFrame::metrics() const {
  RECT client = {};
  GetClientRect(window_, &client);
  FrameMetrics metrics;
  metrics.width = client.right;
  metrics.height = client.bottom;
  metrics.toolBarHeight = settings_.viewToolBar ? heightOf(toolBar.handle()) : 0;
  metrics.statusBarHeight = settings_.viewStatusBar ? heightOf(statusBar.handle()) : 0;
  metrics.nameBoxHeight = heightOf(nameBoxes[0].handle());
  metrics.margin = scaled(4);
  metrics.verticalBarWidth = GetSystemMetrics(SM_CXVSCROLL);
  metrics.horizontalBarHeight = GetSystemMetrics(SM_CYHSCROLL);
  metrics.summaryWidth = settings_.viewSummary ? scaled(28) : 0;
  return metrics;
}

void CompareFrame::layOut() {
  show(toolBar.handle(), settings_.viewToolBar);
  show(statusBar.handle(), settings_.viewStatusBar);
  show(summary.handle(), settings_.viewSummary);
  toolBar.fit();
  statusBar.fit();
  const ViewLayout layout = layOutView(metrics());
  move(summary.handle(), layout.summary);
  move(view.handle(), layout.view);
  followPanes();
}

void CompareFrame::followPanes() {
  const ViewState& state = view.state();
  const SplitLayout layout = layOutSplit(metrics(), state.pane(0).paneRight, state.pane(1).paneLeft);
  if (!(layout == layout_)) {
    layout_ = layout;
    for (const int side : {0, 1}) {
      // A combo box's height is given with its list.
      Area box = layout.nameBox[side];
      box.height = scaled(300);
      move(nameBoxes[side].handle(), box);
      move(browseButtons_[side], layout.browse[side]);
      move(upButtons_[side], layout.upOneFolder[side]);
      move(scrollBars_[side], layout.scrollBar[side]);
    }
    move(thumb.handle(), layout.thumb);
  }
  for (const int side : {0, 1}) setScrollBar(side);
}

const NameBox* CompareFrame::focusedNameBox() const {
  for (const NameBox& box : nameBoxes) {
    if (box.hasFocus()) return &box;
  }
  return nullptr;
}

void CompareFrame::setScrollBar(int side) {
  const ViewState& state = view.state();
  const uint32_t page = state.visibleColumns(side);
  merivane::setScrollBar(scrollBars_[side], SB_CTL, static_cast<int>(state.maxHScroll(side) + page - 1), page,
                         static_cast<int>(state.hScroll(side)));
}

}  // namespace merivane
