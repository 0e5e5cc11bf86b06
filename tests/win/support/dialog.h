#pragma once

#include <windows.h>

#include <string>

#include "tests/win/support/program.h"

namespace merivane {

/// Waits for a dialog or message box of the program with this title; null when it does not come.
HWND awaitDialog(const Program& program, const std::string& title);

/// What the dialog's labels say, one a line.
std::string labelsOf(HWND dialog);

/// Presses a button and waits until the dialog is gone; false when it stays.
bool pressButton(HWND dialog, int id);

/// Waits for a message box of the program, presses a button and answers what the box said.
std::string answerMessage(const Program& program, int button = IDOK);

}  // namespace merivane
