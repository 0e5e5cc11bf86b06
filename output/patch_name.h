#pragma once

#include <string>
#include <string_view>

namespace merivane {

/// A file's name, not empty, as it stands in a patch: as a C string where it has control characters, quotes,
/// backslashes or a blank at its end; where it is `amongOthers` in a line, any blank.
std::string patchName(std::string_view path, bool amongOthers = false);

}  // namespace merivane
