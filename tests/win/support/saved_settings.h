#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace merivane {

/// The program's settings as they lie in the registry.

/// Forgets all of them, as before the first run.
void clearSavedSettings();

/// A value's text; none when it is absent or no text.
std::optional<std::string> savedText(const std::string& name);
std::optional<DWORD> savedNumber(const std::string& name);

void saveText(const std::string& name, const std::string& text);
void saveNumber(const std::string& name, DWORD number);

}  // namespace merivane
