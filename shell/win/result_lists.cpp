#include "shell/win/result_lists.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/texts.h"
#include "base/win/messages.h"
#include "base/win/wide.h"
#include "base/win/window.h"
#include "shell/win/controls.h"

namespace merivane {
namespace {

constexpr int tabNumber = 110;
constexpr int firstListNumber = 111;

// Of a row, in pixels at 96 to the inch.
constexpr int markLeft = 3;
constexpr int markSize = 10;
constexpr int iconLeft = 15;
constexpr int nameAfterIcon = 19;  // from the icon's left edge on
constexpr int rowPadding = 3;
constexpr int afterName = 8;

void setState(HWND list, int row, UINT state, UINT mask) {
  LVITEMW item = {};
  item.state = state;
  item.stateMask = mask;
  SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

int nextRow(HWND list, int after, UINT which) {
  return static_cast<int>(
      SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(after), static_cast<LPARAM>(which)));
}

void drawMark(HDC dc, const RECT& row, int dpi, uint8_t mark, const MarkColours& colours) {
  const auto outline = markOutline(mark);
  if (outline.empty()) return;
  const int size = scaled(markSize, dpi);
  const int left = static_cast<int>(row.left) + scaled(markLeft, dpi);
  const int top = static_cast<int>(row.top + row.bottom - size) / 2;
  POINT points[16];
  for (size_t i = 0; i < outline.size(); ++i) {
    points[i] = {left + outline[i].x * (size - 1) / markSize, top + outline[i].y * (size - 1) / markSize};
  }
  const Brush brush(CreateSolidBrush(colours.fill));
  const Pen pen(CreatePen(PS_SOLID, 1, colours.outline));
  const SelectedObject withBrush(dc, brush.get());
  const SelectedObject withPen(dc, pen.get());
  Polygon(dc, points, static_cast<int>(outline.size()));
}

int widthOf(HDC dc, const std::wstring& text) {
  SIZE size = {};
  GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
  return size.cx;
}

void drawText(HDC dc, const std::wstring& text, RECT area) {
  // Of a path that does not fit, the name at its end says most.
  const UINT format = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_PATH_ELLIPSIS;
  DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &area, format);
}

/// Has a list ask for the height of its rows, as it does when its window's place changes.
void measureRows(HWND list) {
  RECT area = {};
  GetWindowRect(list, &area);
  WINDOWPOS place = {};
  place.hwnd = list;
  place.cx = area.right - area.left;
  place.cy = area.bottom - area.top;
  place.flags = SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOOWNERZORDER | SWP_NOZORDER;
  SendMessageW(list, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&place));
}

}  // namespace

bool ResultLists::create(HWND window) {
  tabs_ = createControl(window, "SysTabControl32", WS_TABSTOP, tabNumber);
  if (tabs_ == nullptr) return false;
  constexpr TextId labels[] = {TextId::changedList, TextId::oldList, TextId::newList, TextId::sameList};
  for (int tab = 0; tab < kTabs; ++tab) {
    std::wstring name;
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = name.data();
    SendMessageW(tabs_, TCM_INSERTITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
    nameNextControl(window, loadText(labels[tab]));
    lists_[tab] = makeList(window, tab);
    if (lists_[tab] == nullptr) return false;
  }
  return true;
}

HWND ResultLists::makeList(HWND window, int tab) {
  const DWORD style = WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_OWNERDRAWFIXED | LVS_NOCOLUMNHEADER |
                      LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS;
  const HWND list = createControl(window, "SysListView32", style, firstListNumber + tab);
  if (list == nullptr) return nullptr;
  const DWORD extended = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
  SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, extended, extended);
  LVCOLUMNW column = {};
  SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  showControl(list, tab == 0);
  return list;
}

void ResultLists::followLook() {
  std::array<MarkColours, kMarks> colours;
  for (int mark = 0; mark < kMarks; ++mark) colours[mark] = owner_.markColours(static_cast<uint8_t>(mark));
  const bool recoloured = std::exchange(markColours_, colours) != colours;
  const auto font = reinterpret_cast<WPARAM>(owner_.rowLook()->fonts.message.get());
  const auto background = static_cast<LPARAM>(GetSysColor(COLOR_WINDOW));
  const bool resized = static_cast<WPARAM>(SendMessageW(tabs_, WM_GETFONT, 0, 0)) != font;
  if (resized) SendMessageW(tabs_, WM_SETFONT, font, TRUE);
  for (const HWND list : lists_) {
    if (resized) {
      SendMessageW(list, WM_SETFONT, font, FALSE);
      measureRows(list);
    }
    const bool newBackground = SendMessageW(list, LVM_GETBKCOLOR, 0, 0) != background;
    if (newBackground) SendMessageW(list, LVM_SETBKCOLOR, 0, background);
    if (recoloured || resized || newBackground) InvalidateRect(list, nullptr, TRUE);
  }
}

void ResultLists::layOut(const Area& area) {
  area_ = area;
  RECT page = {area.left, area.top, area.right(), area.bottom()};
  SendMessageW(tabs_, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
  const int strip = std::clamp<int>(static_cast<int>(page.top) - area.top, 0, area.height);
  moveControl(tabs_, {area.left, area.top, area.width, strip});
  for (const HWND list : lists_) {
    moveControl(list, {area.left, area.top + strip, area.width, area.height - strip});
  }
  fitColumns();
}

void ResultLists::fitColumns() {
  for (const HWND list : lists_) {
    RECT client = {};
    GetClientRect(list, &client);
    if (SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0) != client.right) {
      SendMessageW(list, LVM_SETCOLUMNWIDTH, 0, client.right);
    }
  }
}

void ResultLists::setTabTexts(const std::array<std::string, kTabs>& texts) {
  for (int tab = 0; tab < kTabs; ++tab) {
    if (texts[tab] == tabTexts_[tab]) continue;
    std::wstring text = wide(texts[tab]);
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text.data();
    SendMessageW(tabs_, TCM_SETITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
  }
  tabTexts_ = texts;
}

void ResultLists::refill() {
  quiet_ = true;
  for (int tab = 0; tab < kTabs; ++tab) {
    const HWND list = lists_[tab];
    setState(list, -1, 0, LVIS_SELECTED);
    SendMessageW(list, LVM_SETITEMCOUNT, owner_.rowCount(tab), 0);
    if (owner_.rowCount(tab) > 0) {
      setState(list, 0, LVIS_FOCUSED, LVIS_FOCUSED);
      SendMessageW(list, LVM_ENSUREVISIBLE, 0, FALSE);
    }
    InvalidateRect(list, nullptr, TRUE);
  }
  quiet_ = false;
  fitColumns();  // a scroll bar may have come or gone
  owner_.onSelection();
}

void ResultLists::redraw() { InvalidateRect(list(), nullptr, FALSE); }

int ResultLists::tab() const {
  return std::max(0, static_cast<int>(SendMessageW(tabs_, TCM_GETCURSEL, 0, 0)));
}

void ResultLists::showTab(int tab) {
  SendMessageW(tabs_, TCM_SETCURSEL, static_cast<WPARAM>(tab), 0);
  onTabChosen();
}

void ResultLists::onTabChosen() {
  const HWND focus = GetFocus();
  const bool inList = std::ranges::find(lists_, focus) != std::end(lists_);
  showControl(list(), true);
  if (inList) SetFocus(list());
  for (const HWND each : lists_) {
    if (each != list()) showControl(each, false);
  }
  owner_.onSelection();
}

std::vector<uint32_t> ResultLists::selectedRows() const {
  std::vector<uint32_t> rows;
  rows.reserve(static_cast<size_t>(SendMessageW(list(), LVM_GETSELECTEDCOUNT, 0, 0)));
  for (int row = -1; (row = nextRow(list(), row, LVNI_SELECTED)) >= 0;) {
    rows.push_back(static_cast<uint32_t>(row));
  }
  return rows;
}

std::optional<uint32_t> ResultLists::caretRow() const {
  const int row = nextRow(list(), -1, LVNI_FOCUSED);
  return row >= 0 ? std::optional(static_cast<uint32_t>(row)) : std::nullopt;
}

uint32_t ResultLists::topRow() const {
  return static_cast<uint32_t>(std::max<LRESULT>(0, SendMessageW(list(), LVM_GETTOPINDEX, 0, 0)));
}

void ResultLists::select(const std::vector<uint32_t>& rows) {
  quiet_ = true;
  setState(list(), -1, 0, LVIS_SELECTED);
  for (const uint32_t row : rows) setState(list(), static_cast<int>(row), LVIS_SELECTED, LVIS_SELECTED);
  quiet_ = false;
  owner_.onSelection();
}

void ResultLists::selectAll() {
  quiet_ = true;
  setState(list(), -1, LVIS_SELECTED, LVIS_SELECTED);
  quiet_ = false;
  owner_.onSelection();
}

void ResultLists::goTo(uint32_t row) {
  setState(list(), static_cast<int>(row), LVIS_FOCUSED, LVIS_FOCUSED);
  SendMessageW(list(), LVM_ENSUREVISIBLE, row, FALSE);
}

void ResultLists::setTopRow(uint32_t row) {
  // Down to the end first: what is brought into view from there comes to stand at the top.
  const uint32_t count = owner_.rowCount(tab());
  if (count == 0) return;
  SendMessageW(list(), LVM_ENSUREVISIBLE, count - 1, FALSE);
  SendMessageW(list(), LVM_ENSUREVISIBLE, std::min(row, count - 1), FALSE);
}

POINT ResultLists::menuPlace() const {
  RECT row = {};
  POINT at = {scaled(iconLeft, owner_.rowLook()->dpi), 0};
  if (const auto caret = caretRow()) {
    row.left = LVIR_BOUNDS;
    SendMessageW(list(), LVM_ENSUREVISIBLE, *caret, FALSE);
    SendMessageW(list(), LVM_GETITEMRECT, *caret, reinterpret_cast<LPARAM>(&row));
    at.y = row.bottom;
  }
  ClientToScreen(list(), &at);
  return at;
}

// What the controls say.

std::optional<int> ResultLists::tabOf(HWND control) const {
  const auto found = std::ranges::find(lists_, control);
  if (control == nullptr || found == std::end(lists_)) return std::nullopt;
  return static_cast<int>(found - std::begin(lists_));
}

std::optional<LRESULT> ResultLists::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_NOTIFY: {
      NMHDR& header = *reinterpret_cast<NMHDR*>(lParam);
      if (header.hwndFrom == tabs_ && header.code == TCN_SELCHANGE) return onTabChosen(), 0;
      if (const auto tab = tabOf(header.hwndFrom)) return onNotify(*tab, header);
      return std::nullopt;
    }
    case WM_MEASUREITEM: {
      MEASUREITEMSTRUCT& size = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
      if (size.CtlType != ODT_LISTVIEW) return std::nullopt;
      return onMeasure(size), TRUE;
    }
    case WM_DRAWITEM: {
      const DRAWITEMSTRUCT& row = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
      const auto tab = tabOf(row.hwndItem);
      if (!tab) return std::nullopt;
      return onDraw(*tab, row), TRUE;
    }
    case WM_CONTEXTMENU: {
      if (!tabOf(reinterpret_cast<HWND>(wParam))) return std::nullopt;
      const POINT at = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
      owner_.onRowMenu(lParam == -1 ? menuPlace() : at);
      return 0;
    }
    default: return std::nullopt;
  }
}

LRESULT ResultLists::onNotify(int tab, NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW: onDisplay(tab, reinterpret_cast<NMLVDISPINFOW&>(header).item); return 0;
    case LVN_ITEMCHANGED:
    case LVN_ODSTATECHANGED:
      if (!quiet_) owner_.onSelection();
      return 0;
    case LVN_ODFINDITEMW: {
      const auto& find = reinterpret_cast<const NMLVFINDITEMW&>(header);
      if ((find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0) return -1;
      const auto from = static_cast<uint32_t>(std::max(0, find.iStart));
      const auto row = owner_.rowThatBegins(tab, utf8(find.lvfi.psz), from);
      return row ? static_cast<LRESULT>(*row) : -1;
    }
    case NM_RETURN:
    case NM_DBLCLK: owner_.onRowChosen(); return 0;
    default: return 0;
  }
}

void ResultLists::onDisplay(int tab, LVITEMW& item) const {
  if ((item.mask & LVIF_TEXT) == 0 || item.pszText == nullptr || item.cchTextMax <= 0) return;
  const auto row = static_cast<uint32_t>(item.iItem);
  const std::wstring text =
      row < owner_.rowCount(tab) ? wide(spokenRow(owner_.resultRow(tab, row))) : std::wstring();
  lstrcpynW(item.pszText, text.c_str(), item.cchTextMax);
}

void ResultLists::onMeasure(MEASUREITEMSTRUCT& size) const {
  const ControlLook* const look = owner_.rowLook();
  if (look == nullptr) return;  // it is asked for again
  const WindowDc dc(tabs_);
  const SelectedObject withFont(dc, look->fonts.message.get());
  TEXTMETRICW metrics = {};
  GetTextMetricsW(dc, &metrics);
  const LONG content = std::max<LONG>(metrics.tmHeight, owner_.rowIcons().smallSize());
  size.itemHeight = static_cast<UINT>(content + scaled(rowPadding, look->dpi));
}

void ResultLists::onDraw(int tab, const DRAWITEMSTRUCT& item) const {
  if (item.itemID >= owner_.rowCount(tab)) return;
  const ControlLook& look = *owner_.rowLook();
  FileIcons& icons = owner_.rowIcons();
  const auto pixels = [&](int at96) { return scaled(at96, look.dpi); };
  const ResultRow row = owner_.resultRow(tab, item.itemID);
  const HDC dc = item.hDC;
  RECT area = item.rcItem;
  const bool selected = (item.itemState & ODS_SELECTED) != 0;
  const int background = selected ? COLOR_HIGHLIGHT : COLOR_WINDOW;
  FillRect(dc, &area, GetSysColorBrush(background));
  const RECT line = {area.left, area.bottom - 1, area.right, area.bottom};
  FillRect(dc, &line, GetSysColorBrush(COLOR_BTNFACE));
  --area.bottom;
  drawMark(dc, area, look.dpi, row.mark, markColours_[row.mark]);

  const int left = static_cast<int>(area.left) + pixels(iconLeft);
  int icon = row.isFolder ? icons.StockIcon(FileIcons::kClosedFolder) : icons.IconForFile(row.path);
  if (icon < 0) icon = icons.StockIcon(FileIcons::kDocument);
  const int size = icons.smallSize();
  const int iconTop = static_cast<int>(area.top + area.bottom - size) / 2;
  if (icon >= 0) ImageList_Draw(icons.smallIcons(), icon, dc, left, iconTop, ILD_TRANSPARENT);

  const SelectedObject withFont(dc, look.fonts.message.get());
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
  const std::wstring name = wide(row.name);
  const std::wstring description = wide(row.description);
  RECT text = {left + pixels(nameAfterIcon), area.top, area.right, area.bottom};
  const int gap = description.empty() ? 0 : pixels(afterName);
  const int forDescription = description.empty() ? 0 : widthOf(dc, description) + gap;
  const LONG nameEnd =
      std::min<LONG>(text.left + widthOf(dc, name), std::max<LONG>(text.right - forDescription, text.left));
  RECT nameArea = text;
  nameArea.right = nameEnd;
  drawText(dc, name, nameArea);
  text.left = nameEnd + gap;
  if (!description.empty()) drawText(dc, description, text);
  if ((item.itemState & ODS_FOCUS) != 0 && GetFocus() == item.hwndItem) {
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    DrawFocusRect(dc, &area);
  }
}

}  // namespace merivane
