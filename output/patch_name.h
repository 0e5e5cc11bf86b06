#pragma once

#include <string>
#include <string_view>

namespace merivane {

/// A file's name, not empty, as it stands in a patch: as a C string where it has control characters, quotes,
/// backslashes or a blank at its end.
std::string patchName(std::string_view path);

}  // namespace merivane
