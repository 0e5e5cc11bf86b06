#pragma once

namespace merivane {

/// What --help and --version print, line ends included.
extern const char* const kUsageText;
extern const char* const kVersionText;

/// Follows the message about a command line that cannot be understood.
extern const char* const kUsageHint;

}  // namespace merivane
