#pragma once

#include <windows.h>

#include <string>

#include "shell/session_host.h"

namespace merivane {

/// Ask the user, and tell him, in boxes over a window or over none.
Answer askInBox(HWND owner, const Question& question);
void reportInBox(HWND owner, const std::string& message, ReportKind kind);

}  // namespace merivane
