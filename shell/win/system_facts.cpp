#include "shell/win/system_facts.h"

#include <cstring>

#include "base/win/gdi.h"
#include "base/win/messages.h"

namespace merivane {
namespace {

bool fontExists(const char* face) {
  LOGFONTA wanted = {};
  wanted.lfCharSet = DEFAULT_CHARSET;
  if (std::strlen(face) >= sizeof wanted.lfFaceName) return false;
  std::strcpy(wanted.lfFaceName, face);
  const auto found = [](const LOGFONTA*, const TEXTMETRICA*, DWORD, LPARAM exists) CALLBACK -> int {
    *reinterpret_cast<bool*>(exists) = true;
    return 0;
  };
  bool exists = false;
  EnumFontFamiliesExA(WindowDc(nullptr), &wanted, found, reinterpret_cast<LPARAM>(&exists), 0);
  return exists;
}

}  // namespace

ScreenRect workArea() {
  RECT area = {};
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
  return {area.left, area.top, area.right, area.bottom};
}

SystemFacts systemFacts() { return {workArea(), fontExists}; }

std::string dateAndTime() {
  char date[128] = "";
  char time[128] = "";
  GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, date, sizeof date);
  GetTimeFormatA(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, time, sizeof time);
  return loadMessage(TextId::dateAndTime, {date, time});
}

WindowStance windowStance(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return {{rect.left, rect.top, rect.right, rect.bottom}, IsZoomed(window) != 0, IsIconic(window) != 0};
}

}  // namespace merivane
