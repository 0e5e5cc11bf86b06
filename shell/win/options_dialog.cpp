#include "shell/win/options_dialog.h"

#include <algorithm>
#include <utility>

#include "base/win/dpi.h"
#include "base/win/messages.h"
#include "base/win/wide.h"
#include "shell/commands.h"
#include "shell/win/system_facts.h"

namespace merivane {
namespace {

constexpr int dialogNumber = 1141;
constexpr int pageList = 10000;
constexpr int pageArea = 10001;  // stands where the pages go, unseen

constexpr const char* kPlaceKey = "OptionsBox";
constexpr const char* kPageKey = "OptionsPage";

// In pixels at 96 to the inch.
constexpr int kListItemHeight = 20;
constexpr int kListItemMargin = 4;

}  // namespace

OptionsDialog::OptionsDialog(Settings& settings, SettingsStore& store, std::function<void()> changed,
                             std::function<void(const char* page)> help)
    : settings_(settings), store_(store), changed_(std::move(changed)), help_(std::move(help)) {}

void OptionsDialog::open(HWND owner) {
  if (handle() != nullptr && GetWindow(handle(), GW_OWNER) == owner) {
    SetForegroundWindow(handle());
    return;
  }
  close();  // it belongs to another window
  if (Dialog::open(dialogNumber, owner)) ShowWindow(handle(), SW_SHOW);
}

void OptionsDialog::close() {
  if (handle() != nullptr) DestroyWindow(handle());
}

bool OptionsDialog::takes(MSG& message) {
  if (handle() == nullptr) return false;
  const bool isKey = message.message == WM_KEYDOWN && IsChild(handle(), message.hwnd);
  if (!isKey || message.wParam != VK_F5) return IsDialogMessageW(handle(), &message) != FALSE;
  if (page_ != nullptr) page_->takeTyped();
  PostMessageW(GetWindow(handle(), GW_OWNER), WM_COMMAND, static_cast<WPARAM>(Command::refresh), 0);
  return true;
}

LRESULT OptionsDialog::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG: onInitDialog(); return TRUE;
    case WM_COMMAND: onCommand(LOWORD(wParam), HIWORD(wParam)); return TRUE;
    case WM_DRAWITEM: onDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
    case WM_SIZE:  // which a monitor of another resolution brings, too
      SendMessageW(list(), LB_SETITEMHEIGHT, 0, scaled(kListItemHeight, dpiOf(handle())));
      return FALSE;
    case WM_HELP: help_(optionsPages()[selectedPage()].helpPage); return TRUE;
    case WM_DESTROY: remember(); return TRUE;
    default: return FALSE;
  }
}

void OptionsDialog::onInitDialog() {
  for (const OptionsPageRow& page : optionsPages()) sendText(list(), LB_ADDSTRING, 0, loadText(page.name));
  SendMessageW(list(), LB_SETITEMHEIGHT, 0, scaled(kListItemHeight, dpiOf(handle())));
  if (const auto place = parseDialogPosition(store_.GetString(kPlaceKey).value_or(""), monitors())) {
    SetWindowPos(handle(), nullptr, place->x, place->y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  } else {
    centre();
  }
  const int32_t last = static_cast<int32_t>(optionsPages().size()) - 1;
  showPage(static_cast<size_t>(std::clamp(store_.GetNumber(kPageKey, 0), 0, last)));
}

void OptionsDialog::onCommand(int id, int code) {
  if (id == pageList && code == LBN_SELCHANGE) return showPage(selectedPage());
  if (id == IDOK && page_ != nullptr) return page_->takeTyped();  // Enter
  if (id == IDCANCEL) close();
}

HWND OptionsDialog::list() const { return GetDlgItem(handle(), pageList); }

/// The first one when none is selected.
size_t OptionsDialog::selectedPage() const {
  return static_cast<size_t>(std::max<LRESULT>(SendMessageW(list(), LB_GETCURSEL, 0, 0), 0));
}

void OptionsDialog::showPage(size_t index) {
  SendMessageW(list(), LB_SETCURSEL, index, 0);
  auto page = std::make_unique<OptionsPage>(optionsPages()[index], settings_, changed_);
  if (!page->open(handle())) return;
  const HWND stand = GetDlgItem(handle(), pageArea);
  RECT area = {};
  GetWindowRect(stand, &area);
  MapWindowPoints(nullptr, handle(), reinterpret_cast<POINT*>(&area), 2);
  // In the order of the Tab key it comes after the list.
  SetWindowPos(page->handle(), stand, area.left, area.top, 0, 0,
               SWP_NOSIZE | SWP_SHOWWINDOW | SWP_NOACTIVATE);
  page_ = std::move(page);
}

/// Whatever closes it, or closes the window below.
void OptionsDialog::remember() {
  if (page_ != nullptr) page_->takeTyped();
  RECT place = {};
  GetWindowRect(handle(), &place);
  store_.SetString(kPlaceKey, formatDialogPosition({place.left, place.top}));
  store_.SetNumber(kPageKey, static_cast<int32_t>(selectedPage()));
}

void OptionsDialog::onDrawItem(const DRAWITEMSTRUCT& item) const {
  if (static_cast<int>(item.itemID) < 0) return;
  const bool selected = (item.itemState & ODS_SELECTED) != 0;
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
  const std::wstring name = wide(loadText(optionsPages()[item.itemID].name));
  RECT area = item.rcItem;
  InflateRect(&area, -scaled(kListItemMargin, dpiOf(handle())), 0);
  DrawTextW(item.hDC, name.c_str(), -1, &area, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  if ((item.itemState & ODS_FOCUS) != 0) DrawFocusRect(item.hDC, &item.rcItem);
}

}  // namespace merivane
