#pragma once

#include <windows.h>

#include "shell/frame_layout.h"

namespace merivane {

/// A control of the system's in a window of ours, without a place yet.
HWND createControl(HWND parent, const char* controlClass, DWORD style, int id);

void moveControl(HWND control, const Area& to);
void showControl(HWND control, bool visible);
int heightOf(HWND control);

}  // namespace merivane
