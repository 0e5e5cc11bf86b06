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

}  // namespace

ScreenRect workArea() {
  RECT area = {};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  return {area.left, area.top, area.right, area.bottom};
}

SystemFacts systemFacts() { return {workArea(), fontExists}; }

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
  return {{rect.left, rect.top, rect.right, rect.bottom}, IsZoomed(window) != 0, IsIconic(window) != 0};
}

}  // namespace merivane
