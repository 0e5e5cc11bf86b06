#pragma once

#include <windows.h>

#include <string>

#include "shell/frame_layout.h"

namespace merivane {

/// A control of the system's in a window of ours, without a place yet.
HWND createControl(HWND parent, const char* controlClass, DWORD style, int id);

/// Names the control that is created next, for screen readers: what stands before it in the window's order
/// names a control that shows a text of its own.
void nameNextControl(HWND parent, const std::string& name);

void moveControl(HWND control, const Area& to);
void showControl(HWND control, bool visible);
int heightOf(HWND control);

}  // namespace merivane
