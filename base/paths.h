#pragma once

#include <string>
#include <string_view>

namespace merivane {

/// Returns whether a name can be a path at all. It is lenient on purpose and knows only the rules for drives,
/// colons, shares and wild cards; relative names are valid. A bare drive ("C:") is valid only with
/// `allowDriveOnly`.
bool IsValidPath(std::string_view name, bool allowDriveOnly);

/// Returns whether a name is a valid path that is no bare drive and does not end in a backslash.
bool IsValidFilePath(std::string_view name);

/// Returns the part after the last backslash, or the whole path if it has none.
std::string FileNamePart(std::string_view path);

/// The system's separator of folders in paths.
extern const char kPathSeparator;

/// The path of an entry in a folder; the other part alone where one is empty.
std::string joinPath(std::string_view folder, std::string_view name);

}  // namespace merivane
