#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

#include "base/message_format.h"
#include "base/result.h"
#include "base/texts.h"

namespace merivane {

/// Returns a string of the resources, at most 1,023 characters of it; an empty one for a number that has
/// none.
std::string loadText(UINT number);
std::string loadText(TextId id);

/// Returns a string of the resources with its placeholders filled (base/message_format.h).
std::string loadMessage(TextId id, std::initializer_list<MessageArgument> arguments);

/// Shows a text in a message box with the product's name as its caption; `style` as for MessageBox. Returns
/// the button pressed.
int showMessage(HWND owner, const std::string& text, UINT style);
int showMessage(HWND owner, TextId id, UINT style);

/// Shows a text whose "%1" is the system's text for an error.
void showSystemError(HWND owner, TextId id, SystemError error);

/// Reports that memory ran out, in a box without an owner and without allocating any.
void reportOutOfMemory();

}  // namespace merivane
