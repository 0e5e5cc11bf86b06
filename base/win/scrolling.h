#pragma once

#include <windows.h>

#include <cstdint>

namespace merivane {

/// Returns where a scroll bar is asked to go. `position`, `line`, `page` and `last` are in the bar's own
/// unit.
int64_t scrollTarget(HWND bar, int kind, int request, int64_t position, int64_t page, int64_t last,
                     int64_t line = 1);

/// Returns how far a turn of the wheel goes, in whole units; the rest is kept for the next one.
int wheelSteps(int delta, int unitsANotch, int& rest);

}  // namespace merivane
