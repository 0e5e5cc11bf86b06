#pragma once

#include <string>
#include <string_view>

namespace merivane {

/// Whether a name can be a path at all. Lenient on purpose: drive, colon, share and wild-card rules only;
/// relative names are valid. A bare drive ("C:") is valid only with `allowDriveOnly`.
bool IsValidPath(std::string_view name, bool allowDriveOnly);

/// A valid path that is no bare drive and does not end in a backslash.
bool IsValidFilePath(std::string_view name);

/// The part after the last backslash, or the whole path if it has none.
std::string FileNamePart(std::string_view path);

}  // namespace merivane
