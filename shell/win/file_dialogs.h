#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace merivane {

/// Asks for a file that exists, starting from `name`. None when cancelled.
std::optional<std::string> chooseFile(HWND owner, const std::string& title, const std::string& name);

/// Asks for a folder that exists, starting from `name`. None when cancelled.
std::optional<std::string> chooseFolder(HWND owner, const std::string& title, const std::string& name);

/// Asks where to save, starting from `name`, and before an existing file is written over. None when
/// cancelled.
std::optional<std::string> chooseSaveFile(HWND owner, const std::string& title, const std::string& name);

/// Asks where to put a page of a comparison. Whether an existing file may be written over is not asked here.
std::optional<std::string> chooseExportFile(HWND owner, const std::string& name);

}  // namespace merivane
