#pragma once

#include <string>

#include "base/result.h"

namespace merivane {

/// The program's own errors have numbers that no system gives, and words of their own.

/// A file with more bytes than 32-bit positions reach.
constexpr SystemError kFileTooLarge = 0x20000001;
/// A device or a pipe where a file was expected.
constexpr SystemError kNoFile = 0x20000002;

/// An error that systemErrorText() has these words for, as long as the program runs. For what is rare and has
/// to be told in full.
SystemError errorInWords(std::string words);

/// The error that stands for a failed allocation.
SystemError notEnoughStorage();

/// The text for an error, without a line end: the system's for one of its own. UTF-8 on Windows, the locale's
/// bytes elsewhere.
std::string systemErrorText(SystemError error);

/// Whether an error says that there is no such file or folder, or that its path is longer than the system
/// can take.
bool meansMissing(SystemError error);
bool meansTooLong(SystemError error);

/// The system's text for one of its own errors.
std::string platformErrorText(SystemError error);

}  // namespace merivane
