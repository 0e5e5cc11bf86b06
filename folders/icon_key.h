#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace merivane {

/// What the icon of a file is remembered by: its extension with the dot, which all files of a type share, or
/// the whole path of a file that carries an icon of its own. None for a file without a type: one whose name
/// has no dot, begins with its only dot, or ends in one.
std::optional<std::string> iconKey(const std::string& path);

/// Where the system says that an icon is: a file, and the icon's number in it.
struct IconLocation {
  std::string file;
  int number = 0;
};

/// Reads such a place as "C:\Windows\shell32.dll,-152". None without a file or a number.
std::optional<IconLocation> parseIconLocation(std::string_view text);

}  // namespace merivane
