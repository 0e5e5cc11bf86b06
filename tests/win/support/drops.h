#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/win/support/program.h"

namespace merivane {

/// Drops files on a window of the program, at a place in its client area.
void dropFiles(const Program& program, HWND window, POINT at, const std::vector<std::string>& paths);

}  // namespace merivane
