#include "shell/win/font_list.h"

#include <algorithm>
#include <new>
#include <string>
#include <vector>

#include "base/win/dpi.h"

namespace merivane {
namespace {

constexpr int kMargin = 2;  // pixels at 96 to the inch, at either end of a name

std::wstring faceAt(HWND comboBox, int index) {
  const LRESULT length = SendMessageW(comboBox, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0);
  if (length <= 0) return {};
  std::wstring face(static_cast<size_t>(length), L'\0');
  SendMessageW(comboBox, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(face.data()));
  return face;
}

/// The face in the size of the box's own font.
Font fontOf(HWND comboBox, const std::wstring& face) {
  LOGFONTW description = {};
  const auto own = reinterpret_cast<HFONT>(SendMessageW(comboBox, WM_GETFONT, 0, 0));
  GetObjectW(own != nullptr ? own : GetStockObject(DEFAULT_GUI_FONT), sizeof description, &description);
  description.lfCharSet = DEFAULT_CHARSET;
  lstrcpynW(description.lfFaceName, face.c_str(), LF_FACESIZE);
  return Font(CreateFontIndirectW(&description));
}

struct Face {
  std::wstring name;
  bool fixedPitch;
  DWORD type;
};

bool sortsBefore(const Face& a, const Face& b) {
  if (a.fixedPitch != b.fixedPitch) return a.fixedPitch;
  return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a.name.c_str(), -1, b.name.c_str(), -1) ==
         CSTR_LESS_THAN;
}

/// Adds a face to the vector of them. What is thrown must not pass through the system.
int CALLBACK addFace(const LOGFONTW* font, const TEXTMETRICW*, DWORD type, LPARAM faces) try {
  const bool fixedPitch = (font->lfPitchAndFamily & FIXED_PITCH) != 0;
  if (const auto name = listedFace(font->lfFaceName)) {
    reinterpret_cast<std::vector<Face>*>(faces)->push_back({*name, fixedPitch, type});
  }
  return 1;
} catch (const std::bad_alloc&) {
  return 0;
}

}  // namespace

std::optional<std::wstring> listedFace(std::wstring_view face) {
  const size_t begin = face.find_first_not_of(L' ');
  if (begin == face.npos || face[begin] == L'@') return std::nullopt;
  return std::wstring(face.substr(begin, face.find_last_not_of(L' ') + 1 - begin));
}

void fillFontList(HWND comboBox) {
  const WindowDc dc(comboBox);
  SendMessageW(comboBox, WM_SETREDRAW, FALSE, 0);
  SendMessageW(comboBox, CB_RESETCONTENT, 0, 0);
  std::vector<Face> faces;
  EnumFontsW(dc, nullptr, addFace, reinterpret_cast<LPARAM>(&faces));
  std::sort(faces.begin(), faces.end(), sortsBefore);
  for (const Face& face : faces) {
    const auto name = reinterpret_cast<LPARAM>(face.name.c_str());
    // A face that is installed in two places comes twice.
    if (SendMessageW(comboBox, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), name) >= 0) continue;
    const LRESULT index = SendMessageW(comboBox, CB_ADDSTRING, 0, name);
    if (index < 0) break;  // no room for more
    SendMessageW(comboBox, CB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(face.type));
  }
  SendMessageW(comboBox, WM_SETREDRAW, TRUE, 0);

  LONG widest = 0;
  const auto count = static_cast<int>(SendMessageW(comboBox, CB_GETCOUNT, 0, 0));
  for (int index = 0; index < count; ++index) {
    const std::wstring face = faceAt(comboBox, index);
    const Font font = fontOf(comboBox, face);
    const SelectedObject selected(dc, font.get());
    SIZE size = {};
    GetTextExtentPoint32W(dc, face.data(), static_cast<int>(face.size()), &size);
    widest = std::max(widest, size.cx);
  }
  const int dpi = dpiOf(comboBox);
  const int width = static_cast<int>(widest) + 2 * scaled(kMargin, dpi) + systemMetric(SM_CXVSCROLL, dpi) +
                    2 * systemMetric(SM_CXEDGE, dpi);
  SendMessageW(comboBox, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(width), 0);
}

void drawFontItem(const DRAWITEMSTRUCT& item) {
  const bool selected = (item.itemState & ODS_SELECTED) != 0;
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  if (static_cast<int>(item.itemID) >= 0) {
    const std::wstring face = faceAt(item.hwndItem, static_cast<int>(item.itemID));
    const Font font = fontOf(item.hwndItem, face);
    const SelectedObject selection(item.hDC, font.get());
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    RECT text = item.rcItem;
    InflateRect(&text, -scaled(kMargin, dpiOf(item.hwndItem)), 0);
    DrawTextW(item.hDC, face.data(), static_cast<int>(face.size()), &text,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  }
  if ((item.itemState & ODS_FOCUS) != 0) DrawFocusRect(item.hDC, &item.rcItem);
}

}  // namespace merivane
