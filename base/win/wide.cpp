#include "base/win/wide.h"

#include <windows.h>

#include "base/utf16.h"

namespace merivane {
namespace {

// The functions for folders stop this early: they leave room for a short file name.
constexpr size_t kLongPath = MAX_PATH - 12;

bool isAbsolute(std::wstring_view path) {
  if (path.size() < 3) return false;
  return path.substr(0, 2) == L"\\\\" || path.substr(1, 2) == L":\\" || path.substr(1, 2) == L":/";
}

}  // namespace

std::wstring wide(std::string_view utf8) { return utf16FromUtf8<wchar_t>(utf8); }
std::string utf8(std::wstring_view wide) { return utf8FromUtf16(wide); }

std::wstring fullPath(const std::wstring& path) {
  std::wstring whole(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
    if (length == 0) return path;
    const bool fits = length < whole.size();
    whole.resize(length);
    if (fits) return whole;
  }
}

bool isDevicePath(std::wstring_view path) { return path.substr(0, 4) == L"\\\\.\\"; }

std::wstring systemPath(std::string_view path) {
  std::wstring given = wide(path);
  if (given.size() < kLongPath && isAbsolute(given)) return given;
  const std::wstring whole = fullPath(given);
  const std::wstring_view start = std::wstring_view(whole).substr(0, 4);
  if (whole.size() < kLongPath || start == L"\\\\?\\" || isDevicePath(whole)) return given;
  return start.substr(0, 2) == L"\\\\" ? L"\\\\?\\UNC\\" + whole.substr(2) : L"\\\\?\\" + whole;
}

}  // namespace merivane
