#include "shell/win/about_dialog.h"

#include <string>

#include "base/win/dpi.h"
#include "base/win/messages.h"
#include "base/win/wide.h"
#include "release_date.h"
#include "shell/win/button_icons.h"

namespace merivane {
namespace {

constexpr int dialogNumber = 24000;
constexpr int licenseButton = 24006;
constexpr int pictureControl = 24008;
constexpr int programIcon = 100;

void drawLine(HDC dc, RECT& room, const std::string& text) {
  const int height =
      DrawTextW(dc, wide(text).c_str(), -1, &room, DT_LEFT | DT_TOP | DT_SINGLELINE | DT_NOPREFIX);
  room.top += height;
}

}  // namespace

void AboutDialog::run(HWND owner) { Dialog::run(dialogNumber, owner); }

LRESULT AboutDialog::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG: return onInitDialog();
    case WM_COMMAND: return onCommand(LOWORD(wParam));
    case WM_DRAWITEM: return onDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    default: return FALSE;
  }
}

BOOL AboutDialog::onInitDialog() {
  nameFont_ = largerFont(220);
  // What is painted, for who cannot see it.
  setWindowText(GetDlgItem(handle(), pictureControl),
                loadText(TextId::productName) + ", " +
                    loadMessage(TextId::productVersion, {MERIVANE_VERSION}) + ", " +
                    loadMessage(TextId::releaseDate, {MERIVANE_RELEASE_DATE}));
  centre();
  return TRUE;
}

BOOL AboutDialog::onCommand(int id) {
  switch (id) {
    case licenseButton: help_.show("license.html"); return TRUE;
    case IDOK:
    case IDCANCEL: EndDialog(handle(), id); return TRUE;
    default: return FALSE;
  }
}

BOOL AboutDialog::onDrawItem(const DRAWITEMSTRUCT& item) {
  const HDC dc = item.hDC;
  const int dpi = dpiOf(handle());
  const int margin = scaled(20, dpi);
  const int size = scaled(48, dpi);
  RECT room = item.rcItem;
  FillRect(dc, &room, GetSysColorBrush(COLOR_WINDOW));
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
  const Icon icon(static_cast<HICON>(
      LoadImageW(programInstance(), MAKEINTRESOURCEW(programIcon), IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
  DrawIconEx(dc, room.left + margin, room.top + margin, icon.get(), size, size, 0, nullptr, DI_NORMAL);
  room.left += margin + size + margin;
  room.top += margin - scaled(4, dpi);
  {
    const SelectedObject font(dc, nameFont_.get());
    drawLine(dc, room, loadText(TextId::productName));
  }
  room.top += scaled(6, dpi);
  drawLine(dc, room, loadMessage(TextId::productVersion, {MERIVANE_VERSION}));
  drawLine(dc, room, loadMessage(TextId::releaseDate, {MERIVANE_RELEASE_DATE}));
  return TRUE;
}

}  // namespace merivane
