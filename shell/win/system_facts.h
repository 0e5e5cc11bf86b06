#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "shell/settings.h"
#include "shell/window_placement.h"

namespace merivane {

Monitors monitors();

/// The system's colours, if its high contrast is on.
std::optional<HighContrast> highContrast();

/// What loading the settings asks of this computer.
SystemFacts systemFacts();

/// The date and the time of day now, as the user's region writes them.
std::string dateAndTime();

/// How a window stands on the screen.
WindowStance windowStance(HWND window);

}  // namespace merivane
