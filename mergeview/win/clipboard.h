#pragma once

#include <windows.h>

#include <string_view>

#include "base/byte_array.h"

namespace merivane {

/// Puts a text on the clipboard. False when that failed, of which the user has been told.
bool putOnClipboard(HWND owner, std::wstring_view text);

/// Fetches the clipboard's text in UTF-8. False when there is none, or when that failed, of which the user
/// has been told.
bool takeFromClipboard(HWND owner, ByteArray& text);

}  // namespace merivane
