#pragma once

#include <windows.h>

#include "shell/settings.h"
#include "shell/window_placement.h"

namespace merivane {

/// The screen without the task bar.
ScreenRect workArea();

/// What loading the settings asks of this computer.
SystemFacts systemFacts();

/// How a window stands on the screen.
WindowStance windowStance(HWND window);

}  // namespace merivane
