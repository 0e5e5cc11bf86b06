#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

#include "base/result.h"
#include "base/texts.h"

namespace merivane {

/// Tells the user that an operation failed: a text whose "%1" is the system's words for the error.
using ErrorReport = void (*)(HWND owner, TextId message, SystemError error);

/// The target of a shortcut; any other name, and a shortcut that cannot be read, as it is. Needs COM.
std::string ResolveShortcut(const std::string& name);

/// Returns the items of a WM_DROPFILES, shortcuts replaced by their targets, and ends the drop.
std::vector<std::string> takeDrop(HDROP drop);

/// Opens a file with its program, shows a folder in Explorer, or shows the properties of either. Each returns
/// whether it worked; when not, `report` has told the user.
bool OpenWithShell(HWND owner, const std::string& path, ErrorReport report);
bool ExploreFolder(HWND owner, const std::string& folder, ErrorReport report);
bool ShowProperties(HWND owner, const std::string& path, ErrorReport report);

/// Opens a web page, or begins a mail ("mailto:..."); as above.
bool OpenAddress(HWND owner, const std::string& address, ErrorReport report);

}  // namespace merivane
