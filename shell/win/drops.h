#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

namespace merivane {

/// The items of a WM_DROPFILES, shortcuts replaced by their targets. Ends the drop.
std::vector<std::string> takeDrop(HDROP drop);

}  // namespace merivane
