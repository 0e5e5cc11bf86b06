#include "shell/win/system_facts.h"

#include <string>

#include "base/win/gdi.h"
#include "base/win/messages.h"
#include "base/win/wide.h"

namespace merivane {
namespace {

bool fontExists(const char* face) {
  LOGFONTW wanted = {};
  wanted.lfCharSet = DEFAULT_CHARSET;
  const std::wstring name = wide(face);
  if (name.size() >= LF_FACESIZE) return false;
  name.copy(wanted.lfFaceName, name.size());
  const auto found = [](const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM exists) CALLBACK -> int {
    *reinterpret_cast<bool*>(exists) = true;
    return 0;
  };
  bool exists = false;
  EnumFontFamiliesExW(WindowDc(nullptr), &wanted, found, reinterpret_cast<LPARAM>(&exists), 0);
  return exists;
}

ScreenRect screenRect(const RECT& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

}  // namespace

Monitors monitors() {
  Monitors found;
  const auto add = [](HMONITOR monitor, HDC, RECT*, LPARAM list) CALLBACK -> BOOL {
    auto& all = *reinterpret_cast<Monitors*>(list);
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    if (!GetMonitorInfoW(monitor, &info)) return TRUE;
    const bool primary = (info.dwFlags & MONITORINFOF_PRIMARY) != 0;
    all.insert(primary ? all.begin() : all.end(), {screenRect(info.rcMonitor), screenRect(info.rcWork)});
    return TRUE;
  };
  EnumDisplayMonitors(nullptr, nullptr, add, reinterpret_cast<LPARAM>(&found));
  if (found.empty()) found.push_back({});  // a session that is not connected to any
  return found;
}

std::optional<HighContrast> highContrast() {
  HIGHCONTRASTW now = {};
  now.cbSize = sizeof now;
  if (!SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof now, &now, 0)) return std::nullopt;
  if ((now.dwFlags & HCF_HIGHCONTRASTON) == 0) return std::nullopt;
  return HighContrast{GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT), GetSysColor(COLOR_HIGHLIGHT),
                      GetSysColor(COLOR_HIGHLIGHTTEXT)};
}

SystemFacts systemFacts() { return {monitors(), fontExists}; }

std::string dateAndTime() {
  constexpr int room = 128;
  wchar_t date[room] = L"";
  wchar_t time[room] = L"";
  GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, date, room);
  GetTimeFormatW(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, time, room);
  return loadMessage(TextId::dateAndTime, {utf8(date), utf8(time)});
}

WindowStance windowStance(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return {screenRect(rect), IsZoomed(window) != 0, IsIconic(window) != 0};
}

}  // namespace merivane
